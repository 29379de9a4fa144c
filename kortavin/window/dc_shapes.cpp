#include "kortavin/window/dc.h"

#include <utility>

#include "kortavin/window/metrics.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

namespace {

enum class Shade { Highlight, Light, Shadow, Dark };

// The lesser light lies half way between the surface and its highlight.
COLORREF ColorOf(Shade shade) {
    if (shade != Shade::Light)
        return GetSysColor(shade == Shade::Highlight ? COLOR_3DHIGHLIGHT
                           : shade == Shade::Shadow  ? COLOR_BTNSHADOW
                                                     : COLOR_3DDKSHADOW);
    const COLORREF face = GetSysColor(COLOR_BTNFACE);
    const COLORREF highlight = GetSysColor(COLOR_3DHIGHLIGHT);
    const auto mean = [](int a, int b) { return static_cast<BYTE>((a + b) / 2); };
    return RGB(mean(GetRValue(face), GetRValue(highlight)), mean(GetGValue(face), GetGValue(highlight)),
               mean(GetBValue(face), GetBValue(highlight)));
}

// The sides of a border one pixel wide.
struct BorderShades {
    UINT edge;
    Shade leftAndTop;
    Shade rightAndBottom;
};

// Outer borders first: an inner one lies within. Light falls from the upper left.
constexpr BorderShades kBorders[] = {
    {BDR_RAISEDOUTER, Shade::Light, Shade::Dark},
    {BDR_SUNKENOUTER, Shade::Shadow, Shade::Highlight},
    {BDR_RAISEDINNER, Shade::Highlight, Shade::Shadow},
    {BDR_SUNKENINNER, Shade::Dark, Shade::Light},
};

window::Fill Solid(COLORREF color) {
    return {{}, color, {}};
}

// The corners at the ends of the left and the top side belong to the other two.
void DrawBorder(window::Painter& painter, const CRect& rect, const BorderShades& shades, UINT sides) {
    const window::Fill leftAndTop = Solid(ColorOf(shades.leftAndTop));
    const window::Fill rightAndBottom = Solid(ColorOf(shades.rightAndBottom));
    if ((sides & BF_LEFT) != 0)
        painter.FillRect({rect.left, rect.top, rect.left + 1, rect.bottom}, leftAndTop);
    if ((sides & BF_TOP) != 0)
        painter.FillRect({rect.left, rect.top, rect.right, rect.top + 1}, leftAndTop);
    if ((sides & BF_RIGHT) != 0)
        painter.FillRect({rect.right - 1, rect.top, rect.right, rect.bottom}, rightAndBottom);
    if ((sides & BF_BOTTOM) != 0)
        painter.FillRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, rightAndBottom);
}

void DeflateSides(CRect& rect, UINT sides) {
    const auto has = [sides](UINT side) { return (sides & side) != 0 ? 1 : 0; };
    rect.DeflateRect(has(BF_LEFT), has(BF_TOP), has(BF_RIGHT), has(BF_BOTTOM));
}

// Along a line through the middle of the outline, so that a wide one stays inside the rectangle too.
void OutlineRect(window::Painter& painter, const CRect& rect, const window::Stroke& stroke) {
    const int width = stroke.width;
    CRect line = rect;
    line.DeflateRect(width / 2, width / 2, width - width / 2, width - width / 2);
    if (line.Width() < 0 || line.Height() < 0 || line.Size() == CSize()) {
        painter.FillRect(rect, Solid(stroke.color));  // the outline leaves no inside
        return;
    }
    const CPoint corners[] = {
        line.TopLeft(), {line.right, line.top}, line.BottomRight(), {line.left, line.bottom}, line.TopLeft()};
    painter.DrawPolyline(corners, stroke);
}

}  // namespace

window::Fill CDC::FillOf(const CBrush& brush) const {
    if (brush.IsHollow())
        return {};
    if (!brush.GetHatch())
        return Solid(brush.GetColor());
    return {brush.GetHatch(), brush.GetColor(),
            m_state.bkMode == OPAQUE ? std::optional(m_state.bkColor) : std::nullopt};
}

window::Stroke CDC::CurrentStroke() const {
    const CPen& pen = *m_state.pen;
    const auto dashes = pen.GetWidth() == 1 ? window::DashesOf(pen.GetStyle()) : std::span<const int>();
    return {pen.GetColor(), pen.GetWidth(), dashes,
            m_state.bkMode == OPAQUE ? std::optional(m_state.bkColor) : std::nullopt};
}

void CDC::FillRect(const CRect& rect, const CBrush* brush) {
    if (brush != nullptr && !brush->IsHollow())
        m_painter->FillRect(rect, FillOf(*brush));
}

void CDC::FillSolidRect(const CRect& rect, COLORREF color) {
    m_state.bkColor = color;
    m_painter->FillRect(rect, Solid(color));
}

void CDC::InvertRect(const CRect& rect) {
    m_painter->InvertRect(rect);
}

void CDC::Rectangle(const CRect& rect) {
    if (rect.IsRectEmpty())
        return;
    FillRect(rect, m_state.brush);
    if (m_state.pen->GetStyle() != PS_NULL)
        OutlineRect(*m_painter, rect, CurrentStroke());
}

void CDC::Ellipse(const CRect& rect) {
    if (rect.IsRectEmpty())
        return;
    const window::Stroke stroke = CurrentStroke();
    m_painter->DrawEllipse(rect, FillOf(*m_state.brush),
                           m_state.pen->GetStyle() == PS_NULL ? nullptr : &stroke);
}

void CDC::DrawEdge(const CRect& rect, UINT edge, UINT sides) {
    CRect border = rect;
    for (const BorderShades& shades : kBorders) {
        if ((edge & shades.edge) == 0)
            continue;
        if (!border.IsRectEmpty())
            DrawBorder(*m_painter, border, shades, sides);
        DeflateSides(border, sides);
    }
}

CPoint CDC::MoveTo(CPoint point) {
    return std::exchange(m_state.point, point);
}

void CDC::LineTo(CPoint point) {
    const CPoint points[] = {m_state.point, point};
    Polyline(points);
    m_state.point = point;
}

void CDC::Polyline(std::span<const CPoint> points) {
    if (m_state.pen->GetStyle() != PS_NULL)
        m_painter->DrawPolyline(points, CurrentStroke());
}

}  // namespace kortavin
