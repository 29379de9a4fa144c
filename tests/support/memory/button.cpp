#include <algorithm>
#include <utility>
#include <vector>

#include "kortavin/window/keys.h"
#include "tests/support/memory/controls.h"

using kortavin::window::WindowKind;

namespace kortavin::testing {

bool MemoryButton::IsHitBy(CPoint clientPoint) const {
    return KindOfButton() != BS_GROUPBOX && MemoryWindow::IsHitBy(clientPoint);
}

LRESULT MemoryButton::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isSpace = wParam == VK_SPACE;
    const bool isPress = message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK;
    if (isPress || (message == WM_KEYDOWN && isSpace)) {
        m_pressed = true;
    } else if (message == WM_LBUTTONUP || (message == WM_KEYUP && isSpace)) {
        const bool isInside = message == WM_KEYUP || ClientRect().PtInRect(PointOfParam(lParam));
        if (std::exchange(m_pressed, false) && isInside)
            Click();
    } else if (message == WM_KILLFOCUS) {
        m_pressed = false;
    } else {
        return MemoryWindow::DefaultProc(message, wParam, lParam);
    }
    return 0;
}

void MemoryButton::Click() {
    if (KindOfButton() == BS_AUTOCHECKBOX)
        m_checked = !m_checked;
    else if (KindOfButton() == BS_AUTORADIOBUTTON)
        CheckAloneInGroup();
    if (KindOfButton() != BS_GROUPBOX)
        window::ReportNotification(m_record, BN_CLICKED);
}

// A group reaches from one control with WS_GROUP to the next.
void MemoryButton::CheckAloneInGroup() {
    std::vector<MemoryButton*> group;
    for (const window::WindowRecord* sibling : m_record.Parent()->Children()) {
        if ((sibling->Style() & WS_GROUP) != 0) {
            if (std::ranges::find(group, this) != group.end())
                break;
            group.clear();
        }
        if (sibling->Kind() == WindowKind::Button)
            group.push_back(static_cast<MemoryButton*>(&sibling->Native()));
    }
    for (MemoryButton* const button : group)
        if (button->KindOfButton() == BS_AUTORADIOBUTTON)
            button->m_checked = button == this;
}

}  // namespace kortavin::testing
