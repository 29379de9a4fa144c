#include "framework/qt/window.h"

#include <QApplication>
#include <QFrame>
#include <QPixmap>
#include <QTimerEvent>
#include <algorithm>
#include <climits>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "framework/qt/capture.h"
#include "framework/qt/font.h"
#include "framework/qt/geometry.h"
#include "framework/qt/painter.h"
#include "framework/qt/qttoolkit.h"
#include "framework/window/styles.h"

namespace kortavin::qt {
namespace {

constexpr UINT kShortestTimer = 10;  // milliseconds; a shorter one would leave no time for anything else

// Never destroyed: windows of a host's static objects go later than anything here could.
std::unordered_map<const QObject*, QtWindow*>& WindowsByWidget() {
    static auto* windows = new std::unordered_map<const QObject*, QtWindow*>;
    return *windows;
}

QPoint ClientOriginOfParent(const QWidget& widget) {
    const QtWindow* const parent = widget.isWindow() ? nullptr : QtWindow::Of(widget.parentWidget());
    return parent != nullptr ? parent->ClientArea().topLeft() : QPoint();
}

// An own widget may be in the midst of an event, so it goes later.
void TakeAway(QWidget& widget) {
    const QtToolkit::FocusByProgram guard;
    if (QWidget* const focus = QApplication::focusWidget(); focus != nullptr && widget.isAncestorOf(focus))
        focus->clearFocus();
    widget.hide();
    widget.deleteLater();
}

Qt::CursorShape ToQt(window::CursorShape shape) {
    switch (shape) {
        case window::CursorShape::SizeHorizontal:
            return Qt::SizeHorCursor;
        case window::CursorShape::SizeVertical:
            return Qt::SizeVerCursor;
        case window::CursorShape::Wait:
            return Qt::WaitCursor;
        case window::CursorShape::Arrow:
            break;
    }
    return Qt::ArrowCursor;
}

}  // namespace

QtWindow::QtWindow(window::Window& window, QWidget& widget, Ownership ownership)
    : m_window(window), m_widget(&widget), m_key(&widget), m_ownership(ownership) {
    WindowsByWidget()[m_key] = this;
    connect(&widget, &QObject::destroyed, this, [this] { OnWidgetGone(); });
}

QtWindow::~QtWindow() {
    WindowsByWidget().erase(m_key);
    if (Capture::Holder() == this)
        Capture::End();
    if (m_widget == nullptr)
        return;
    m_widget->removeEventFilter(this);
    disconnect(m_widget, nullptr, this, nullptr);
    if (m_ownership == Ownership::Ours)
        TakeAway(*m_widget);
}

void QtWindow::OnWidgetGone() {
    WindowsByWidget().erase(m_key);
    window::ReportGone(m_window);
}

QtWindow* QtWindow::Of(const QObject* widget) {
    const auto found = WindowsByWidget().find(widget);
    return found != WindowsByWidget().end() ? found->second : nullptr;
}

void QtWindow::Begin(const window::WindowRequest& request) {
    if (request.font != nullptr)
        SetFont(*request.font);
    SetText(request.text.View());
    Move(request.rect);
    m_widget->setEnabled((request.style & WS_DISABLED) == 0);
    if ((request.style & WS_TABSTOP) == 0)
        m_widget->setFocusPolicy(static_cast<Qt::FocusPolicy>(m_widget->focusPolicy() & ~Qt::TabFocus));
    if ((request.style & WS_VISIBLE) != 0)
        m_widget->show();
    BeginReporting();
}

void QtWindow::BeginReporting() {
    m_widget->setMouseTracking(true);
    m_widget->installEventFilter(this);
    m_reportedSize = GetClientSize();
    m_isReporting = true;
    if (QtWindow* const parent = Of(m_widget->parentWidget()); parent != nullptr && parent->m_bars != nullptr)
        parent->m_bars->Place(parent->InnerArea());  // on top of the new widget
}

void QtWindow::SetText(std::string_view text) {
    m_text = CString(text);
    if (m_widget != nullptr && m_widget->isWindow() && m_ownership == Ownership::Ours)
        m_widget->setWindowTitle(ToQt(text));
}

CString QtWindow::GetText() const {
    return m_text;
}

void QtWindow::SetFont(const CFont& font) {
    if (m_widget != nullptr)
        m_widget->setFont(FontOf(font));
}

void QtWindow::Show(bool visible) {
    if (m_widget != nullptr)
        m_widget->setVisible(visible);
}

bool QtWindow::IsVisible() const {
    return m_widget != nullptr && m_widget->isVisible();
}

void QtWindow::Enable(bool enabled) {
    if (m_widget != nullptr)
        m_widget->setEnabled(enabled);
}

bool QtWindow::IsEnabled() const {
    return m_widget != nullptr && !m_widget->testAttribute(Qt::WA_ForceDisabled);
}

void QtWindow::TakeFocus() {
    const QtToolkit::FocusByProgram guard;
    if (m_widget != nullptr)
        m_widget->setFocus(Qt::OtherFocusReason);
}

int QtWindow::BorderWidth() const {
    const auto* const frame = qobject_cast<const QFrame*>(m_widget.data());
    return frame != nullptr && m_window.Kind() == window::WindowKind::Plain ? frame->frameWidth() : 0;
}

QRect QtWindow::InnerArea() const {
    const int border = BorderWidth();
    const QRect area =
        m_widget != nullptr ? m_widget->rect().adjusted(border, border, -border, -border) : QRect();
    return {area.topLeft(), area.size().expandedTo({0, 0})};
}

QRect QtWindow::ClientArea() const {
    return m_bars != nullptr && m_widget != nullptr ? m_bars->Remaining(InnerArea()) : InnerArea();
}

void QtWindow::Resize(QSize size) {
    m_widget->resize(size);
}

void QtWindow::Move(const CRect& rect) {
    if (m_widget == nullptr)
        return;
    const QSize frame = m_widget->frameGeometry().size() - m_widget->size();
    m_widget->move(ToQt(rect.TopLeft()) + ClientOriginOfParent(*m_widget));
    Resize((QSize(rect.Width(), rect.Height()) - frame).expandedTo({0, 0}));
    ReportSize();
}

CRect QtWindow::GetRect() const {
    if (m_widget == nullptr)
        return {};
    if (m_widget->isWindow())
        return FromQt(m_widget->frameGeometry());
    const QPoint corner = m_window.Parent() != nullptr ? m_widget->pos() - ClientOriginOfParent(*m_widget)
                                                       : m_widget->mapToGlobal(QPoint());
    return FromQt(QRect(corner, m_widget->size()));
}

CSize QtWindow::GetClientSize() const {
    const QSize size = ClientArea().size();
    return {size.width(), size.height()};
}

CPoint QtWindow::ClientToScreen(CPoint point) const {
    return m_widget != nullptr ? FromQt(m_widget->mapToGlobal(ToQt(point) + ClientArea().topLeft())) : point;
}

CPoint QtWindow::ScreenToClient(CPoint point) const {
    return m_widget != nullptr ? FromQt(m_widget->mapFromGlobal(ToQt(point)) - ClientArea().topLeft())
                               : point;
}

// In the order in which the events come: the bars first, so that who hears of the size sees them.
void QtWindow::ReportSize() {
    if (m_bars != nullptr)
        m_bars->Place(InnerArea());
    const CSize size = GetClientSize();
    if (m_isReporting && std::exchange(m_reportedSize, size) != size)
        window::Report(
            m_window, WM_SIZE, 0,
            static_cast<LPARAM>(MakeWParam(static_cast<WORD>(size.cx), static_cast<WORD>(size.cy))));
}

void QtWindow::Invalidate(const CRect* rect) {
    if (!IsVisible())
        return;
    const QRect area = ClientArea();
    const QRect part = rect != nullptr ? ToQt(*rect).translated(area.topLeft()) & area : area;
    m_invalid += part;
    m_widget->update(part);
}

// Qt repaints what it is told to, so what is invalid is kept here.
void QtWindow::UpdateNow() {
    const QRegion region = std::exchange(m_invalid, QRegion());
    if (IsVisible() && !region.isEmpty() && !m_widget->testAttribute(Qt::WA_WState_InPaintEvent))
        m_widget->repaint(region);
}

// Where the screen's scale is no whole number, moved pixels would not lie where they are painted.
void QtWindow::Scroll(int dx, int dy, const CRect& rect) {
    if (!IsVisible())
        return;
    const QRect area = ClientArea();
    const QRect part = ToQt(rect).translated(area.topLeft()) & area;
    const qreal scale = m_widget->devicePixelRatioF();
    if (scale != std::floor(scale)) {
        m_invalid += part;
        m_widget->update(part);
        return;
    }
    m_invalid = (m_invalid - part) + ((m_invalid & part).translated(dx, dy) & part);
    m_invalid += QRegion(part) - part.translated(dx, dy);
    m_widget->scroll(dx, dy, part);
}

std::unique_ptr<window::Painter> QtWindow::BeginPaint() {
    if (m_widget == nullptr || !std::exchange(m_mayBeginPaint, false))
        return nullptr;
    const QRect area = ClientArea();
    const QRect clip = m_paintRegion.boundingRect() & area;
    return std::make_unique<QtPainter>(*m_widget, clip.translated(-area.topLeft()), area.topLeft());
}

std::unique_ptr<window::Painter> QtWindow::ClientPainter() {
    if (m_widget != nullptr)
        return std::make_unique<MeasuringPainter>(*m_widget);
    return std::make_unique<MeasuringPainter>(QPixmap(1, 1));
}

void QtWindow::SetScroll(int bar, const window::ScrollState& state) {
    if (m_widget == nullptr)
        return;
    if (m_bars == nullptr)
        m_bars = std::make_unique<ScrollBars>(*m_widget, m_window);
    m_bars->Set(bar, state);
    ReportSize();
}

window::ScrollState QtWindow::GetScroll(int bar) const {
    return m_bars != nullptr ? m_bars->Get(bar) : window::ScrollState();
}

void QtWindow::SetCapture() {
    Capture::Begin(*this);
}

void QtWindow::ReleaseCapture() {
    if (Capture::Holder() == this)
        Capture::End();
}

void QtWindow::LoseCapture() {
    if (Capture::Holder() != this)
        return;
    Capture::End();
    m_confinement.reset();
    window::ReportCaptureLost();
}

void QtWindow::ConfinePointer(const std::optional<CRect>& rect) {
    m_confinement = rect;
}

CPoint QtWindow::ClientPoint(QPoint widgetPoint) const {
    const CPoint point = FromQt(widgetPoint - ClientArea().topLeft());
    if (!m_confinement || m_confinement->IsRectEmpty())
        return point;
    return {std::clamp(point.x, m_confinement->left, m_confinement->right - 1),
            std::clamp(point.y, m_confinement->top, m_confinement->bottom - 1)};
}

CPoint QtWindow::LastPointer() const {
    return ClientToScreen(m_lastPointer);
}

void QtWindow::SetCursor(window::CursorShape shape) {
    if (m_widget != nullptr)
        m_widget->setCursor(ToQt(shape));
    m_wasCursorSet = true;
}

void QtWindow::StartTimer(UINT_PTR id, UINT milliseconds) {
    StopTimer(id);
    m_timers[id] = startTimer(static_cast<int>(std::clamp<UINT>(milliseconds, kShortestTimer, INT_MAX)));
}

void QtWindow::StopTimer(UINT_PTR id) {
    if (const auto found = m_timers.find(id); found != m_timers.end()) {
        killTimer(found->second);
        m_timers.erase(found);
    }
}

void QtWindow::timerEvent(QTimerEvent* event) {
    const auto found = std::find_if(m_timers.begin(), m_timers.end(),
                                    [event](const auto& timer) { return timer.second == event->timerId(); });
    if (found != m_timers.end())
        window::Report(m_window, WM_TIMER, found->first);
}

void QtWindow::SetAccessibleText(std::string_view name, std::string_view description) {
    if (m_widget == nullptr)
        return;
    m_widget->setAccessibleName(ToQt(name));
    m_widget->setAccessibleDescription(ToQt(description));
}

QWidget* ParentWidget(const window::WindowRequest& request) {
    return request.parent != nullptr ? static_cast<QtWindow*>(request.parent)->Widget() : nullptr;
}

}  // namespace kortavin::qt
