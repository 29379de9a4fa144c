#pragma once

#include <functional>
#include <optional>
#include <span>

#include "kortavin/base/export.h"
#include "kortavin/base/geometry.h"
#include "kortavin/window/toolkit.h"

// Which pixels a line covers, so that all toolkits paint the same ones. From pixel to pixel a line one pixel
// wide makes as many steps as its longer side counts, each of which covers the pixel that it starts from. A
// wider one covers a square around each of these pixels and is solid.
namespace kortavin::window {

// A part of the dash pattern.
struct DashRun {
    std::optional<COLORREF> color;  // nothing: the pixels are left
    long long length = 0;           // from the position asked for to the part's end
};

// The part that lies so many steps behind the first point.
DashRun DashAt(const Stroke& stroke, long long position);

// The square that a stroke covers around one pixel of its line.
CRect StrokeSquare(CPoint pixel, const Stroke& stroke);

// True when every line between two points is horizontal or vertical.
KORTAVIN_SEAM bool IsAxisAligned(std::span<const CPoint> points);

// Hands out the rectangles that the stroke paints along an axis-aligned polyline, from its first point on,
// dashes and painted gaps. The last pixel is omitted.
KORTAVIN_SEAM void ForEachStrokeRect(std::span<const CPoint> points, const Stroke& stroke,
                                     const std::function<void(const CRect&, COLORREF)>& paint);

}  // namespace kortavin::window
