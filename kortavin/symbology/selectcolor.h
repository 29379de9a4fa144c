#pragma once

#include "kortavin/window/static.h"

namespace kortavin {

// A colour swatch: a label that shows one colour and lets the user change it. The host attaches it to a
// static control of its dialog, sets the colour and reads it back when the dialog is accepted; the parent is
// told nothing. Colours are 0x00BBGGRR and start black.
class KORTAVIN_API CSelectColor : public CStatic {
  public:
    CSelectColor();
    ~CSelectColor() override;
    const window::MessageMap* GetMessageMap() const override;

    // Stores the colour, then has the parent paint its whole client area at once. Without a window, or
    // without a parent, it is only stored.
    void SetColor(COLORREF color);
    COLORREF GetColor() const { return m_Color; }

  protected:
    // Fills the client area with the colour; no border, no text, no focus mark.
    void OnPaint();
    // Asks the user for a colour, from the present one on, and sets what is confirmed; the press then goes on
    // to the control's default handling. CResourceException when the chooser cannot open: nothing has
    // changed.
    void OnLButtonDown(UINT nFlags, CPoint point);

    COLORREF m_Color = RGB(0, 0, 0);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CSelectColor;
#endif
