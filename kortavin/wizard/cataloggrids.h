#pragma once

#include "kortavin/db/geodatabase.h"
#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// A grid of the wizard, whose cells are filled by choosing from the chosen tables or their columns, or by
// typing. What it offers is asked of the catalog each time a cell is edited.
class CCatalogGrid : public CGridCtrl {
  public:
    ~CCatalogGrid() override;

    CGeoDatabase* m_pDatabase = nullptr;   // not owned
    CStringArray* m_pSelTables = nullptr;  // the chosen tables; not owned

  protected:
    CStringArray ChosenTables() const;
    // Of the table that a cell names; none for an empty cell.
    CStringArray ColumnsOfTableIn(int row, int col) const;
    // Opens the list editor, in which other texts can be typed too.
    void OpenList(const CStringArray& choices, const CRect& rect, UINT nID, int row, int col,
                  const char* text, int nChar);
};

// Tables in the even columns, fields of the table to their left in the odd ones.
class CTableFieldGrid : public CCatalogGrid {
  public:
    ~CTableFieldGrid() override;
    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;
};

// Tables in row 1, their fields in row 2, typed conditions below.
class CConditionGrid : public CCatalogGrid {
  public:
    ~CConditionGrid() override;
    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;
};

// Tables in column 1, their fields in column 2, directions in column 3. Nothing else can be edited.
class CSortGrid : public CCatalogGrid {
  public:
    ~CSortGrid() override;
    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;
};

}  // namespace kortavin
