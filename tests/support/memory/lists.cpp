#include <algorithm>

#include "kortavin/window/keys.h"
#include "tests/support/memory/controls.h"

namespace kortavin::testing {

LRESULT MemoryList::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            SelectByUser(PointOfParam(lParam).y / kItemHeight);
            if (message == WM_LBUTTONDBLCLK && m_selection >= 0)
                Tell(LBN_DBLCLK);
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_UP || wParam == VK_DOWN)
                SelectByUser(std::max(0, m_selection + (wParam == VK_DOWN ? 1 : -1)));
            return 0;
        default:
            return MemoryWindow::DefaultProc(message, wParam, lParam);
    }
}

void MemoryList::Remove(int index) {
    m_items.erase(m_items.begin() + index);
    if (m_selection >= index)
        m_selection = m_selection == index ? -1 : m_selection - 1;
}

void MemoryList::Clear() {
    m_items.clear();
    m_selection = -1;
}

void MemoryList::SelectByUser(int index) {
    if (index >= Count() || index == m_selection)
        return;
    m_selection = index;
    Tell(LBN_SELCHANGE);
}

void MemoryList::Tell(WORD code) {
    if ((m_record.Style() & LBS_NOTIFY) != 0)
        window::ReportNotification(m_record, code);
}

LRESULT MemoryTabs::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_LBUTTONDOWN:
            for (int i = 0; i < m_count; ++i)
                if (TabRect(i).PtInRect(PointOfParam(lParam)))
                    SelectByUser(i);
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_LEFT || wParam == VK_RIGHT)
                SelectByUser(m_selection + (wParam == VK_RIGHT ? 1 : -1));
            return 0;
        default:
            return MemoryWindow::DefaultProc(message, wParam, lParam);
    }
}

void MemoryTabs::SelectByUser(int index) {
    if (index < 0 || index >= m_count || index == m_selection)
        return;
    m_selection = index;
    window::ReportNotification(m_record, TCN_SELCHANGE);
}

CRect MemoryTabs::Around(const CRect& page) const {
    return {page.left - kFrame, page.top - kTab.cy - kFrame, page.right + kFrame, page.bottom + kFrame};
}

CRect MemoryTabs::TabRect(int index) const {
    return {CPoint(index * kTab.cx, 0), kTab};
}

}  // namespace kortavin::testing
