#include <algorithm>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

// What keys do.

namespace {

bool IsDown(UINT virtualKey) {
    return window::RequireToolkit().IsKeyDown(virtualKey);
}

}  // namespace

bool CGridCtrl::IsMouseBusy() const {
    return m_mouseMode != MouseIdle && !IsOverBorder();
}

// Where a key leads.
struct CGridCtrl::Move {
    CGridPos next;
    bool changesLine = false;
};

UINT CGridCtrl::OnGetDlgCode() {
    const bool wantsTab = m_handleTabKey && !IsDown(VK_CONTROL);
    return DLGC_WANTARROWS | DLGC_WANTCHARS | (wantsTab ? DLGC_WANTTAB : 0);
}

// Who comes by the keyboard finds a cell to start from.
LRESULT CGridCtrl::OnSetFocus(WPARAM, LPARAM lParam) {
    const Life life(*this);
    if (lParam != 0 && !IsDown(VK_LBUTTON) && !IsValid(m_focusCell) &&
        IsValid(m_fixedRowCount, m_fixedColCount))
        SetFocusCell(m_fixedRowCount, m_fixedColCount);
    return life ? Default() : 0;
}

void CGridCtrl::OnKeyDown(UINT nChar, UINT, UINT) {
    const bool ctrlIsDown = IsDown(VK_CONTROL);
    if (ctrlIsDown && nChar == 'C' && (!m_selectedCells.empty() || IsValid(m_focusCell))) {
        CopyToClipboard();
        return;
    }
    if (!IsValid(m_focusCell)) {
        Default();
        return;
    }
    const Life life(*this);
    if (ctrlIsDown && nChar == 'A') {
        OnEditSelectAll();
        return;
    }
    if (nChar == VK_DELETE) {
        ClearFocusCell();
        return;
    }
    const auto move = MoveOf(nChar);
    if (!life)
        return;
    if (!move)
        Default();
    else if (move->next != m_focusCell)
        MoveFocusTo(nChar, *move);
}

std::optional<CGridCtrl::Move> CGridCtrl::MoveOf(UINT key) {
    const auto [row, col] = m_focusCell;
    switch (key) {
        case VK_TAB:
            return IsDown(VK_SHIFT) ? TabBackward() : TabForward();
        case VK_PRIOR:
        case VK_NEXT:
            return Move{{RowByPage(key), col}};
        case VK_HOME:
        case VK_END: {
            const Move move{{key == VK_HOME ? m_fixedRowCount : GetRowCount() - 1, col}};
            SendMessage(WM_VSCROLL, key == VK_HOME ? SB_TOP : SB_BOTTOM);
            return move;
        }
        case VK_LEFT:
            return Move{{row, col > m_fixedColCount ? col - 1 : col}};
        case VK_RIGHT:
            return Move{{row, std::min(col + 1, GetColumnCount() - 1)}};
        case VK_UP:
            return Move{{row > m_fixedRowCount ? row - 1 : row, col}};
        case VK_DOWN:
            return Move{{std::min(row + 1, GetRowCount() - 1), col}};
        default:
            return std::nullopt;
    }
}

std::optional<CGridCtrl::Move> CGridCtrl::TabForward() const {
    const auto [row, col] = m_focusCell;
    if (col < GetColumnCount() - 1)
        return Move{{row, col + 1}};
    if (row < GetRowCount() - 1)
        return Move{{row + 1, m_fixedColCount}, true};
    return std::nullopt;
}

std::optional<CGridCtrl::Move> CGridCtrl::TabBackward() const {
    const auto [row, col] = m_focusCell;
    if (col > m_fixedColCount)
        return Move{{row, col - 1}};
    if (row > m_fixedRowCount)
        return Move{{row - 1, GetColumnCount() - 1}, true};
    return std::nullopt;
}

// By as many rows as the view moves; to the end when it does not move.
int CGridCtrl::RowByPage(UINT key) {
    const int before = GetFirstScrollCell().row;
    const Life life(*this);
    SendMessage(WM_VSCROLL, key == VK_PRIOR ? SB_PAGEUP : SB_PAGEDOWN);
    if (!life)
        return 0;
    const int moved = GetFirstScrollCell().row - before;
    const int last = GetRowCount() - 1;
    if (moved == 0)
        return key == VK_PRIOR ? m_fixedRowCount : last;
    return std::max(std::min(m_focusCell.row + moved, last), m_fixedRowCount);
}

void CGridCtrl::MoveFocusTo(UINT key, const Move& move) {
    const Life life(*this);
    if (!IsMouseBusy()) {
        m_prevSelectedCells.clear();
        if (!IsDown(VK_SHIFT) || key == VK_TAB)
            m_selectionStartCell = move.next;
        m_mouseMode = MouseIdle;
        m_listMode ? SelectRowSpan(move.next) : SelectCellSpan(move.next);
    }
    SetFocusCell(move.next);
    if (!life || IsCellVisible(move.next.row, move.next.col))
        return;
    EnsureVisible(move.next.row, move.next.col);
    if (life)
        ScrollOnFor(key, move.changesLine);
    if (life)
        Invalidate();
}

// One more line in the key's direction.
void CGridCtrl::ScrollOnFor(UINT key, bool changesLine) {
    const bool isBackTab = key == VK_TAB && IsDown(VK_SHIFT);
    if (key == VK_TAB && changesLine) {
        const Life life(*this);
        SendMessage(WM_VSCROLL, isBackTab ? SB_LINEUP : SB_LINEDOWN);
        if (life)
            SetScrollPosition(SB_HORZ, isBackTab ? m_hScrollMax : 0);
    } else if (key == VK_TAB) {
        SendMessage(WM_HSCROLL, isBackTab ? SB_LINELEFT : SB_LINERIGHT);
    } else if (key == VK_LEFT || key == VK_RIGHT) {
        SendMessage(WM_HSCROLL, key == VK_LEFT ? SB_LINELEFT : SB_LINERIGHT);
    } else if (key == VK_UP || key == VK_DOWN) {
        SendMessage(WM_VSCROLL, key == VK_UP ? SB_LINEUP : SB_LINEDOWN);
    }
}

void CGridCtrl::EnsureVisible(int row, int col) {
    if (!IsValid(row, col) || m_hWnd == nullptr)
        return;
    const Life life(*this);
    const CGridRange visible = GetVisibleScrollRange();
    SendScroll(SB_HORZ, SB_LINERIGHT, col - visible.maxCol);
    if (life)
        SendScroll(SB_HORZ, SB_LINELEFT, visible.minCol - col);
    if (life)
        SendScroll(SB_VERT, SB_LINEDOWN, row - visible.maxRow);
    if (life)
        SendScroll(SB_VERT, SB_LINEUP, visible.minRow - row);
    CRect rect;
    if (!life || !GetCellRect(row, col, &rect))
        return;
    CRect client;
    GetClientRect(&client);
    if (rect.right >= client.right)
        SendMessage(WM_HSCROLL, SB_LINERIGHT);
    if (life && rect.bottom >= client.bottom)
        SendMessage(WM_VSCROLL, SB_LINEDOWN);
}

// As many line requests, one after the other. Of a long way only the last one is walked.
void CGridCtrl::SendScroll(int bar, UINT request, int count) {
    constexpr int kWalked = 64;
    const Life life(*this);
    if (life && count > kWalked) {
        JumpLines(bar, request == SB_LINEDOWN ? count - 1 : 1 - count);
        count = 1;
    }
    for (; life && count > 0; --count)
        SendMessage(bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL, request);
}

}  // namespace kortavin
