#pragma once

#include <QtWidgets/QWidget>

#include "kortavin/base/arrays.h"
#include "kortavin/grid/gridctrl.h"

class QCheckBox;
class QHBoxLayout;

namespace kortavin::desktop {

// A table in which the texts of one column are chosen from a list.
class ListedGrid : public CGridCtrl {
  public:
    void SetChoices(int col, const CStringArray& choices);
    int ListedColumn() const { return m_listed; }
    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;

  private:
    int m_listed = -1;
    CStringArray m_choices;
};

// The page "表格": the sample's cities again and again, a hundred thousand rows to scroll, select, sort and
// edit.
class GridPage : public QWidget {
  public:
    GridPage();

    const ListedGrid& Grid() const { return m_grid; }

  private:
    void Fill();
    QHBoxLayout* MakeSwitches();
    // A switch for a setting of the grid; found by `name`.
    void AddSwitch(QHBoxLayout& row, const QString& text, const char* name, bool isOn,
                   void (CGridCtrl::*set)(BOOL));

    ListedGrid m_grid;
};

}  // namespace kortavin::desktop
