#pragma once

#include "kortavin/window/combobox.h"

namespace kortavin {

// A list of area styles, each shown as an item filled with it. The host attaches it to an owner-drawn,
// unsorted drop-down list of fixed item height, sets style and colours and reads them back when its dialog is
// accepted; the parent is told nothing. The list fills itself when a style is set or an item is drawn.
//
// A style is the index of an item. 0 to 5 are also the numbers of the hatch styles that fill it: horizontal
// (HS_HORIZONTAL), vertical (HS_VERTICAL), falling and rising diagonals (HS_FDIAGONAL, HS_BDIAGONAL), both
// straight ones (HS_CROSS), both diagonals (HS_DIAGCROSS). 6 is a solid fill. Colours are 0x00BBGGRR; they
// start black on white with a black outline.
class KORTAVIN_API CSelAreaStyle : public CComboBox {
  public:
    CSelAreaStyle();
    ~CSelAreaStyle() override;
    const window::MessageMap* GetMessageMap() const override;

    // Fills the request's rectangle with the item's style: hatch lines in the colour, the spaces between them
    // in the background colour, all of it in the colour for the solid style. The selection field and a
    // highlighted item look the same as any other; a number without a style (-1: nothing is selected) paints
    // nothing.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

    // Selects the style's item, and style 0 for a number outside 0 to 6. Without a window it is only stored.
    void SetStyle(int nStyle);
    int GetStyle() const { return m_Style; }

    // Each stores its colour, then has the parent paint its whole client area at once. Without a window, or
    // without a parent, it is only stored. No picture shows the outline.
    void SetColor(COLORREF color);
    void SetBGColor(COLORREF color);
    void SetOutLineColor(COLORREF color);
    COLORREF GetColor() const { return m_Color; }
    COLORREF GetBGColor() const { return m_BGColor; }
    COLORREF GetOutLineColor() const { return m_OutLineColor; }

  protected:
    // Takes over what the user selected; 0 when nothing is.
    void OnSelchange();
    // Presses of the left and right button: the combo box's default handling.
    void OnButtonDown(UINT nFlags, CPoint point);

    int m_Style = 0;
    COLORREF m_Color = RGB(0, 0, 0);
    COLORREF m_BGColor = RGB(255, 255, 255);
    COLORREF m_OutLineColor = RGB(0, 0, 0);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CSelAreaStyle;
#endif
