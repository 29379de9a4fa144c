#include <algorithm>
#include <iterator>
#include <set>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

// Cells as text for other programs.

namespace {

// Tabs and line breaks part cells and rows. None is ever a byte of a longer character.
void AppendAsOneCell(CString& text, const CString& cell) {
    bool wasReturn = false;
    for (const char byte : cell.View()) {
        const bool parts = byte == '\t' || byte == '\r' || byte == '\n';
        if (byte != '\n' || !wasReturn)
            text += parts ? ' ' : byte;
        wasReturn = byte == '\r';
    }
}

}  // namespace

// The rows and columns in which a cell is selected, so that columns stay columns: what is not selected there
// is empty. A cell alone has no line end; without a selection it is the focus cell.
CString CGridCtrl::TextToCopy() const {
    std::set<int> rows, columns;
    for (const auto& [key, cell] : m_selectedCells) {
        rows.insert(cell.row);
        columns.insert(cell.col);
    }
    CString text;
    if (m_selectedCells.size() <= 1) {
        const CGridPos cell = m_selectedCells.empty() ? m_focusCell : m_selectedCells.begin()->second;
        AppendAsOneCell(text, GetItemText(cell.row, cell.col));
        return text;
    }
    for (const int row : rows) {
        for (const int col : columns) {
            if (col != *columns.begin())
                text += '\t';
            if ((GetItemState(row, col) & GridStateSelected) != 0)
                AppendAsOneCell(text, GetItemText(row, col));
        }
        text += "\r\n";
    }
    return text;
}

void CGridCtrl::CopyToClipboard() const {
    window::RequireToolkit().SetClipboardText(TextToCopy().View());
}

}  // namespace kortavin
