#pragma once

#include "kortavin/grid/gridtypes.h"

namespace kortavin {

// One cell of a grid, owned by it.
class CGridCell {
  public:
    CString text;
    LPARAM data = 0;
    const LOGFONT* font = nullptr;  // shared by all cells of equal fonts (SharedFont); null: the grid's
    UINT state = 0;
    UINT format = 0;
    int image = -1;
    COLORREF bkColour = kGridDefaultColor;
    COLORREF fgColour = kGridDefaultColor;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGridCell;
#endif
