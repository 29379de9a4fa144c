#pragma once

#include <QtCore/QString>
#include <memory>

#include "kortavin/base/file.h"

namespace kortavin::desktop {

enum class TextEncoding { Detected, Utf8, Gbk };

// Throws a Failure that tells the line, its number and what is wrong with it.
[[noreturn]] void RefuseLine(ULONGLONG number, const CString& line, const QString& reason);

// A text file as the library's line reader expects it: GBK bytes, with every line ended by CR LF. What stands
// on the disk may be GBK or UTF-8, with or without a byte order mark, and have LF or CR alone; it is
// rewritten once into a file without a name.
class TextSource {
  public:
    // Throws CFileException; Failure for a file that is no text in the encoding, with the line.
    TextSource(const QString& path, TextEncoding encoding);

    CFile& File() { return *m_text; }  // at its beginning

  private:
    std::unique_ptr<CFile> m_text;
};

}  // namespace kortavin::desktop
