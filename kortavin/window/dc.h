#pragma once

#include <memory>
#include <span>
#include <vector>

#include "kortavin/base/cstring.h"
#include "kortavin/base/geometry.h"
#include "kortavin/window/gdi.h"

namespace kortavin {

class CWnd;
namespace window {
class Painter;
struct Fill;
struct Stroke;
}  // namespace window

// Stock objects (SelectStockObject).
inline constexpr int WHITE_BRUSH = 0;
inline constexpr int NULL_BRUSH = 5;
inline constexpr int BLACK_PEN = 7;
inline constexpr int NULL_PEN = 8;

// Background modes.
inline constexpr int TRANSPARENT = 1;
inline constexpr int OPAQUE = 2;

// Device capabilities (GetDeviceCaps): pixels per logical inch.
inline constexpr int LOGPIXELSX = 88;
inline constexpr int LOGPIXELSY = 90;

// DrawText flags. The three zero ones are the defaults.
inline constexpr UINT DT_LEFT = 0x000;
inline constexpr UINT DT_TOP = 0x000;
inline constexpr UINT DT_CENTER = 0x001;
inline constexpr UINT DT_RIGHT = 0x002;
inline constexpr UINT DT_VCENTER = 0x004;
inline constexpr UINT DT_BOTTOM = 0x008;
inline constexpr UINT DT_WORDBREAK = 0x010;
inline constexpr UINT DT_SINGLELINE = 0x020;
inline constexpr UINT DT_NOCLIP = 0x100;
inline constexpr UINT DT_CALCRECT = 0x400;
inline constexpr UINT DT_NOPREFIX = 0x800;

// Edges.
inline constexpr UINT BDR_RAISEDOUTER = 0x1;
inline constexpr UINT BDR_SUNKENOUTER = 0x2;
inline constexpr UINT BDR_RAISEDINNER = 0x4;
inline constexpr UINT BDR_SUNKENINNER = 0x8;
inline constexpr UINT BF_LEFT = 0x1;
inline constexpr UINT BF_TOP = 0x2;
inline constexpr UINT BF_RIGHT = 0x4;
inline constexpr UINT BF_BOTTOM = 0x8;
inline constexpr UINT BF_RECT = 0xF;

// Draws and measures in pixels, from the upper left corner of a window's client area. A new context has a
// black one-pixel pen, a white brush, black text on white, opaque mode, and the window's font. Right and
// bottom edges are exclusive for fills, rectangles and ellipses; a line omits its last pixel. In opaque mode
// the gaps of dashed lines and the spaces of hatches are painted in the background colour, and so is the
// cell of a text. All text is GBK.
class KORTAVIN_API CDC {
  public:
    // Draws in `font` at first; null: the message-box font.
    explicit CDC(std::unique_ptr<window::Painter> painter, CFont* font = nullptr);
    CDC(const CDC&) = delete;
    CDC& operator=(const CDC&) = delete;
    virtual ~CDC();

    // FALSE: this context only measures, and what is drawn is dropped. A toolkit may allow drawing nowhere
    // but in a paint.
    BOOL CanDraw() const;
    int GetDeviceCaps(int index) const;  // 0 for an unknown index
    BOOL GetClipBox(CRect* box) const;   // FALSE, and empty, where nothing can be painted

    // Select the object, which is not owned and must stay until another is selected, and answer the former. A
    // null pointer, or a font that was not created, changes nothing and answers null.
    CPen* SelectObject(CPen* pen);
    CBrush* SelectObject(CBrush* brush);
    CFont* SelectObject(CFont* font);
    void SelectStockObject(int index);  // nothing for an unknown index
    CPen* GetCurrentPen() const { return m_state.pen; }
    CBrush* GetCurrentBrush() const { return m_state.brush; }
    CFont* GetCurrentFont() const { return m_state.font; }

    // Answer the former value.
    COLORREF SetTextColor(COLORREF color);
    COLORREF SetBkColor(COLORREF color);
    int SetBkMode(int mode);
    COLORREF GetTextColor() const { return m_state.textColor; }
    COLORREF GetBkColor() const { return m_state.bkColor; }

    // What is selected and set, the current point and the clip. SaveDC answers the level to restore to;
    // RestoreDC takes it, or -1 for the latest. FALSE, and nothing changes, for a level that is not saved.
    int SaveDC();
    BOOL RestoreDC(int level);
    void IntersectClipRect(const CRect& rect);

    void FillRect(const CRect& rect, const CBrush* brush);  // nothing for null
    void FillSolidRect(const CRect& rect, COLORREF color);  // leaves `color` as the background colour
    void InvertRect(const CRect& rect);
    // Filled with the brush, outlined with the pen inside the rectangle.
    void Rectangle(const CRect& rect);
    void Ellipse(const CRect& rect);
    // One-pixel lines along an edge's sides in the system's 3D colours; `edge` is one or two of BDR_, an
    // inner border one pixel inside an outer one.
    void DrawEdge(const CRect& rect, UINT edge, UINT sides);

    CPoint MoveTo(CPoint point);  // answers the former point
    CPoint MoveTo(int x, int y) { return MoveTo({x, y}); }
    void LineTo(CPoint point);
    void LineTo(int x, int y) { LineTo({x, y}); }
    void Polyline(std::span<const CPoint> points);  // the current point stays

    // One run of text from its upper left corner; line ends are not honoured.
    void TextOut(int x, int y, std::string_view text);
    CSize GetTextExtent(std::string_view text) const;
    BOOL GetTextMetrics(TEXTMETRIC* metrics) const;
    // Draws the text in the rectangle as the flags say and answers the height of what was drawn. With
    // DT_CALCRECT nothing is drawn and the rectangle becomes that of the text, from its upper left corner;
    // wrapped text is broken at its former width. `&` is a plain character. The text is clipped but for
    // DT_NOCLIP; vertical centring holds for several lines too, while they fit (else they start at the top);
    // line ends break lines but for DT_SINGLELINE.
    int DrawText(std::string_view text, CRect* rect, UINT flags);

    window::Painter& GetPainter() { return *m_painter; }

  private:
    struct State {
        CPen* pen = nullptr;
        CBrush* brush = nullptr;
        CFont* font = nullptr;
        COLORREF textColor = 0;
        COLORREF bkColor = 0xFFFFFF;
        int bkMode = OPAQUE;
        CPoint point;
        CRect clip;
    };

    window::Fill FillOf(const CBrush& brush) const;
    window::Stroke CurrentStroke() const;
    void DrawRun(CPoint corner, std::string_view text, const window::NativeFont& font);

    std::unique_ptr<window::Painter> m_painter;
    std::unique_ptr<CFont> m_defaultFont;
    State m_state;
    std::vector<State> m_saved;
};

// For the handler of WM_PAINT: draws what became invalid, which is valid afterwards.
class KORTAVIN_API CPaintDC : public CDC {
  public:
    explicit CPaintDC(CWnd* window);  // CResourceException where the window is not being painted
    ~CPaintDC() override;
};

// A window's client area outside a paint: measures in the window's font; draws where the toolkit allows it
// (CanDraw).
class KORTAVIN_API CClientDC : public CDC {
  public:
    explicit CClientDC(CWnd* window);  // CResourceException without a window
    ~CClientDC() override;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::BDR_RAISEDINNER;
using kortavin::BDR_RAISEDOUTER;
using kortavin::BDR_SUNKENINNER;
using kortavin::BDR_SUNKENOUTER;
using kortavin::BF_BOTTOM;
using kortavin::BF_LEFT;
using kortavin::BF_RECT;
using kortavin::BF_RIGHT;
using kortavin::BF_TOP;
using kortavin::BLACK_PEN;
using kortavin::CClientDC;
using kortavin::CDC;
using kortavin::CPaintDC;
using kortavin::DT_BOTTOM;
using kortavin::DT_CALCRECT;
using kortavin::DT_CENTER;
using kortavin::DT_LEFT;
using kortavin::DT_NOCLIP;
using kortavin::DT_NOPREFIX;
using kortavin::DT_RIGHT;
using kortavin::DT_SINGLELINE;
using kortavin::DT_TOP;
using kortavin::DT_VCENTER;
using kortavin::DT_WORDBREAK;
using kortavin::LOGPIXELSX;
using kortavin::LOGPIXELSY;
using kortavin::NULL_BRUSH;
using kortavin::NULL_PEN;
using kortavin::OPAQUE;
using kortavin::TRANSPARENT;
using kortavin::WHITE_BRUSH;
#endif
