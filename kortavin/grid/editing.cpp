#include "kortavin/grid/gridcelledit.h"
#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/toolkit.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

// Editing in place, and what the owner is told of it.

using window::TableChange;

LRESULT CGridCtrl::NotifyParent(int row, int col, int code) {
    CWnd* const owner = GetOwner();
    if (owner == nullptr)
        return 0;
    const auto id = static_cast<UINT_PTR>(GetDlgCtrlID());
    GridNotify record{{m_hWnd, id, code}, row, col};
    return owner->SendMessage(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&record));
}

namespace {

// Of the control characters, those that keys without Ctrl stand for.
bool CanBeginEdit(UINT character) {
    return character >= VK_SPACE || character == VK_RETURN || character == VK_BACK || character == VK_TAB;
}

}  // namespace

void CGridCtrl::OnChar(UINT nChar, UINT, UINT) {
    const bool ctrlIsDown = window::RequireToolkit().IsKeyDown(VK_CONTROL);
    const Life life(*this);
    if (CanBeginEdit(nChar) && !ctrlIsDown && !IsMouseBusy() && !(nChar == VK_TAB && m_handleTabKey))
        StartCellEdit(m_focusCell.row, m_focusCell.col, nChar);
    if (life)
        Default();
}

// An input method composes in the editor, where what it commits replaces the text. No character is known yet:
// an arrow key selects all in every editor.
void CGridCtrl::OnImeStartComposition() {
    const Life life(*this);
    if (!IsMouseBusy())
        StartCellEdit(m_focusCell.row, m_focusCell.col, VK_DOWN);
    if (life)
        Default();
}

void CGridCtrl::StartCellEdit(int row, int col, UINT nChar) {
    const Life life(*this);
    EnsureVisible(row, col);
    CRect rect;
    if (!life || !IsValid(row, col) || !IsCellEditable(row, col) || !IsCellVisible(row, col) ||
        !GetCellRect(row, col, &rect))
        return;
    NotifyParent(row, col, GridNotifyBeginEdit);
    GridItem item;
    item.row = row;
    item.col = col;
    item.mask = GridItemText | GridItemFormat;
    if (!life || !GetItem(&item))
        return;
    const DWORD style = (item.nFormat & DT_RIGHT) != 0    ? ES_RIGHT
                        : (item.nFormat & DT_CENTER) != 0 ? ES_CENTER
                                                          : 0;
    CreateCellEditor(rect, style, GridEditorControlId, row, col, item.text, static_cast<int>(nChar));
}

// The editor owns itself.
void CGridCtrl::CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                                 int nChar) {
    CGridCellEdit::Open(this, rect, dwStyle, nID, row, col, text, static_cast<UINT>(nChar));
}

void CGridCtrl::FinishCellEdit(int row, int col, CString text) {
    if (text != GetItemText(row, col)) {
        SetModified(TRUE, row, col);
        if (SetItemText(row, col, text))
            TellTableChange(TableChange::Text, {row, col});
    }
    NotifyParent(row, col, GridNotifyEditCommitted);
}

namespace {

bool ContinuesEditing(LPARAM key) {
    return key == VK_TAB || (key >= LPARAM{VK_PRIOR} && key <= LPARAM{VK_DOWN});
}

}  // namespace

void CGridCtrl::OnCellEditorDone(NMHDR* pNMHDR, LRESULT* pResult) {
    *pResult = 0;
    if (m_hWnd == nullptr)
        return;
    const GridItem item = reinterpret_cast<const GridEditNotify*>(pNMHDR)->item;
    const Life life(*this);
    FinishCellEdit(item.row, item.col, item.text);
    if (life) {
        InvalidateCell({item.row, item.col});
        NotifyParent(item.row, item.col, GridNotifyEndEdit);
    }
    if (!life || !ContinuesEditing(item.lParam))
        return;
    const auto key = static_cast<UINT>(item.lParam);
    OnKeyDown(key, 1, 0);
    if (life)
        StartCellEdit(m_focusCell.row, m_focusCell.col, key);
}

void CGridCtrl::ClearFocusCell() {
    const auto [row, col] = m_focusCell;
    if (!IsCellEditable(row, col))
        return;
    const Life life(*this);
    NotifyParent(row, col, GridNotifyBeginEdit);
    if (!life)
        return;
    SetItemText(row, col, "");
    SetModified(TRUE, row, col);
    TellTableChange(TableChange::Text, {row, col});
    NotifyParent(row, col, GridNotifyEndEdit);
    if (life)
        RedrawCell(row, col);
}

}  // namespace kortavin
