#include "kortavin/grid/gridctrl.h"
#include "kortavin/grid/sharedfont.h"

namespace kortavin {

// One cell's attributes.

template <class Set>
BOOL CGridCtrl::ChangeCell(int row, int col, Set set) {
    CGridCell* const cell = CellAt(row, col);
    if (cell != nullptr)
        set(*cell);
    return cell != nullptr;
}

BOOL CGridCtrl::SetItem(const GridItem* pItem) {
    return pItem != nullptr && ChangeCell(pItem->row, pItem->col, [&](CGridCell& cell) {
               const auto take = [&](UINT bit, auto& field, const auto& value) {
                   if ((pItem->mask & bit) != 0)
                       field = value;
               };
               take(GridItemText, cell.text, pItem->text);
               take(GridItemParam, cell.data, pItem->lParam);
               take(GridItemImage, cell.image, pItem->image);
               take(GridItemState, cell.state, pItem->state);
               take(GridItemFormat, cell.format, pItem->nFormat);
               take(GridItemBkColour, cell.bkColour, pItem->bkColour);
               take(GridItemFgColour, cell.fgColour, pItem->fgColour);
               if ((pItem->mask & GridItemFont) != 0)
                   cell.font = grid::SharedFont(pItem->font);
           });
}

BOOL CGridCtrl::GetItem(GridItem* pItem) const {
    const CGridCell* const cell = pItem != nullptr ? CellAt(pItem->row, pItem->col) : nullptr;
    if (cell == nullptr)
        return FALSE;
    const auto give = [&](UINT bit, auto& field, const auto& value) {
        if ((pItem->mask & bit) != 0)
            field = value;
    };
    if ((pItem->mask & GridItemText) != 0)
        pItem->text = GetItemText(pItem->row, pItem->col);
    give(GridItemParam, pItem->lParam, cell->data);
    give(GridItemImage, pItem->image, cell->image);
    give(GridItemState, pItem->state, cell->state);
    give(GridItemFormat, pItem->nFormat, cell->format);
    give(GridItemBkColour, pItem->bkColour, cell->bkColour);
    give(GridItemFgColour, pItem->fgColour, cell->fgColour);
    give(GridItemFont, pItem->font, *GetItemFont(pItem->row, pItem->col));
    return TRUE;
}

BOOL CGridCtrl::SetItemText(int row, int col, const char* text) {
    return ChangeCell(row, col, [&](CGridCell& cell) { cell.text = text; });
}

CString CGridCtrl::GetItemText(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->text : CString();
}

BOOL CGridCtrl::SetItemData(int row, int col, LPARAM data) {
    return ChangeCell(row, col, [&](CGridCell& cell) { cell.data = data; });
}

LPARAM CGridCtrl::GetItemData(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->data : 0;
}

BOOL CGridCtrl::SetItemImage(int row, int col, int image) {
    return ChangeCell(row, col, [&](CGridCell& cell) { cell.image = image; });
}

int CGridCtrl::GetItemImage(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->image : -1;
}

BOOL CGridCtrl::SetItemState(int row, int col, UINT state) {
    return ChangeCell(row, col, [&](CGridCell& cell) {
        const CGridPos place(row, col);
        const bool wasSelected = (cell.state & GridStateSelected) != 0;
        const bool isSelected = (state & GridStateSelected) != 0;
        if (wasSelected && !isSelected)
            m_selectedCells.erase(KeyOf(place));
        if (!wasSelected && isSelected)
            m_selectedCells.insert_or_assign(KeyOf(place), place);
        cell.state = state;
    });
}

UINT CGridCtrl::GetItemState(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->state : 0;
}

BOOL CGridCtrl::SetItemFormat(int row, int col, UINT format) {
    return ChangeCell(row, col, [&](CGridCell& cell) { cell.format = format; });
}

UINT CGridCtrl::GetItemFormat(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->format : 0;
}

BOOL CGridCtrl::SetCellBackColor(int row, int col, COLORREF color) {
    return ChangeCell(row, col, [&](CGridCell& cell) { cell.bkColour = color; });
}

COLORREF CGridCtrl::GetCellBackColor(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->bkColour : 0;
}

BOOL CGridCtrl::SetCellTextColor(int row, int col, COLORREF color) {
    return ChangeCell(row, col, [&](CGridCell& cell) { cell.fgColour = color; });
}

COLORREF CGridCtrl::GetCellTextColor(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr ? cell->fgColour : 0;
}

BOOL CGridCtrl::SetItemFont(int row, int col, const LOGFONT* font) {
    return font != nullptr &&
           ChangeCell(row, col, [&](CGridCell& cell) { cell.font = grid::SharedFont(*font); });
}

const LOGFONT* CGridCtrl::GetItemFont(int row, int col) const {
    const CGridCell* const cell = CellAt(row, col);
    return cell != nullptr && cell->font != nullptr ? cell->font : &m_logFont;
}

BOOL CGridCtrl::IsCellEditable(int row, int col) const {
    return m_editable && (GetItemState(row, col) & GridStateReadOnly) == 0;
}

void CGridCtrl::SetModified(BOOL bModified, int row, int col) {
    constexpr auto kFlag = GridStateModified;
    if (row < 1 || col < 1) {
        m_modified = bModified;
    } else if (bModified) {
        SetItemState(row, col, GetItemState(row, col) | kFlag);
        m_modified = TRUE;
    } else {
        SetItemState(row, col, GetItemState(row, col) & ~kFlag);
    }
    if (m_modified)
        return;
    for (int r = 0; r < GetRowCount(); ++r)
        for (int c = 0; c < GetColumnCount(); ++c)
            SetItemState(r, c, GetItemState(r, c) & ~kFlag);
}

BOOL CGridCtrl::GetModified(int row, int col) const {
    return row >= 1 && col >= 1 ? (GetItemState(row, col) & GridStateModified) != 0 : m_modified;
}

}  // namespace kortavin
