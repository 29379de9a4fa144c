#pragma once

#include <span>

#include "kortavin/base/geometry.h"
#include "kortavin/window/styles.h"

// Tables that describe dialogs. Positions and sizes are in dialog units: a quarter of the average width and
// an eighth of the height of a character in the dialog's font.
namespace kortavin::window {

// One control; the order of controls is the tab order.
struct ControlTemplate {
    const char* className;
    int id;
    unsigned text;  // number of a text of the same module; 0: none
    int x, y, width, height;
    DWORD style;  // WS_CHILD is understood
};

struct DialogTemplate {
    unsigned id;
    unsigned caption;  // as ControlTemplate::text
    int width, height;
    DWORD style;
    const char* fontName;
    int fontPoints;
    std::span<const ControlTemplate> controls;
};

}  // namespace kortavin::window
