#pragma once

#include <memory>

#include "kortavin/base/export.h"
#include "kortavin/base/file.h"

namespace kortavin::base {

// Writes a new content for a file so that, whatever goes wrong, the file is either as it was or complete: the
// content goes to an unfinished file beside it, which takes its place in Commit. Links are followed, the
// permissions of a former file stay. What is not a regular file (a pipe, a device) is written directly.
class KORTAVIN_API FileReplacement {
  public:
    // Tells why the target itself cannot be written, before anything is made; throws CFileException.
    explicit FileReplacement(const CString& path);
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;
    // Without Commit the unfinished file is removed.
    ~FileReplacement();

    CFile& File();
    // The path of the unfinished file; empty when the target is written directly, and after Commit.
    const CString& GetUnfinishedPath() const;
    // Flushes to the disk, closes and renames; throws CFileException, and the former file stays. Only for a
    // file of which every write succeeded: what a failed write dropped is not noticed again.
    void Commit();

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

}  // namespace kortavin::base
