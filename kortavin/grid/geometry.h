#pragma once

#include <optional>

#include "kortavin/grid/axis.h"

namespace kortavin::grid {

// Rows or columns as they lie in a window: the fixed ones at its edge, the others scrolled behind them.
// Positions are pixels from the edge of the client area.
struct AxisView {
    struct Last {
        int index;
        int end;
    };

    const Axis& axis;
    int fixedCount;
    int scrollPosition;
    int clientEnd;

    int FixedSize() const;
    // The first scrolled index that shows: the first that begins at or behind the scroll position, at most
    // the last; the fixed count where nothing scrolls.
    int First() const;
    // The last index that shows, if only in part, and where what shows ends, at most the client area's end.
    Last LastVisible() const;
    // The last index that shows whole; First() - 1 when none does. Index 0 counts even if it is cut.
    int LastFullyVisible() const;
    // Where an index begins, which may be behind the client area; nothing for one that is scrolled out.
    std::optional<int> StartOf(int index) const;
    // The index at a position; -1 outside, and on fixed ones that are not allowed.
    int HitTest(int position, bool allowFixed) const;
};

}  // namespace kortavin::grid
