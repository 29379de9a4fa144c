#pragma once

#include "kortavin/base/exception.h"
#include "kortavin/base/file.h"

// The saved-query file: one statement behind an identifying header. docs/formats/saved-query.md has the
// bytes.
namespace kortavin::query {

// A file that is no saved query, or not a whole one. Its text is the one that users see.
class KORTAVIN_API SavedQueryFormatError : public CException {
  public:
    ~SavedQueryFormatError() override;
    CString GetErrorMessage() const override;
    const char* what() const noexcept override;
};

// Writes a statement, replacing a former file only when the new one is complete on the disk. `path` is in the
// system's own bytes. Throws CFileException; a former file is then as it was. (Whoever tells a target that
// cannot be written at all from a failed write makes the base::FileReplacement himself.)
KORTAVIN_API void WriteSavedQuery(const CString& path, const CString& sql);

// The statement of a file, up to its first zero byte. Throws CFileException where the file cannot be read,
// SavedQueryFormatError for a wrong header or a length that runs past the end of the file, and
// CMemoryException.
KORTAVIN_API CString ReadSavedQuery(const CString& path);

// The same on files that are open already; neither closes its file.
KORTAVIN_API void WriteSavedQuery(CFile& file, const CString& sql);
KORTAVIN_API CString ReadSavedQuery(CFile& file);

}  // namespace kortavin::query
