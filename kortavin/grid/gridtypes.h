#pragma once

#include "kortavin/base/cstring.h"
#include "kortavin/window/gdi.h"
#include "kortavin/window/wintypes.h"

namespace kortavin {

// A cell by row and column, counted from 0 with fixed rows and columns included. (-1, -1) means no cell.
class CGridPos {
  public:
    constexpr CGridPos() = default;
    constexpr CGridPos(int gridRow, int gridCol) : row(gridRow), col(gridCol) {}
    friend constexpr bool operator==(const CGridPos&, const CGridPos&) = default;

    int row = -1;
    int col = -1;
};

// A rectangle of cells, all edges included. (-1, -1, -1, -1) is empty.
class CGridRange {
  public:
    constexpr CGridRange() = default;
    constexpr CGridRange(int top, int left, int bottom, int right)
        : minRow(top), minCol(left), maxRow(bottom), maxCol(right) {}
    friend constexpr bool operator==(const CGridRange&, const CGridRange&) = default;

    constexpr bool Contains(CGridPos cell) const {
        return cell.row >= minRow && cell.row <= maxRow && cell.col >= minCol && cell.col <= maxCol;
    }
    // How many cells a valid range has.
    constexpr LONGLONG GetCount() const {
        return (LONGLONG{maxRow} - minRow + 1) * (LONGLONG{maxCol} - minCol + 1);
    }

    int minRow = -1;
    int minCol = -1;
    int maxRow = -1;
    int maxCol = -1;
};

// Cell states.
inline constexpr UINT GridStateFocused = 0x01;
inline constexpr UINT GridStateSelected = 0x02;
inline constexpr UINT GridStateDropHilited = 0x04;  // drawn with a black frame
inline constexpr UINT GridStateReadOnly = 0x08;
inline constexpr UINT GridStateModified = 0x20;  // changed by editing

// Fields of a GridItem that are meant.
inline constexpr UINT GridItemText = 0x01;
inline constexpr UINT GridItemImage = 0x02;
inline constexpr UINT GridItemParam = 0x04;
inline constexpr UINT GridItemState = 0x08;
inline constexpr UINT GridItemBkColour = 0x10;
inline constexpr UINT GridItemFgColour = 0x20;
inline constexpr UINT GridItemFormat = 0x40;
inline constexpr UINT GridItemFont = 0x80;

// A cell's colour that stands for the grid's.
inline constexpr COLORREF kGridDefaultColor = 0xFF000000;

// Several attributes of one cell, read or written at once.
struct GridItem {
    int row = -1;
    int col = -1;
    UINT mask = 0;     // GridItem... bits
    UINT state = 0;    // GridState... bits
    UINT nFormat = 0;  // DT_ bits (kortavin/window/dc.h)
    CString text;
    int image = -1;  // index in the grid's image list; -1: none
    COLORREF bkColour = kGridDefaultColor;
    COLORREF fgColour = kGridDefaultColor;
    LPARAM lParam = 0;  // the caller's own
    LOGFONT font;
};

// Which grid lines are drawn.
inline constexpr int GridLinesNone = 0;
inline constexpr int GridLinesHorz = 1;
inline constexpr int GridLinesVert = 2;
inline constexpr int GridLinesBoth = 3;

// Notifications (WM_NOTIFY) of a grid to its owner, with a GridNotify.
inline constexpr int GridNotifyFocusLeaving = -100;   // the old focus cell, before it changes
inline constexpr int GridNotifyFocusChanged = -101;   // the new one
inline constexpr int GridNotifyEditCommitted = -102;  // an edit's text was taken back
inline constexpr int GridNotifyBeginEdit = -105;      // an editor opens, or Delete clears the cell
inline constexpr int GridNotifyEndEdit = -106;        // editing is over; from an editor to the grid too

struct GridNotify {
    NMHDR hdr;
    int row = -1;
    int col = -1;
};

// From an editor to the grid: what it holds, and in item.lParam the key that ended it (0: none).
struct GridEditNotify {
    NMHDR hdr;
    GridItem item;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGridPos;
using kortavin::CGridRange;
using kortavin::GridEditNotify;
using kortavin::GridItem;
using kortavin::GridItemBkColour;
using kortavin::GridItemFgColour;
using kortavin::GridItemFont;
using kortavin::GridItemFormat;
using kortavin::GridItemImage;
using kortavin::GridItemParam;
using kortavin::GridItemState;
using kortavin::GridItemText;
using kortavin::GridLinesBoth;
using kortavin::GridLinesHorz;
using kortavin::GridLinesNone;
using kortavin::GridLinesVert;
using kortavin::GridNotify;
using kortavin::GridNotifyBeginEdit;
using kortavin::GridNotifyEditCommitted;
using kortavin::GridNotifyEndEdit;
using kortavin::GridNotifyFocusChanged;
using kortavin::GridNotifyFocusLeaving;
using kortavin::GridStateDropHilited;
using kortavin::GridStateFocused;
using kortavin::GridStateModified;
using kortavin::GridStateReadOnly;
using kortavin::GridStateSelected;
using kortavin::kGridDefaultColor;
#endif
