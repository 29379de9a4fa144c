#pragma once

#include <QtWidgets/QWidget>

#include "grid/gridctrl.h"

class QCheckBox;
class QHBoxLayout;

namespace kortavin::demo {

// The page "表格": the sample's cities again and again, a hundred thousand rows to scroll, select, sort and
// edit.
class GridPage : public QWidget {
  public:
    GridPage();

    const CGridCtrl& Grid() const { return m_grid; }

  private:
    void Fill();
    QHBoxLayout* MakeSwitches();
    // A switch for a setting of the grid; found by `name`.
    void AddSwitch(QHBoxLayout& row, const QString& text, const char* name, bool isOn,
                   void (CGridCtrl::*set)(BOOL));

    CGridCtrl m_grid;
};

}  // namespace kortavin::demo
