#include "tests/support/memory/surface.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#include "kortavin/base/codepage.h"
#include "kortavin/window/strokes.h"

namespace kortavin::testing {
namespace {

using Kind = DrawingOperation::Kind;

CRect Common(const CRect& a, const CRect& b) {
    CRect common;
    common.IntersectRect(a, b);
    return common;
}

template <class Visit>
void ForEachPixel(const CRect& rect, Visit visit) {
    for (int y = rect.top; y < rect.bottom; ++y) {
        for (int x = rect.left; x < rect.right; ++x)
            visit(x, y);
    }
}

bool IsHatched(const window::HatchPattern& hatch, int x, int y) {
    return (hatch[static_cast<unsigned>(y) % 8] >> (7 - static_cast<unsigned>(x) % 8) & 1) != 0;
}

std::optional<COLORREF> FillColorAt(const window::Fill& fill, int x, int y) {
    return fill.hatch && !IsHatched(*fill.hatch, x, y) ? fill.spaceColor : fill.color;
}

// The pixels of an ellipse whose box is the rectangle: those whose centre lies inside, and what it takes to
// touch all four edges.
class EllipseShape {
  public:
    explicit EllipseShape(const CRect& rect) : m_rect(rect) {
        for (int row = 0; row < rect.Height(); ++row)
            m_insets.push_back(InsetOf(row));
    }

    bool Contains(int x, int y) const {
        if (!m_rect.PtInRect({x, y}))
            return false;
        const int inset = m_insets[y - m_rect.top];
        return x >= m_rect.left + inset && x < m_rect.right - inset;
    }

    bool IsOutline(int x, int y, int width) const {
        return Contains(x, y) && !(Contains(x - width, y) && Contains(x + width, y) &&
                                   Contains(x, y - width) && Contains(x, y + width));
    }

  private:
    // How many pixels of the row's left (and right) end are outside.
    int InsetOf(int row) const {
        const double width = m_rect.Width();
        const double height = m_rect.Height();
        const double fromMiddle = (2 * row + 1 - height) / height;
        const double half = width / 2 * std::sqrt(1 - fromMiddle * fromMiddle);
        const bool isMiddle = row == m_rect.Height() / 2 || row == (m_rect.Height() - 1) / 2;
        return isMiddle
                   ? 0
                   : std::min(static_cast<int>(std::ceil(width / 2 - half - 0.5)), (m_rect.Width() - 1) / 2);
    }

    CRect m_rect;
    std::vector<int> m_insets;
};

// Clockwise from the right end, for dashes to run along.
std::vector<CPoint> OutlinePixels(const EllipseShape& shape, const CRect& rect, int width) {
    std::vector<CPoint> pixels;
    ForEachPixel(rect, [&](int x, int y) {
        if (shape.IsOutline(x, y, width))
            pixels.emplace_back(x, y);
    });
    const auto angle = [&](CPoint pixel) {
        return std::atan2(2 * pixel.y + 1 - rect.top - rect.bottom, 2 * pixel.x + 1 - rect.left - rect.right);
    };
    std::sort(pixels.begin(), pixels.end(), [&](CPoint a, CPoint b) { return angle(a) < angle(b); });
    return pixels;
}

// Bresenham's line, its last pixel omitted.
template <class Visit>
void ForEachLinePixel(CPoint from, CPoint to, Visit visit) {
    const int dx = std::abs(to.x - from.x);
    const int dy = std::abs(to.y - from.y);
    int error = dx - dy;
    while (from != to) {
        visit(from);
        const int twice = 2 * error;
        if (twice > -dy) {
            error -= dy;
            from.x += from.x < to.x ? 1 : -1;
        }
        if (twice < dx) {
            error += dx;
            from.y += from.y < to.y ? 1 : -1;
        }
    }
}

}  // namespace

PixelSurface::PixelSurface(int width, int height, COLORREF color)
    : m_bounds(0, 0, width, height), m_pixels(static_cast<std::size_t>(width) * height, color) {}

COLORREF PixelSurface::At(int x, int y) const {
    if (!m_bounds.PtInRect({x, y}))
        throw std::out_of_range("no pixel of the surface");
    return m_pixels[static_cast<std::size_t>(y) * m_bounds.right + x];
}

void PixelSurface::Set(int x, int y, COLORREF color) {
    if (m_bounds.PtInRect({x, y}))
        m_pixels[static_cast<std::size_t>(y) * m_bounds.right + x] = color;
}

void PixelSurface::Fill(const CRect& rect, COLORREF color) {
    const CRect part = Common(rect, m_bounds);
    for (int y = part.top; y < part.bottom; ++y)
        std::fill_n(&m_pixels[static_cast<std::size_t>(y) * m_bounds.right + part.left], part.Width(), color);
}

int PixelSurface::CountOf(COLORREF color, const CRect& rect) const {
    int count = 0;
    ForEachPixel(Common(rect, m_bounds), [&](int x, int y) { count += At(x, y) == color ? 1 : 0; });
    return count;
}

std::string PixelSurface::Picture(const CRect& rect, const Legend& legend) const {
    std::string picture(1, '\n');
    ForEachPixel(Common(rect, m_bounds), [&](int x, int y) {
        const auto found = std::find_if(legend.begin(), legend.end(),
                                        [&](const auto& entry) { return entry.first == At(x, y); });
        picture += found == legend.end() ? '?' : found->second;
        if (x + 1 == std::min(rect.right, m_bounds.right))
            picture += '\n';
    });
    return picture;
}

std::string PixelSurface::Dump(const CRect& rect) const {
    static constexpr std::string_view kMarks = ".#abcdefghijklmnopqrstuvwxyz";
    Legend legend;
    std::string key;
    ForEachPixel(Common(rect, m_bounds), [&](int x, int y) {
        const bool known = std::any_of(legend.begin(), legend.end(),
                                       [&](const auto& entry) { return entry.first == At(x, y); });
        if (known || legend.size() == kMarks.size())
            return;
        legend.emplace_back(At(x, y), kMarks[legend.size()]);
        char line[32];
        std::snprintf(line, sizeof line, "%c = %06X (BGR)\n", legend.back().second, legend.back().first);
        key += line;
    });
    return Picture(rect, legend) + key;
}

TEXTMETRIC FixedFont::Metrics() const {
    TEXTMETRIC metrics;
    metrics.tmHeight = kCellHeight;
    metrics.tmAscent = kAscent;
    metrics.tmDescent = kCellHeight - kAscent;
    metrics.tmAveCharWidth = kCellWidth;
    return metrics;
}

int FixedFont::Width(std::string_view text) const {
    return kCellWidth * static_cast<int>(text.size());
}

SurfacePainter::SurfacePainter(PixelSurface& surface, CPoint origin, const CRect& clip, DrawingLog* log)
    : m_surface(surface), m_origin(origin), m_log(log) {
    CRect whole = surface.Bounds();
    whole.OffsetRect(-origin.x, -origin.y);
    m_clipBox = m_clip = Common(clip, whole);
}

void SurfacePainter::Log(DrawingOperation operation) {
    if (m_log != nullptr)
        m_log->push_back(std::move(operation));
}

void SurfacePainter::PaintRect(CRect rect, COLORREF color) {
    rect = Common(rect, m_clip);
    rect.OffsetRect(m_origin);
    m_surface.Fill(rect, color);
}

void SurfacePainter::PaintPixel(int x, int y, std::optional<COLORREF> color) {
    if (color && m_clip.PtInRect({x, y}))
        m_surface.Set(x + m_origin.x, y + m_origin.y, *color);
}

void SurfacePainter::FillRect(const CRect& rect, const window::Fill& fill) {
    Log({.kind = Kind::FillRect, .rect = rect, .fill = fill});
    if (!fill.hatch && fill.color)
        PaintRect(rect, *fill.color);
    if (fill.hatch)
        ForEachPixel(Common(rect, m_clip), [&](int x, int y) { PaintPixel(x, y, FillColorAt(fill, x, y)); });
}

void SurfacePainter::InvertRect(const CRect& rect) {
    Log({.kind = Kind::InvertRect, .rect = rect});
    ForEachPixel(Common(rect, m_clip), [&](int x, int y) {
        PaintPixel(x, y, m_surface.At(x + m_origin.x, y + m_origin.y) ^ RGB(255, 255, 255));
    });
}

void SurfacePainter::DrawPolyline(std::span<const CPoint> points, const window::Stroke& stroke) {
    Log({.kind = Kind::Polyline, .points = {points.begin(), points.end()}, .line = stroke.color});
    if (window::IsAxisAligned(points)) {
        window::ForEachStrokeRect(points, stroke,
                                  [this](const CRect& rect, COLORREF color) { PaintRect(rect, color); });
        return;
    }
    long long position = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        ForEachLinePixel(points[i - 1], points[i], [&](CPoint pixel) {
            if (const auto color = window::DashAt(stroke, position++).color)
                PaintRect(window::StrokeSquare(pixel, stroke), *color);
        });
    }
}

void SurfacePainter::DrawEllipse(const CRect& rect, const window::Fill& fill, const window::Stroke* outline) {
    Log({.kind = Kind::Ellipse,
         .rect = rect,
         .fill = fill,
         .line = outline == nullptr ? std::nullopt : std::optional(outline->color)});
    const EllipseShape shape(rect);
    ForEachPixel(Common(rect, m_clip), [&](int x, int y) {
        if (shape.Contains(x, y))
            PaintPixel(x, y, FillColorAt(fill, x, y));
    });
    if (outline == nullptr)
        return;
    long long position = 0;
    for (const CPoint pixel : OutlinePixels(shape, rect, outline->width))
        PaintPixel(pixel.x, pixel.y, window::DashAt(*outline, position++).color);
}

void SurfacePainter::DrawText(CPoint corner, std::string_view text, const window::NativeFont& font,
                              COLORREF color) {
    const TEXTMETRIC metrics = font.Metrics();
    const auto* fixed = dynamic_cast<const FixedFont*>(&font);
    Log({.kind = Kind::Text,
         .rect = {corner, CSize(font.Width(text), metrics.tmHeight)},
         .line = color,
         .text = std::string(text),
         .font = fixed == nullptr ? LOGFONT() : fixed->Description()});
    while (!text.empty()) {
        const auto character = text.substr(0, base::CharacterLength(text));
        const int right = corner.x + font.Width(character);
        if (character != " ")
            PaintRect({corner.x + 1, corner.y + 3, right - 1, corner.y + metrics.tmAscent}, color);
        corner.x = right;
        text.remove_prefix(character.size());
    }
}

}  // namespace kortavin::testing
