#include "kortavin/window/strokes.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

namespace kortavin::window {
namespace {

// The pixels of `count` steps of a horizontal or vertical line, `first` steps behind its first point.
CRect PixelsOfSteps(CPoint from, CPoint to, long long first, long long count) {
    const bool backwards = to.x < from.x || to.y < from.y;
    const auto begin = static_cast<int>(backwards ? 1 - first - count : first);
    const auto length = static_cast<int>(count);
    return from.y == to.y ? CRect({from.x + begin, from.y}, CSize(length, 1))
                          : CRect({from.x, from.y + begin}, CSize(1, length));
}

CRect Thickened(CRect pixels, const Stroke& stroke) {
    const int width = std::max(stroke.width, 1);
    pixels.InflateRect(width / 2, width / 2, width - width / 2 - 1, width - width / 2 - 1);
    return pixels;
}

}  // namespace

DashRun DashAt(const Stroke& stroke, long long position) {
    const long long total = std::accumulate(stroke.dashes.begin(), stroke.dashes.end(), 0LL);
    if (stroke.width > 1 || total <= 0)
        return {stroke.color, INT64_MAX};
    position %= total;
    std::size_t part = 0;
    for (; position >= stroke.dashes[part]; ++part)
        position -= stroke.dashes[part];
    return {part % 2 == 0 ? stroke.color : stroke.gapColor, stroke.dashes[part] - position};
}

CRect StrokeSquare(CPoint pixel, const Stroke& stroke) {
    return Thickened({pixel, CSize(1, 1)}, stroke);
}

bool IsAxisAligned(std::span<const CPoint> points) {
    return std::adjacent_find(points.begin(), points.end(), [](CPoint from, CPoint to) {
               return from.x != to.x && from.y != to.y;
           }) == points.end();
}

void ForEachStrokeRect(std::span<const CPoint> points, const Stroke& stroke,
                       const std::function<void(const CRect&, COLORREF)>& paint) {
    long long position = 0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const CPoint from = points[i - 1];
        const CPoint to = points[i];
        const long long steps = std::abs(0LL + to.x - from.x) + std::abs(0LL + to.y - from.y);
        for (long long done = 0; done < steps;) {
            const DashRun run = DashAt(stroke, position + done);
            const long long count = std::min(run.length, steps - done);
            if (run.color)
                paint(Thickened(PixelsOfSteps(from, to, done, count), stroke), *run.color);
            done += count;
        }
        position += steps;
    }
}

}  // namespace kortavin::window
