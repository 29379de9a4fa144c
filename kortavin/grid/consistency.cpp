#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// What holds of a grid at all times.

CString CGridCtrl::CheckConsistency() const {
    if (m_rowData.size() != static_cast<std::size_t>(GetRowCount()))
        return "as many rows of cells as heights";
    if (m_fixedRowCount > GetRowCount() || m_fixedColCount > GetColumnCount())
        return "no more fixed rows and columns than there are";
    if (m_focusCell != CGridPos() && !IsValid(m_focusCell))
        return "the focus cell exists";
    std::size_t selected = 0;
    for (int row = 0; row < GetRowCount(); ++row) {
        const Row& cells = m_rowData[static_cast<std::size_t>(row)];
        if (cells.size() != static_cast<std::size_t>(GetColumnCount()))
            return "every row has a cell in every column";
        for (int col = 0; col < GetColumnCount(); ++col) {
            const auto& cell = cells[static_cast<std::size_t>(col)];
            if (cell == nullptr)
                return "every cell exists";
            const bool isSelected = (cell->state & GridStateSelected) != 0;
            if (isSelected != m_selectedCells.contains(KeyOf({row, col})))
                return "a cell is among the selected ones exactly when its state says so";
            if (((cell->state & GridStateFocused) != 0) != (m_focusCell == CGridPos(row, col)))
                return "the focus cell alone has the focus state";
            selected += isSelected;
        }
    }
    return selected == m_selectedCells.size() ? "" : "no selected cell is gone";
}

}  // namespace kortavin
