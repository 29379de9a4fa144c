#pragma once

#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// A grid of sample or preview data. Every cell is edited as centred text, whatever its format.
class CMateupSampleGrid : public CGridCtrl {
  public:
    using CGridCtrl::CGridCtrl;
    ~CMateupSampleGrid() override;

    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;
};

}  // namespace kortavin
