#include <algorithm>
#include <utility>

#include "kortavin/window/metrics.h"
#include "tests/support/memory/toolkit.h"

using kortavin::window::IsWindow;
using kortavin::window::Report;
using kortavin::window::WindowKind;

namespace kortavin::testing {
namespace {

constexpr CPoint kDialogCorner{100, 50};  // where dialogs appear on the screen

// A dialog lies on the screen whatever its parent.
CRect PlaceOf(const window::WindowRequest& request) {
    return request.kind == WindowKind::Dialog ? CRect(kDialogCorner, request.rect.Size()) : request.rect;
}

CRect Common(const CRect& a, const CRect& b) {
    CRect common;
    common.IntersectRect(a, b);
    return common;
}

}  // namespace

MemoryWindow::MemoryWindow(MemoryToolkit& toolkit, window::WindowRecord& record,
                           const window::WindowRequest& request)
    : m_toolkit(toolkit),
      m_record(record),
      m_text(request.text),
      m_parent(request.kind == WindowKind::Dialog ? nullptr : static_cast<MemoryWindow*>(request.parent)),
      m_rect(PlaceOf(request)),
      m_font(request.font != nullptr ? *request.font : CFont(toolkit.MessageBoxFont())),
      m_shown((request.style & WS_VISIBLE) != 0),
      m_enabled((request.style & WS_DISABLED) == 0),
      // A combo box's selection field has no frame, and the bars that its style asks for are its list's.
      m_hasBorder((request.style & WS_CAPTION) == WS_BORDER && request.kind != WindowKind::ComboBox),
      m_hasBar{(request.style & WS_HSCROLL) != 0 && request.kind != WindowKind::ComboBox,
               (request.style & WS_VSCROLL) != 0 && request.kind != WindowKind::ComboBox},
      m_surface(0, 0) {
    m_toolkit.m_windows.push_back(this);
    const CSize size = InnerSize();
    m_surface = PixelSurface(size.cx, size.cy);
    m_invalid = ClientRect();
}

MemoryWindow::~MemoryWindow() {
    m_toolkit.Forget(*this);
}

bool MemoryWindow::IsInside(const MemoryWindow* ancestor) const {
    return this == ancestor || (m_parent != nullptr && m_parent->IsInside(ancestor));
}

bool MemoryWindow::AcceptsInput() const {
    return m_shown && m_enabled && (m_parent == nullptr || m_parent->AcceptsInput());
}

// A label lets clicks through to what it lies on unless it is to tell of them.
bool MemoryWindow::IsHitBy(CPoint clientPoint) const {
    const bool isThere = m_record.Kind() != WindowKind::Static || (m_record.Style() & SS_NOTIFY) != 0;
    return isThere && m_shown && m_enabled && ClientRect().PtInRect(clientPoint);
}

LRESULT MemoryWindow::DefaultProc(UINT message, WPARAM, LPARAM) {
    if (message == WM_PAINT) {
        if (auto painter = BeginPaint())
            PaintByDefault(std::move(painter));
    } else if (message == WM_SETCURSOR) {
        m_cursor = window::PointerShape::Arrow;
    }
    return 0;
}

void MemoryWindow::PaintByDefault(std::unique_ptr<window::Painter> painter) {
    painter->FillRect(ClientRect(), {std::nullopt, m_toolkit.SystemColor(COLOR_BTNFACE), std::nullopt});
}

void MemoryWindow::PaintText(window::Painter& painter, const CString& text) {
    painter.FillRect(ClientRect(), {std::nullopt, m_toolkit.SystemColor(COLOR_WINDOW), std::nullopt});
    painter.DrawText({2, 2}, text.View(), *m_font.GetNative(), m_toolkit.SystemColor(COLOR_WINDOWTEXT));
}

void MemoryWindow::Show(bool visible) {
    m_shown = visible;
    if (visible)
        Invalidate(nullptr);
    else if (m_toolkit.Captor() != nullptr && m_toolkit.Captor()->IsInside(this))
        m_toolkit.EndCapture();
}

bool MemoryWindow::IsVisible() const {
    return m_shown && (m_parent == nullptr || m_parent->IsVisible());
}

void MemoryWindow::Move(const CRect& rect) {
    m_rect = rect;
    FollowClientSize();
}

int MemoryWindow::BorderWidth() const {
    return m_hasBorder ? 1 : 0;
}

bool MemoryWindow::IsScrollBarShown(int bar) const {
    const window::ScrollState& state = m_scroll.at(static_cast<size_t>(bar));
    return m_hasBar.at(static_cast<size_t>(bar)) && state.maximum - state.minimum + 1 > state.page &&
           state.maximum > state.minimum;
}

CSize MemoryWindow::InnerSize() const {
    const auto inner = [&](int outer, int bar) {
        return std::max(0, outer - 2 * BorderWidth() - (IsScrollBarShown(bar) ? kScrollBarSize : 0));
    };
    return {inner(m_rect.Width(), SB_VERT), inner(m_rect.Height(), SB_HORZ)};
}

void MemoryWindow::FollowClientSize() {
    const CSize size = InnerSize();
    if (size == m_surface.Bounds().Size())
        return;
    m_surface = PixelSurface(size.cx, size.cy);
    m_invalid = ClientRect();
    Report(m_record, WM_SIZE, 0,
           static_cast<LPARAM>(MakeWParam(static_cast<WORD>(size.cx), static_cast<WORD>(size.cy))));
}

CPoint MemoryWindow::ClientToScreen(CPoint point) const {
    const CPoint outer{point.x + m_rect.left + BorderWidth(), point.y + m_rect.top + BorderWidth()};
    return m_parent != nullptr ? m_parent->ClientToScreen(outer) : outer;
}

CPoint MemoryWindow::ScreenToClient(CPoint point) const {
    const CPoint origin = ClientToScreen({0, 0});
    return {point.x - origin.x, point.y - origin.y};
}

void MemoryWindow::Invalidate(const CRect* rect) {
    const CRect former = m_invalid;
    m_invalid.UnionRect(former, rect != nullptr ? Common(*rect, ClientRect()) : ClientRect());
}

// What was invalid is valid afterwards, whether the handler painted or not; what it invalidates itself waits
// for the next paint.
void MemoryWindow::UpdateNow() {
    if (!IsVisible() || m_invalid.IsRectEmpty() || m_painting != Painting::No)
        return;
    window::WindowRecord* const self = &m_record;
    m_painting = Painting::Announced;
    ++m_paintCount;
    Report(m_record, WM_PAINT);
    if (!IsWindow(self))
        return;
    if (m_painting == Painting::Announced)
        m_invalid.SetRectEmpty();
    m_painting = Painting::No;
}

std::unique_ptr<window::Painter> MemoryWindow::BeginPaint() {
    if (m_painting != Painting::Announced)
        return nullptr;
    m_painting = Painting::Begun;
    m_log.clear();
    return std::make_unique<SurfacePainter>(m_surface, CPoint(), std::exchange(m_invalid, {}), &m_log);
}

std::unique_ptr<window::Painter> MemoryWindow::ClientPainter() {
    return std::make_unique<SurfacePainter>(m_surface, &m_log);
}

// Pixels whose source lies outside the rectangle, or was invalid, are uncovered.
void MemoryWindow::Scroll(int dx, int dy, const CRect& rect) {
    const CRect area = Common(rect, ClientRect());
    const PixelSurface before = m_surface;
    CRect kept = area;
    kept.OffsetRect(dx, dy);
    kept = Common(kept, area);
    if (kept.IsRectEmpty())
        return Invalidate(&area);
    for (int y = kept.top; y < kept.bottom; ++y)
        for (int x = kept.left; x < kept.right; ++x)
            m_surface.Set(x, y, before.At(x - dx, y - dy));
    CRect moved = Common(m_invalid, area);
    moved.OffsetRect(dx, dy);
    for (const CRect& uncovered : {Common(moved, area), CRect(area.left, area.top, area.right, kept.top),
                                   CRect(area.left, kept.bottom, area.right, area.bottom),
                                   CRect(area.left, area.top, kept.left, area.bottom),
                                   CRect(kept.right, area.top, area.right, area.bottom)})
        Invalidate(&uncovered);
}

void MemoryWindow::SetScroll(int bar, const window::ScrollState& state) {
    auto& own = m_scroll.at(static_cast<size_t>(bar));
    own = state;
    const int last = std::max(state.minimum, state.maximum - std::max(state.page - 1, 0));
    own.position = std::clamp(state.position, state.minimum, last);
    own.trackPosition = own.position;
    FollowClientSize();
}

void MemoryWindow::SetTrackPosition(int bar, std::optional<int> position) {
    auto& state = m_scroll.at(static_cast<size_t>(bar));
    state.trackPosition = position.value_or(state.position);
}

void MemoryWindow::SetCapture() {
    m_toolkit.m_captor = this;
}

void MemoryWindow::ReleaseCapture() {
    m_toolkit.m_captor = nullptr;
}

void MemoryWindow::ConfinePointer(const std::optional<CRect>& rect) {
    m_toolkit.m_confining = rect ? this : nullptr;
    m_toolkit.m_confinement = rect.value_or(CRect());
    m_toolkit.MovePointer(m_toolkit.m_pointer);
}

void MemoryWindow::StartTimer(UINT_PTR id, UINT milliseconds) {
    m_toolkit.m_timers[{this, id}] = milliseconds;
}

void MemoryWindow::StopTimer(UINT_PTR id) {
    m_toolkit.m_timers.erase({this, id});
}

}  // namespace kortavin::testing
