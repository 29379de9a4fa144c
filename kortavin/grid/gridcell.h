#pragma once

#include "grid/gridtypes.h"

// One cell of a grid, owned by it.
class CGridCell {
  public:
    CString text;
    LPARAM data = 0;
    const LOGFONT* font = nullptr;  // shared by all cells of equal fonts (SharedFont); null: the grid's
    UINT state = 0;
    UINT format = 0;
    int image = -1;
    COLORREF bkColour = kGridDefaultColour;
    COLORREF fgColour = kGridDefaultColour;
};
