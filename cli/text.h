#pragma once

#include <string>
#include <string_view>

#include "kortavin/base/cstring.h"

// The terminal's side of texts: UTF-8, whatever the locale is called.
namespace kortavin::cli {

// A text that came from the command line or a file and is known to be UTF-8; throws Failure if it is not.
CString ToGbk(std::string_view utf8);

// The exact characters of `gbk`. Throws Failure, naming `what`, when the bytes are no GBK text.
std::string ExactUtf8(const CString& gbk, std::string_view what);

// For people: what is not valid shows as \xNN, and controls are escaped so that a text stays on its line.
std::string Shown(const CString& gbk);

// Control characters, line separators and changes of the writing direction as \n, \t, \xNN and \uNNNN. Bytes
// that are not UTF-8 become \xNN.
std::string EscapeControls(std::string_view utf8);

// Columns that the text takes on a terminal: two for wide East Asian characters, none for combining marks.
int DisplayWidth(std::string_view utf8);

}  // namespace kortavin::cli
