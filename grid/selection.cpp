#include <algorithm>

#include "grid/gridctrl.h"

// The focus cell and the selected cells.

CGridPos CGridCtrl::SetFocusCell(CGridPos cell) {
    if (cell == m_focusCell)
        return m_focusCell;
    const CGridPos former = m_focusCell;
    const bool columnChanges = cell.col != former.col;
    const bool rowChanges = cell.row != former.row;
    m_focusCell = cell;
    const Life life(*this);
    if (IsValid(former)) {
        NotifyParent(former.row, former.col, GridNotifyFocusLeaving);
        if (!life)
            return former;
        ShowFocusAt(former, false, rowChanges, columnChanges);
    }
    // A handler of the notification may have moved the focus on.
    if (IsValid(cell) && m_focusCell == cell) {
        ShowFocusAt(cell, true, rowChanges, columnChanges);
        NotifyParent(cell.row, cell.col, GridNotifyFocusChanged);
    }
    return former;
}

// The headings of the focus cell's row and column show it too.
void CGridCtrl::ShowFocusAt(CGridPos cell, bool hasFocus, bool rowChanges, bool columnChanges) {
    const UINT state = GetItemState(cell.row, cell.col);
    SetItemState(cell.row, cell.col, hasFocus ? state | GridStateFocused : state & ~GridStateFocused);
    RedrawCell(cell.row, cell.col);
    for (int row = 0; columnChanges && row < m_fixedRowCount; ++row)
        RedrawCell(row, cell.col);
    for (int col = 0; rowChanges && col < m_fixedColCount; ++col)
        RedrawCell(cell.row, col);
}

void CGridCtrl::ClearSelection() {
    SelectRange(-1, -1, -1, -1);
    SetFocusCell(-1, -1);
}

void CGridCtrl::SelectRange(const CGridRange& range, BOOL bForceRepaint) {
    SelectRange(range.minRow, range.minCol, range.maxRow, range.maxCol, bForceRepaint);
}

// Cells that stay selected are not repainted.
void CGridCtrl::SelectRange(int minRow, int minCol, int maxRow, int maxCol, BOOL bForceRepaint) {
    if (!m_enableSelection)
        return;
    const CGridRange range(minRow, minCol, maxRow, maxCol);
    const auto repaint = [&](CGridPos cell) {
        bForceRepaint ? RedrawCell(cell.row, cell.col) : InvalidateCell(cell);
    };
    const CellMap former = m_selectedCells;
    for (const auto& [key, cell] : former) {
        SetItemState(cell.row, cell.col, GetItemState(cell.row, cell.col) & ~GridStateSelected);
        if (!range.Contains(cell))
            repaint(cell);
    }
    const auto select = [&](CGridPos cell) {
        const UINT state = GetItemState(cell.row, cell.col);
        if ((state & GridStateSelected) != 0)
            return;
        SetItemState(cell.row, cell.col, state | GridStateSelected);
        repaint(cell);
    };
    if (!m_singleRowSelection)
        for (const auto& [key, cell] : m_prevSelectedCells)
            select(cell);
    if (!IsValid(range))
        return;
    for (int row = minRow; row <= maxRow; ++row)
        for (int col = minCol; col <= maxCol; ++col)
            select({row, col});
}

CGridRange CGridCtrl::GetSelectionBounds() const {
    CGridRange bounds(GetRowCount(), GetColumnCount(), -1, -1);
    for (const auto& [key, cell] : m_selectedCells) {
        bounds.minRow = std::min(bounds.minRow, cell.row);
        bounds.minCol = std::min(bounds.minCol, cell.col);
        bounds.maxRow = std::max(bounds.maxRow, cell.row);
        bounds.maxCol = std::max(bounds.maxCol, cell.col);
    }
    return bounds;
}

void CGridCtrl::SelectAll() {
    SelectRange(m_fixedRowCount, m_fixedColCount, GetRowCount() - 1, GetColumnCount() - 1);
}

void CGridCtrl::SelectColumnSpan(CGridPos cell) {
    if (!IsValid(cell) || cell.col < m_fixedColCount)
        return;
    const auto [left, right] = std::minmax({m_selectionStartCell.col, cell.col});
    SelectRange(m_fixedRowCount, left, GetRowCount() - 1, right);
}

void CGridCtrl::SelectRowSpan(CGridPos cell) {
    if (!IsValid(cell) || cell.row < m_fixedRowCount)
        return;
    const bool single = m_listMode && m_singleRowSelection;
    const auto [top, bottom] = std::minmax({single ? cell.row : m_selectionStartCell.row, cell.row});
    SelectRange(top, m_fixedColCount, bottom, GetColumnCount() - 1);
}

void CGridCtrl::SelectCellSpan(CGridPos cell) {
    if (!IsValid(cell) || IsCellFixed(cell.row, cell.col))
        return;
    const auto [top, bottom] = std::minmax({m_selectionStartCell.row, cell.row});
    const auto [left, right] = std::minmax({m_selectionStartCell.col, cell.col});
    SelectRange(top, left, bottom, right);
}

void CGridCtrl::ExtendSelection(CGridPos cell) {
    switch (m_mouseMode) {
        case MouseSelectingAll:
            SelectAll();
            break;
        case MouseSelectingColumns:
            SelectColumnSpan(cell);
            break;
        case MouseSelectingRows:
            SelectRowSpan(cell);
            break;
        case MouseSelectingCells:
            SelectCellSpan(cell);
            break;
        default:
            break;
    }
}

void CGridCtrl::OnEditSelectAll() {
    SelectAll();
}
