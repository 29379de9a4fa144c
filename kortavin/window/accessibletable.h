#pragma once

#include <optional>

#include "kortavin/base/cstring.h"
#include "kortavin/base/geometry.h"

namespace kortavin::window {

// A window's content as a screen reader sees it: a table of cells, its first rows and columns perhaps
// headings. Rows and columns are counted from 0 with the headings. Answers hold for the moment of asking.
class KORTAVIN_API AccessibleTable {
  public:
    struct Cell {
        int row = 0;
        int column = 0;
        friend bool operator==(const Cell&, const Cell&) = default;
    };

    virtual ~AccessibleTable();
    virtual int TableRows() const = 0;
    virtual int TableColumns() const = 0;
    virtual int HeadingRows() const = 0;
    virtual int HeadingColumns() const = 0;
    virtual CString TableText(Cell cell) const = 0;
    virtual CRect TableRect(Cell cell) const = 0;  // in the client area; empty for what does not show
    virtual std::optional<Cell> TableCellAt(CPoint clientPoint) const = 0;
    virtual std::optional<Cell> TableFocus() const = 0;
    virtual bool IsTableCellSelected(Cell cell) const = 0;
    virtual bool IsTableCellEditable(Cell cell) const = 0;
    virtual void FocusTableCell(Cell cell) = 0;
};

// What a screen reader is told of.
enum class TableChange { Focus, Text, Selection, Layout };

}  // namespace kortavin::window
