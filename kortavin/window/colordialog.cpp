#include "framework/window/colordialog.h"

#include "framework/window/window.h"

CColorDialog::CColorDialog(COLORREF initial, DWORD flags, CWnd* parent)
    : m_color(initial), m_flags(flags), m_parent(parent) {}

int CColorDialog::DoModal() {
    const HWND parent = m_parent != nullptr ? m_parent->m_hWnd : nullptr;
    const auto chosen = kortavin::window::RequireToolkit().ChooseColor(
        {m_color, (m_flags & CC_RGBINIT) != 0, (m_flags & CC_FULLOPEN) != 0,
         parent != nullptr ? &parent->Native() : nullptr});
    if (!chosen)
        return IDCANCEL;
    m_color = *chosen;
    return IDOK;
}
