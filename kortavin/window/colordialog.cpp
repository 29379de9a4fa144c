#include "kortavin/window/colordialog.h"

#include "kortavin/window/windowrecord.h"

namespace kortavin {

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent)
    : m_color(initial), m_flags(flags), m_parent(parent) {}

int CColorDialog::DoModal() {
    window::WindowRecord* const parent = window::RecordOf(m_parent);
    const auto chosen = window::RequireToolkit().ChooseColor(
        {m_color, (m_flags & CC_RGBINIT) != 0, (m_flags & CC_FULLOPEN) != 0,
         parent != nullptr ? &parent->Native() : nullptr});
    if (!chosen)
        return IDCANCEL;
    m_color = *chosen;
    return IDOK;
}

}  // namespace kortavin
