#pragma once

#include <memory>

#include "kortavin/base/cstring.h"

namespace kortavin {

class CWnd;
namespace window {
struct FileRequest;
}

inline constexpr DWORD OFN_OVERWRITEPROMPT = 0x2;  // asks before an existing file is named for writing

// The toolkit's modal file chooser.
class KORTAVIN_API CFileDialog {
  public:
    // For opening an existing file, or for naming one to write to. `filter` has pairs of a name and its
    // patterns, each ended by '|', and one more '|' at the end: "Text (*.txt)|*.txt||". Null texts are empty.
    // The initial name is a path in the system's own bytes.
    explicit CFileDialog(BOOL forOpening, const char* defaultExtension = nullptr,
                         const char* initialName = nullptr, DWORD flags = 0, const char* filter = nullptr,
                         CWnd* parent = nullptr);
    CFileDialog(const CFileDialog&) = delete;
    CFileDialog& operator=(const CFileDialog&) = delete;
    ~CFileDialog();
    // IDOK or IDCANCEL. CResourceException when it cannot open.
    int DoModal();
    const CString& GetPathName() const { return m_path; }  // chosen, the system's own bytes; empty before

  private:
    std::unique_ptr<window::FileRequest> m_request;
    CWnd* m_parent;
    CString m_path;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CFileDialog;
using kortavin::OFN_OVERWRITEPROMPT;
#endif
