#pragma once

#include "kortavin/window/combobox.h"

namespace kortavin {

// A list of line styles, each shown as a black line on white. The host attaches it to an owner-drawn,
// unsorted drop-down list of fixed item height, sets the style and reads it back when its dialog is accepted;
// the parent is told nothing. The list fills itself when a style is set or an item is drawn.
//
// A style is the index of an item, and the number of the pen style that draws it: 0 solid (PS_SOLID), 1
// dashes (PS_DASH), 2 dots (PS_DOT), 3 dash and dot (PS_DASHDOT), 4 dash and two dots (PS_DASHDOTDOT).
class KORTAVIN_API CSelLineStyle : public CComboBox {
  public:
    CSelLineStyle();
    ~CSelLineStyle() override;
    const window::MessageMap* GetMessageMap() const override;

    // Draws one item in the request's rectangle: white, with a one-pixel line through the middle, two pixels
    // short of both ends. The selection field and a highlighted item look the same as any other; a number
    // without a style shows a solid line.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

    // Selects the style's item, and style 0 for a number outside 0 to 4. Without a window it is only stored.
    void SetStyle(int nStyle);
    int GetStyle() const { return m_Style; }

  protected:
    // Takes over what the user selected; 0 when nothing is.
    void OnSelchange();

    int m_Style = 0;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CSelLineStyle;
#endif
