#pragma once

#include "kortavin/window/combobox.h"

namespace kortavin {

// A list of sizes of a round point symbol, each shown as a circle, and the symbol's two colours: the closed
// combo box shows a swatch for each at its left end, and a press on one asks the user for that colour. The
// host attaches it to an owner-drawn, unsorted drop-down list of fixed item height, sets size and colours and
// reads them back when its dialog is accepted; the parent is told nothing. The list fills itself when a size
// is set or an item is drawn.
//
// Sizes are hundredths of a millimetre and become the radius of the circle. The items are 20, 50, 100, 150
// and 200: radii of 0.2 to 2 mm, which at 96 pixels per inch are 1, 2, 4, 6 and 8 pixels, at 120 are 1, 2, 5,
// 7 and 9. Colours are 0x00BBGGRR; they start black on white.
class KORTAVIN_API CSelSymStyle : public CComboBox {
  public:
    CSelSymStyle();
    ~CSelSymStyle() override;
    const window::MessageMap* GetMessageMap() const override;

    // Draws one item in the request's rectangle: the circle in its middle, filled with the colour and
    // outlined in the background colour; round it, in the list, a frame in the background colour; before it,
    // in the selection field, the swatches. The selection field is not cleared first. A highlighted item
    // looks the same as any other; a number without a size shows size 50.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;
    // Items are 20 pixels high and 400 wide; the selection field becomes 24 pixels high.
    void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct) override;

    // Selects the item and its size; item 0 (size 20) for a number outside 0 to 4. Without a window both are
    // only stored.
    void SetStyle(int nStyle);
    // Selects the smallest size that is not below the given one; 200 for all that are larger.
    void SetSize(int nSize);
    int GetSize() const { return m_Size; }

    // Each stores its colour, then has the parent paint its whole client area at once. Without a window, or
    // without a parent, it is only stored.
    void SetColor(COLORREF color);
    void SetBGColor(COLORREF color);
    COLORREF GetColor() const { return m_Color; }
    COLORREF GetBGColor() const { return m_BGColor; }

  protected:
    // Takes over what the user selected; size 20 when nothing is.
    void OnSelchange();
    // On a swatch: asks the user for its colour, starting from the symbol's colour on both, and shows what is
    // confirmed; the list does not open. CResourceException when the chooser cannot open: nothing has
    // changed. Anywhere else: the combo box's default handling.
    void OnLButtonDown(UINT nFlags, CPoint point);

    int m_Style = 0;
    int m_Size = 20;
    COLORREF m_Color = RGB(0, 0, 0);
    CRect m_ColorRect;  // the swatches as last drawn, in client coordinates; empty before
    COLORREF m_BGColor = RGB(255, 255, 255);
    CRect m_BGColorRect;

  private:
    void DrawSwatches(CDC& dc, const CRect& field);
    void DrawSymbol(CDC& dc, const CRect& rect, int size, bool framed) const;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CSelSymStyle;
#endif
