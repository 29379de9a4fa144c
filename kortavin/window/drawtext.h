#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "kortavin/base/geometry.h"
#include "kortavin/window/toolkit.h"

namespace kortavin::window {

// One line of a text in its place.
struct TextLine {
    std::string text;
    CPoint corner;  // upper left
};

struct TextLayout {
    std::vector<TextLine> lines;
    CRect box;  // of all lines, from the rectangle's upper left corner; measured for DT_CALCRECT only
    int height = 0;
};

// Breaks a text into lines and places them in the rectangle, as CDC::DrawText tells. What cannot show in the
// rectangle is left out unless the flags ask for all of it (DT_NOCLIP, DT_CALCRECT), so that time goes with
// what shows.
TextLayout LayOutText(std::string_view text, const NativeFont& font, const CRect& rect, UINT flags);

}  // namespace kortavin::window
