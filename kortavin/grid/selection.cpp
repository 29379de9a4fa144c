#include <algorithm>

#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// The focus cell and the selected cells.

using window::TableChange;

// Which cells show, asked once for many.
class CGridCtrl::ShownCells {
  public:
    explicit ShownCells(const CGridCtrl& grid)
        : m_grid(grid), m_visible(grid.IsDrawn() ? grid.GetVisibleScrollRange() : CGridRange()) {}

    bool Contains(CGridPos cell) const {
        return m_grid.IsDrawn() &&
               (cell.row < m_grid.m_fixedRowCount ||
                IsBetween(cell.row, m_visible.minRow, m_visible.maxRow)) &&
               (cell.col < m_grid.m_fixedColCount || IsBetween(cell.col, m_visible.minCol, m_visible.maxCol));
    }

  private:
    static bool IsBetween(int index, int first, int last) { return index >= first && index <= last; }

    const CGridCtrl& m_grid;
    CGridRange m_visible;
};

// A handler of the first notification may put the focus back or move it on.
CGridPos CGridCtrl::SetFocusCell(CGridPos cell) {
    if (!IsValid(cell))
        cell = CGridPos();
    if (cell == m_focusCell)
        return m_focusCell;
    const CGridPos former = m_focusCell;
    const bool columnChanges = cell.col != former.col;
    const bool rowChanges = cell.row != former.row;
    m_focusCell = cell;
    const Life life(*this);
    if (IsValid(former)) {
        NotifyParent(former.row, former.col, GridNotifyFocusLeaving);
        if (!life.Exists())
            return former;
        ShowFocusAt(former, former == m_focusCell, rowChanges, columnChanges);
    }
    if (IsValid(cell) && m_focusCell == cell) {
        ShowFocusAt(cell, true, rowChanges, columnChanges);
        TellTableChange(TableChange::Focus, cell);
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
    m_prevSelectedCells.clear();
    SelectRange(-1, -1, -1, -1);
    SetFocusCell(-1, -1);
}

// Before rows or columns move: nothing may stay selected, even where selecting is switched off. False when
// the grid, or its window, went in a notification.
bool CGridCtrl::DropSelection() {
    const ShownCells shown(*this);
    m_prevSelectedCells.clear();
    for (const auto& [key, cell] : m_selectedCells) {
        CellAt(cell.row, cell.col)->state &= ~GridStateSelected;
        if (shown.Contains(cell))
            InvalidateCell(cell);
    }
    m_selectedCells.clear();
    m_selectionStartCell = CGridPos();
    const Life life(*this);
    SetFocusCell(-1, -1);
    return static_cast<bool>(life);
}

void CGridCtrl::SelectRange(const CGridRange& range, BOOL bForceRepaint) {
    SelectRange(range.minRow, range.minCol, range.maxRow, range.maxCol, bForceRepaint);
}

// Cells that stay selected look the same and are left alone, and so are those that do not show.
void CGridCtrl::SelectRange(int minRow, int minCol, int maxRow, int maxCol, BOOL bForceRepaint) {
    if (!m_enableSelection)
        return;
    const CGridRange asked(minRow, minCol, maxRow, maxCol);
    const CGridRange range = IsValid(asked) ? asked : CGridRange();
    const ShownCells shown(*this);
    const auto repaint = [&](CGridPos cell) {
        if (shown.Contains(cell))
            bForceRepaint ? RedrawCell(cell.row, cell.col) : InvalidateCell(cell);
    };
    const bool keepsFormer = !m_singleRowSelection;
    bool changes = false;
    for (auto at = m_selectedCells.begin(); at != m_selectedCells.end();) {
        const auto [key, cell] = *at;
        if (range.Contains(cell) || (keepsFormer && m_prevSelectedCells.contains(key))) {
            ++at;
            continue;
        }
        CellAt(cell.row, cell.col)->state &= ~GridStateSelected;
        at = m_selectedCells.erase(at);
        changes = true;
        repaint(cell);
    }
    const auto select = [&](CGridPos cell) {
        const UINT state = GetItemState(cell.row, cell.col);
        if ((state & GridStateSelected) != 0 || !SetItemState(cell.row, cell.col, state | GridStateSelected))
            return;
        changes = true;
        repaint(cell);
    };
    if (keepsFormer)
        for (const auto& [key, cell] : m_prevSelectedCells)
            select(cell);
    for (int row = range.minRow; row >= 0 && row <= range.maxRow; ++row)
        for (int col = range.minCol; col <= range.maxCol; ++col)
            select({row, col});
    if (changes)
        TellTableChange(TableChange::Selection,
                        range == CGridRange() ? CGridPos(0, 0) : CGridPos(range.minRow, range.minCol));
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

void CGridCtrl::OnUpdateEditSelectAll(CCmdUI* pCmdUI) {
    pCmdUI->Enable(m_enableSelection);
}

void CGridCtrl::OnEditSelectAll() {
    SelectAll();
}

}  // namespace kortavin
