#pragma once

#include <functional>

#include "kortavin/base/export.h"
#include "kortavin/base/types.h"

namespace kortavin {

inline constexpr UINT MB_OK = 0;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;

// Shows a GBK text in a message box and answers the button that closed it. The text goes to the handler;
// where none is set, to a box of the toolkit, which is loaded if need be. Where none can be had, the text is
// dropped and the answer is IDOK.
KORTAVIN_API int AfxMessageBox(const char* text, UINT type = MB_OK, UINT helpContext = 0);

namespace window {

// Takes the place of the box: a command-line program writes a line, a test keeps a record. The text is GBK,
// and not copied on its way: it may tell that memory is exhausted.
using MessageBoxHandler = std::function<int(const char* text, UINT type)>;

// Sets the handler (an empty one: none) and returns the former. To be called on the user-interface thread.
KORTAVIN_API MessageBoxHandler SetMessageBoxHandler(MessageBoxHandler handler);

}  // namespace window

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::AfxMessageBox;
using kortavin::IDCANCEL;
using kortavin::IDOK;
using kortavin::MB_OK;
#endif
