#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin::desktop {

// What the five pickers say together, and the colours that the host adds to them.
struct Symbols {
    int lineStyle = 0;
    COLORREF lineColor = 0;
    int areaStyle = 0;
    COLORREF areaColor = 0;
    COLORREF areaBackground = 0;
    COLORREF areaOutline = 0;
    int pointSize = 0;  // the radius in hundredths of a millimetre
    COLORREF pointColor = 0;
    COLORREF pointOutline = 0;
    CString text;
    COLORREF textColor = 0;

    friend bool operator==(const Symbols&, const Symbols&) = default;
};

// A sheet of map paper with a line, an area, a point and a text symbol. The paper is white whatever the
// desktop's colours are, as a printed map would be.
class Preview : public CWnd {
  public:
    void Show(const Symbols& symbols);  // at once; nothing when they are those that are shown
    const window::MessageMap* GetMessageMap() const override;

  private:
    void OnPaint();
    void DrawLine(CDC& dc, const CRect& cell) const;
    void DrawArea(CDC& dc, const CRect& cell) const;
    void DrawPoint(CDC& dc, const CRect& cell) const;
    void DrawTextSymbol(CDC& dc, const CRect& cell) const;

    Symbols m_symbols;
};

}  // namespace kortavin::desktop
