#pragma once

#include <algorithm>

#include "kortavin/window/gdi.h"

// What is drawn on dark colours.
namespace kortavin::grid {

// A ground on which black does not show.
constexpr bool IsDark(COLORREF color) {
    return std::max({GetRValue(color), GetGValue(color), GetBValue(color)}) < 0x50;
}

// A line that was meant for light grounds, nearer to a dark one.
constexpr COLORREF Softened(COLORREF line, COLORREF ground) {
    const auto third = [](int from, int to) { return from + (to - from) / 3; };
    return RGB(third(GetRValue(ground), GetRValue(line)), third(GetGValue(ground), GetGValue(line)),
               third(GetBValue(ground), GetBValue(line)));
}

}  // namespace kortavin::grid
