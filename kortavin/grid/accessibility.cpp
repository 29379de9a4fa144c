#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/accessibletable.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

// The grid as a screen reader sees it.

using window::AccessibleTable;
using window::TableChange;

class CGridCtrl::AccessibleCells : public AccessibleTable {
  public:
    explicit AccessibleCells(CGridCtrl& grid) : m_grid(grid) {}

    int TableRows() const override { return m_grid.GetRowCount(); }
    int TableColumns() const override { return m_grid.GetColumnCount(); }
    int HeadingRows() const override { return m_grid.GetFixedRowCount(); }
    int HeadingColumns() const override { return m_grid.GetFixedColumnCount(); }
    CString TableText(Cell cell) const override { return m_grid.GetItemText(cell.row, cell.column); }

    CRect TableRect(Cell cell) const override {
        CRect rect;
        if (!m_grid.IsCellVisible(cell.row, cell.column) || !m_grid.GetCellRect(cell.row, cell.column, &rect))
            return {};
        rect.InflateRect(0, 0, 1, 1);
        return rect;
    }
    std::optional<Cell> TableCellAt(CPoint clientPoint) const override {
        CRect client;
        m_grid.GetClientRect(&client);
        return client.PtInRect(clientPoint) ? Existing(m_grid.HitTestCell(clientPoint)) : std::nullopt;
    }
    std::optional<Cell> TableFocus() const override { return Existing(m_grid.GetFocusCell()); }
    bool IsTableCellSelected(Cell cell) const override {
        return (m_grid.GetItemState(cell.row, cell.column) & GridStateSelected) != 0;
    }
    bool IsTableCellEditable(Cell cell) const override {
        return IsBody(cell) && m_grid.IsCellEditable(cell.row, cell.column);
    }

    void FocusTableCell(Cell cell) override {
        if (!IsBody(cell))
            return;
        const Life life(m_grid);
        m_grid.SetFocus();  // which ends an open edit
        if (life)
            m_grid.EnsureVisible(cell.row, cell.column);
        if (life)
            m_grid.SetFocusCell(cell.row, cell.column);
    }

  private:
    bool IsBody(Cell cell) const {
        return m_grid.IsValid(cell.row, cell.column) && !m_grid.IsCellFixed(cell.row, cell.column);
    }
    std::optional<Cell> Existing(CGridPos cell) const {
        return m_grid.IsValid(cell) ? std::optional(Cell{cell.row, cell.col}) : std::nullopt;
    }

    CGridCtrl& m_grid;
};

void CGridCtrl::OfferAccessibleTable() {
    if (m_accessibleTable == nullptr)
        m_accessibleTable = std::make_unique<AccessibleCells>(*this);
    window::RecordOf(m_hWnd)->Native().SetAccessibleTable(m_accessibleTable.get());
}

// What changes without a window is read when it has one.
void CGridCtrl::TellTableChange(TableChange change, CGridPos cell) const {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().TellTableChange(change, {cell.row, cell.col});
}

}  // namespace kortavin
