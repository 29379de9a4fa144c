#include <algorithm>
#include <utility>

#include "kortavin/grid/geometry.h"
#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// Scroll bars, and what their requests do. The two directions differ in their axis and in how pixels move.

namespace {

int ToRange(LONGLONG size) {
    return static_cast<int>(std::clamp<LONGLONG>(size, 0, INT32_MAX));
}

}  // namespace

// One of the two directions in which a grid scrolls.
struct CGridCtrl::Direction {
    int bar;
    const grid::Axis& axis;
    int fixedCount;
    int maximum;  // of the scroll range
    int fixedSize;
    CRect client;

    bool IsVertical() const { return bar == SB_VERT; }
    int ClientEnd() const { return IsVertical() ? client.bottom : client.right; }
    int Room() const { return std::max(0, ClientEnd() - fixedSize); }
    // The first index from this on that has a size; the last one if none has.
    int SizedFrom(int index) const {
        while (index < axis.Count() - 1 && axis.SizeAt(index) == 0)
            ++index;
        return index;
    }
    int FirstOf(const CGridCtrl& grid) const {
        const CGridPos first = grid.GetFirstScrollCell();
        return IsVertical() ? first.row : first.col;
    }
    // The client area between two distances from its edge.
    CRect Between(int start, int end) const {
        return IsVertical() ? CRect(0, start, client.right, end) : CRect(start, 0, end, client.bottom);
    }
    CRect From(int start) const { return Between(start, ClientEnd()); }
    CSize By(int distance) const { return IsVertical() ? CSize(0, distance) : CSize(distance, 0); }
};

CGridCtrl::Direction CGridCtrl::DirectionOf(int bar) const {
    CRect client;
    GetClientRect(&client);
    if (bar == SB_VERT)
        return {bar, m_rows, m_fixedRowCount, m_vScrollMax, GetFixedRowsHeight(), client};
    return {bar, m_columns, m_fixedColCount, m_hScrollMax, GetFixedColumnsWidth(), client};
}

int CGridCtrl::GetScrollPosition(int bar, BOOL bGetTrackPos) const {
    return bGetTrackPos ? GetScrollTrackPos(bar) : GetScrollPos(bar);
}

void CGridCtrl::SetScrollPosition(int bar, int pos, BOOL bRedraw) {
    SetScrollPos(bar, pos, bRedraw);
}

// The bars keep their settings while no scrolled cell shows whole. One that appears or goes changes the room
// of the other, so both are set until the room stays.
void CGridCtrl::UpdateScrollBars() {
    if (!IsDrawn() || std::exchange(m_isSettingBars, true))
        return;
    const Life life(*this);
    CRect before;
    CRect after;
    for (int pass = 0; life && pass < 3; ++pass) {
        GetClientRect(&before);
        SetBars(DirectionOf(SB_VERT), DirectionOf(SB_HORZ));
        if (!life)
            break;
        GetClientRect(&after);
        if (after == before)
            break;
    }
    if (life.Exists())
        m_isSettingBars = false;
}

void CGridCtrl::SetBars(const Direction& vertical, const Direction& horizontal) {
    if (vertical.Room() <= 0 || horizontal.Room() <= 0 || !IsValid(GetFullyVisibleScrollRange()))
        return;
    const auto lastPosition = [](const Direction& direction) {
        const LONGLONG content = direction.axis.Total() - direction.fixedSize;
        return content > direction.Room() ? ToRange(content - 1) : 0;
    };
    m_vScrollMax = lastPosition(vertical);
    m_hScrollMax = lastPosition(horizontal);
    const Life life(*this);
    for (const Direction* const direction : {&vertical, &horizontal}) {
        if (life)
            SetScrollPage(direction->bar, direction->Room());
        if (life)
            SetScrollRange(direction->bar, 0, direction == &vertical ? m_vScrollMax : m_hScrollMax);
    }
}

// A bar that appears changes the size again.
void CGridCtrl::OnSize(UINT, int, int) {
    if (std::exchange(m_isSizing, true))
        return;
    const Life life(*this);
    try {
        SetFocus();  // which ends an open edit
        if (life)
            Default();
    } catch (...) {
        if (life.Exists())
            m_isSizing = false;
        throw;
    }
    if (!life.Exists())
        return;
    m_isSizing = false;
    UpdateScrollBars();
}

void CGridCtrl::OnHScroll(UINT nSBCode, UINT, CWnd*) {
    ScrollOn(SB_HORZ, nSBCode);
}

void CGridCtrl::OnVScroll(UINT nSBCode, UINT, CWnd*) {
    ScrollOn(SB_VERT, nSBCode);
}

void CGridCtrl::ScrollOn(int bar, UINT request) {
    const Life life(*this);
    if (GetFocus() != this)
        SetFocus();  // which ends an open edit
    if (!life || m_hWnd == nullptr)
        return;
    const Direction direction = DirectionOf(bar);
    const int position = GetScrollPosition(bar);
    switch (request) {
        case SB_LINEUP:
            ScrollLineBack(direction, position);
            break;
        case SB_LINEDOWN:
            ScrollLineForward(direction, position);
            break;
        case SB_PAGEUP:
            if (position > 0)
                ScrollTo(direction, std::max(0, position - direction.Room()), direction.fixedSize);
            break;
        case SB_PAGEDOWN:
            if (position < direction.maximum)
                ScrollTo(
                    direction,
                    ToRange(std::min<LONGLONG>(LONGLONG{position} + direction.Room(), direction.maximum)),
                    direction.fixedSize);
            break;
        case SB_THUMBPOSITION:
        case SB_THUMBTRACK:
            FollowThumb(direction);
            break;
        case SB_TOP:
            if (position > 0)
                ScrollTo(direction, 0, 0);
            break;
        case SB_BOTTOM:
            if (position < direction.maximum)
                ScrollTo(direction, direction.maximum, 0);
            break;
        default:
            break;
    }
}

// Repaints from a distance on.
void CGridCtrl::ScrollTo(const Direction& direction, int position, int repaintFrom) {
    SetScrollPosition(direction.bar, position);
    const CRect area = direction.From(repaintFrom);
    InvalidateRect(&area);
}

void CGridCtrl::FollowThumb(const Direction& direction) {
    const int former = direction.FirstOf(*this);
    SetScrollPosition(direction.bar, GetScrollPosition(direction.bar, TRUE));
    if (direction.FirstOf(*this) == former)
        return;
    const CRect area = direction.From(direction.fixedSize);
    InvalidateRect(&area);
}

void CGridCtrl::ScrollLineBack(const Direction& direction, int position) {
    const int first = direction.FirstOf(*this);
    if (position <= 0 || first <= direction.fixedCount)
        return;
    const int size = direction.axis.SizeAt(first - 1);
    SetScrollPosition(direction.bar, std::max(0, position - size));
    MovePixels(direction, first - 1, direction.fixedSize, size);
}

// A bar stops before the end of its range, so it may not have moved.
void CGridCtrl::ScrollLineForward(const Direction& direction, int position) {
    const int first = direction.FirstOf(*this);
    if (position >= direction.maximum || first >= direction.axis.Count())
        return;
    const int size = direction.axis.SizeAt(direction.SizedFrom(first));
    SetScrollPosition(direction.bar,
                      static_cast<int>(std::min<LONGLONG>(LONGLONG{position} + size, direction.maximum)));
    if (GetScrollPosition(direction.bar) != position)
        MovePixels(direction, first + 1, direction.fixedSize + size, -size);
}

// Moves the part of the client area from `start` on and repaints the strip that is uncovered. Where the first
// index is not the one that this would show (a position between two of them), everything scrolled is
// repainted.
void CGridCtrl::MovePixels(const Direction& direction, int expectedFirst, int start, int distance) {
    if (direction.FirstOf(*this) != expectedFirst) {
        const CRect scrolled = direction.From(direction.fixedSize);
        InvalidateRect(&scrolled);
        return;
    }
    const CRect moved = distance > 0 ? direction.From(start) : direction.From(direction.fixedSize);
    const CSize by = direction.By(distance);
    ScrollWindow(by.cx, by.cy, &moved);
    const CRect uncovered = distance > 0
                                ? direction.Between(start, start + distance)
                                : direction.Between(direction.ClientEnd() + distance, direction.ClientEnd());
    InvalidateRect(&uncovered);
}

// As many line requests would, but the way is not shown. What lies between the position and the first index
// stays.
void CGridCtrl::JumpLines(int bar, int lines) {
    const Direction direction = DirectionOf(bar);
    const int first = direction.FirstOf(*this);
    const int last = std::max(direction.axis.Count() - 1, direction.fixedCount);
    const int target = std::clamp(first + lines, direction.fixedCount, last);
    const LONGLONG way = direction.axis.OffsetOf(target) - direction.axis.OffsetOf(first);
    const LONGLONG position = std::clamp<LONGLONG>(GetScrollPosition(bar) + way, 0, direction.maximum);
    ScrollTo(direction, ToRange(position), direction.fixedSize);
}

}  // namespace kortavin
