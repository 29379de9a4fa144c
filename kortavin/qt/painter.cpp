#include "kortavin/qt/painter.h"

#include <QImage>
#include <QPen>
#include <algorithm>
#include <cmath>

#include "kortavin/qt/colors.h"
#include "kortavin/qt/font.h"
#include "kortavin/qt/geometry.h"
#include "kortavin/qt/text.h"
#include "kortavin/window/strokes.h"

namespace kortavin::qt {
namespace {

QRgb PremultipliedOf(const std::optional<COLORREF>& color) {
    return color ? ToQt(*color).rgba() : QRgb{0};
}

// Qt repeats the texture from the painter's origin and enlarges it with the screen, pixel by pixel.
QBrush HatchBrush(const window::Fill& fill) {
    const window::HatchPattern& pattern = *fill.hatch;
    QImage tile(8, 8, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x) {
            const bool isSet = (pattern[static_cast<std::size_t>(y)] & 0x80 >> x) != 0;
            tile.setPixel(x, y, PremultipliedOf(isSet ? fill.color : fill.spaceColor));
        }
    return QBrush(tile);
}

QBrush BrushOf(const window::Fill& fill) {
    if (fill.hatch)
        return HatchBrush(fill);
    return fill.color ? QBrush(ToQt(*fill.color)) : QBrush(Qt::NoBrush);
}

bool IsDashed(const window::Stroke& stroke) {
    return stroke.width <= 1 && !stroke.dashes.empty();
}

QPen PenOf(const window::Stroke& stroke) {
    QPen pen(ToQt(stroke.color), stroke.width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (IsDashed(stroke))
        pen.setDashPattern(QList<qreal>(stroke.dashes.begin(), stroke.dashes.end()));
    return pen;
}

// One solid pen for the gaps, where they are painted, and the dashes over it.
template <class Draw>
void WithPens(QPainter& painter, const window::Stroke& stroke, Draw draw) {
    if (stroke.gapColor && IsDashed(stroke)) {
        painter.setPen(PenOf({*stroke.gapColor, stroke.width, {}, {}}));
        draw();
        painter.setBrush(Qt::NoBrush);
    }
    painter.setPen(PenOf(stroke));
    draw();
}

// From `a` one pixel towards `b`, as pixels are counted: along the axis in which they lie further apart.
QPointF Step(CPoint a, CPoint b) {
    const QPointF way(b.x - a.x, b.y - a.y);
    const qreal steps = std::max(std::abs(way.x()), std::abs(way.y()));
    return steps == 0 ? QPointF() : way / steps;
}

// Covers what squares as wide as the stroke would cover around the middles of all pixels but the last.
QPolygonF PathThrough(std::span<const CPoint> points, int width) {
    const qreal half = width / 2.0;
    const qreal middle = width % 2 == 0 ? 0 : 0.5;
    QPolygonF path;
    for (const CPoint& point : points)
        path.append(QPointF(point.x + middle, point.y + middle));
    path.first() -= half * Step(points[0], points[1]);
    path.last() += (half - 1) * Step(points[points.size() - 2], points.back());
    return path;
}

class Antialiased {
  public:
    explicit Antialiased(QPainter& painter) : m_painter(painter) {
        m_painter.setRenderHint(QPainter::Antialiasing, true);
    }
    ~Antialiased() { m_painter.setRenderHint(QPainter::Antialiasing, false); }
    Antialiased(const Antialiased&) = delete;
    Antialiased& operator=(const Antialiased&) = delete;

  private:
    QPainter& m_painter;
};

}  // namespace

QtPainter::QtPainter(QWidget& widget, const QRect& clip, QPoint origin)
    : m_own(std::in_place, &widget), m_painter(*m_own), m_clipBox(FromQt(clip)) {
    m_painter.translate(origin);
    Prepare();
}

QtPainter::QtPainter(QPainter& painter, const QRect& clip) : m_painter(painter), m_clipBox(FromQt(clip)) {
    m_painter.save();
    Prepare();
}

QtPainter::~QtPainter() {
    if (!m_own)
        m_painter.restore();
}

void QtPainter::Prepare() {
    m_painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform, false);
    m_painter.setBrushOrigin(0, 0);
    m_painter.setClipRect(ToQt(m_clipBox), Qt::IntersectClip);
}

CSize QtPainter::PixelsPerInch() const {
    return {m_painter.device()->logicalDpiX(), m_painter.device()->logicalDpiY()};
}

void QtPainter::SetClip(const CRect& rect) {
    CRect clip;
    clip.IntersectRect(rect, m_clipBox);
    m_painter.setClipRect(ToQt(clip));
}

void QtPainter::FillRect(const CRect& rect, const window::Fill& fill) {
    CRect visible;
    if (visible.IntersectRect(rect, m_clipBox))
        m_painter.fillRect(ToQt(visible), BrushOf(fill));
}

void QtPainter::InvertRect(const CRect& rect) {
    CRect visible;
    if (!visible.IntersectRect(rect, m_clipBox))
        return;
    m_painter.setCompositionMode(QPainter::CompositionMode_Difference);
    m_painter.fillRect(ToQt(visible), Qt::white);
    m_painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

void QtPainter::DrawPolyline(std::span<const CPoint> points, const window::Stroke& stroke) {
    if (points.size() < 2)
        return;
    if (window::IsAxisAligned(points)) {
        window::ForEachStrokeRect(points, stroke, [this](const CRect& rect, COLORREF color) {
            FillRect(rect, {.hatch = {}, .color = color, .spaceColor = {}});
        });
        return;
    }
    const Antialiased antialiased(m_painter);
    const QPolygonF path = PathThrough(points, stroke.width);
    WithPens(m_painter, stroke, [&] { m_painter.drawPolyline(path); });
}

void QtPainter::DrawEllipse(const CRect& rect, const window::Fill& fill, const window::Stroke* outline) {
    if (rect.IsRectEmpty())
        return;
    const Antialiased antialiased(m_painter);
    const QRectF box = ToQt(rect);
    if (outline == nullptr || 2 * outline->width >= std::min(rect.Width(), rect.Height())) {
        // Without an outline, or nothing but outline.
        m_painter.setPen(Qt::NoPen);
        m_painter.setBrush(outline == nullptr ? BrushOf(fill) : QBrush(ToQt(outline->color)));
        m_painter.drawEllipse(box);
        return;
    }
    const qreal half = outline->width / 2.0;
    m_painter.setBrush(BrushOf(fill));
    WithPens(m_painter, *outline, [&] { m_painter.drawEllipse(box.adjusted(half, half, -half, -half)); });
}

void QtPainter::DrawText(CPoint corner, std::string_view text, const window::NativeFont& font,
                         COLORREF color) {
    const auto& own = static_cast<const QtFont&>(font);
    m_painter.setFont(own.Get());
    m_painter.setPen(ToQt(color));
    m_painter.drawText(QPointF(corner.x, corner.y + own.Metrics().tmAscent), ToQt(text));
}

MeasuringPainter::MeasuringPainter(const QPaintDevice& device)
    : m_pixelsPerInch(device.logicalDpiX(), device.logicalDpiY()) {}

}  // namespace kortavin::qt
