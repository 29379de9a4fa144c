#pragma once

#include <algorithm>

#include "kortavin/base/types.h"

namespace kortavin {

class CPoint {
  public:
    constexpr CPoint() = default;
    constexpr CPoint(int pointX, int pointY) : x(pointX), y(pointY) {}
    friend constexpr bool operator==(const CPoint&, const CPoint&) = default;

    int x = 0;
    int y = 0;
};

class CSize {
  public:
    constexpr CSize() = default;
    constexpr CSize(int width, int height) : cx(width), cy(height) {}
    friend constexpr bool operator==(const CSize&, const CSize&) = default;

    int cx = 0;
    int cy = 0;
};

// A rectangle; its right and bottom edges are not part of it. Where width or height is not positive it is
// empty, and only NormalizeRect treats exchanged edges as meant.
class CRect {
  public:
    constexpr CRect() = default;
    constexpr CRect(int l, int t, int r, int b) : left(l), top(t), right(r), bottom(b) {}
    constexpr CRect(CPoint corner, CSize size)
        : CRect(corner.x, corner.y, corner.x + size.cx, corner.y + size.cy) {}
    constexpr CRect(CPoint topLeft, CPoint bottomRight)
        : CRect(topLeft.x, topLeft.y, bottomRight.x, bottomRight.y) {}
    friend constexpr bool operator==(const CRect&, const CRect&) = default;

    constexpr int Width() const { return right - left; }
    constexpr int Height() const { return bottom - top; }
    constexpr CSize Size() const { return {Width(), Height()}; }
    constexpr CPoint TopLeft() const { return {left, top}; }
    constexpr CPoint BottomRight() const { return {right, bottom}; }
    constexpr BOOL IsRectEmpty() const { return left >= right || top >= bottom; }
    constexpr BOOL PtInRect(CPoint point) const {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }

    constexpr void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
    constexpr void SetRectEmpty() { *this = CRect(); }
    constexpr void NormalizeRect() {
        if (left > right)
            std::swap(left, right);
        if (top > bottom)
            std::swap(top, bottom);
    }

    constexpr void OffsetRect(int x, int y) { SetRect(left + x, top + y, right + x, bottom + y); }
    constexpr void OffsetRect(CPoint by) { OffsetRect(by.x, by.y); }
    constexpr void OffsetRect(CSize by) { OffsetRect(by.cx, by.cy); }
    // Each edge moves outwards (inwards) by its amount.
    constexpr void InflateRect(int l, int t, int r, int b) {
        SetRect(left - l, top - t, right + r, bottom + b);
    }
    constexpr void InflateRect(int x, int y) { InflateRect(x, y, x, y); }
    constexpr void DeflateRect(int l, int t, int r, int b) { InflateRect(-l, -t, -r, -b); }
    constexpr void DeflateRect(int x, int y) { InflateRect(-x, -y); }

    // This becomes what both have in common; FALSE, and all zero, when that is nothing.
    constexpr BOOL IntersectRect(const CRect& a, const CRect& b) {
        SetRect(std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
                std::min(a.bottom, b.bottom));
        if (IsRectEmpty())
            SetRectEmpty();
        return !IsRectEmpty();
    }
    // This becomes the smallest rectangle that holds both, empty ones not counted; FALSE, and all zero, when
    // both are empty.
    constexpr BOOL UnionRect(const CRect& a, const CRect& b) {
        if (a.IsRectEmpty() || b.IsRectEmpty()) {
            const CRect other = a.IsRectEmpty() ? b : a;
            *this = other.IsRectEmpty() ? CRect() : other;
        } else {
            SetRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
                    std::max(a.bottom, b.bottom));
        }
        return !IsRectEmpty();
    }

    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CPoint;
using kortavin::CRect;
using kortavin::CSize;
#endif
