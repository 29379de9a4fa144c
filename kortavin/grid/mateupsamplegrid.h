#pragma once

#include "grid/gridctrl.h"

// A grid of sample or preview data. Every cell is edited as centred text, whatever its format.
class KORTAVIN_API CMateupSampleGrid : public CGridCtrl {
  public:
    using CGridCtrl::CGridCtrl;
    ~CMateupSampleGrid() override;

    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;
};
