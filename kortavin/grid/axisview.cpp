#include <algorithm>
#include <climits>

#include "kortavin/grid/geometry.h"

namespace kortavin::grid {
namespace {

// Far outside any window, and still fit to be added to.
int ToPixel(LONGLONG position) {
    return static_cast<int>(std::clamp<LONGLONG>(position, INT_MIN / 4, INT_MAX / 4));
}

}  // namespace

int AxisView::FixedSize() const {
    return ToPixel(axis.OffsetOf(fixedCount));
}

int AxisView::First() const {
    return std::min(axis.FirstAtOrAfter(fixedCount, scrollPosition), std::max(axis.Count() - 1, fixedCount));
}

AxisView::Last AxisView::LastVisible() const {
    const int first = First();
    const int room = clientEnd - FixedSize();
    if (first >= axis.Count())
        return {axis.Count() - 1, std::min(FixedSize(), clientEnd)};
    if (room <= 0)
        return {first, clientEnd};
    const int next = axis.FirstAtOrAfter(first, room);
    const LONGLONG shown = axis.OffsetOf(next) - axis.OffsetOf(first);
    return {next - 1, ToPixel(std::min<LONGLONG>(clientEnd, FixedSize() + shown))};
}

int AxisView::LastFullyVisible() const {
    const int first = First();
    const int cut = axis.IndexAt(first, clientEnd - FixedSize());
    return cut >= axis.Count() ? axis.Count() - 1 : std::max(cut - 1, 0);
}

std::optional<int> AxisView::StartOf(int index) const {
    if (index < 0 || index >= axis.Count())
        return std::nullopt;
    if (index < fixedCount)
        return ToPixel(axis.OffsetOf(index));
    const int first = First();
    if (index < first)
        return std::nullopt;
    return ToPixel(FixedSize() + axis.OffsetOf(index) - axis.OffsetOf(first));
}

int AxisView::HitTest(int position, bool allowFixed) const {
    const int fixedSize = FixedSize();
    if (position < 0 || (position < fixedSize && !allowFixed))
        return -1;
    if (position < fixedSize)
        return axis.IndexAt(0, position);
    const int index = axis.IndexAt(First(), position - fixedSize);
    return index < axis.Count() ? index : -1;
}

}  // namespace kortavin::grid
