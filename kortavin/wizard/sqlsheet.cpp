#include "kortavin/wizard/sqlsheet.h"

namespace kortavin {

CSqlSheet::CSqlSheet(unsigned captionId, CWnd* parent, unsigned selected)
    : CPropertySheet(captionId, parent, selected) {}

CSqlSheet::CSqlSheet(const char* caption, CWnd* parent, unsigned selected)
    : CPropertySheet(caption, parent, selected) {}

CSqlSheet::~CSqlSheet() = default;

void CSqlSheet::EnableOkButton(BOOL enable) {
    if (CWnd* const button = GetDlgItem(IDOK); button != nullptr)
        button->EnableWindow(enable);
}

int CSqlSheet::DoModal() {
    const window::SourceScope scope(window::FindModule("Kortavin.dll"));
    return CPropertySheet::DoModal();
}

}  // namespace kortavin
