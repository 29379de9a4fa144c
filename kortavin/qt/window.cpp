#include "kortavin/qt/window.h"

#include <QApplication>
#include <QTimerEvent>
#include <algorithm>
#include <climits>
#include <unordered_map>
#include <utility>

#include "kortavin/qt/accessibletable.h"
#include "kortavin/qt/application.h"
#include "kortavin/qt/capture.h"
#include "kortavin/qt/font.h"
#include "kortavin/qt/geometry.h"
#include "kortavin/qt/qttoolkit.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

constexpr UINT kShortestTimer = 10;  // milliseconds; a shorter one would leave no time for anything else

// Never destroyed: windows of a host's static objects go later than anything here could.
std::unordered_map<const QObject*, QtWindow*>& WindowsByWidget() {
    static auto* windows = new std::unordered_map<const QObject*, QtWindow*>;
    return *windows;
}

// An own widget may be in the midst of an event, so it goes later.
void TakeAway(QWidget& widget) {
    if (!CanTouchWidgets())
        return;
    const QtToolkit::FocusByProgram guard;
    if (QWidget* const focus = QApplication::focusWidget(); focus != nullptr && widget.isAncestorOf(focus))
        focus->clearFocus();
    widget.hide();
    widget.deleteLater();
}

Qt::CursorShape ToQt(window::PointerShape shape) {
    switch (shape) {
        case window::PointerShape::SizeHorizontal:
            return Qt::SizeHorCursor;
        case window::PointerShape::SizeVertical:
            return Qt::SizeVerCursor;
        case window::PointerShape::Wait:
            return Qt::WaitCursor;
        case window::PointerShape::Arrow:
            break;
    }
    return Qt::ArrowCursor;
}

// An edit field leaves the focus to its combo box.
bool IsTabStop(const QWidget& widget) {
    const QWidget* const proxy = widget.focusProxy();
    return widget.focusPolicy() != Qt::NoFocus && (proxy == nullptr || widget.isAncestorOf(proxy));
}

const window::WindowRecord* RootOf(const window::WindowRecord& window) {
    const window::WindowRecord* root = &window;
    while (root->Parent() != nullptr)
        root = root->Parent();
    return root;
}

// In the order of the tree, those in one top window with `widget`, which is being made for `made`.
void CollectTabStops(const window::WindowRecord& from, const window::WindowRecord& made, QWidget& widget,
                     std::vector<QWidget*>& stops) {
    QWidget* const own = &from == &made ? &widget : static_cast<QtWindow&>(from.Native()).Widget();
    if (own != nullptr && own->window() == widget.window() && IsTabStop(*own))
        stops.push_back(own);
    for (const window::WindowRecord* const child : from.Children())
        CollectTabStops(*child, made, widget, stops);
}

}  // namespace

QtWindow::QtWindow(window::WindowRecord& window, QWidget& widget, Ownership ownership)
    : m_window(window), m_widget(&widget), m_key(&widget), m_ownership(ownership) {
    WindowsByWidget()[m_key] = this;
    connect(&widget, &QObject::destroyed, this, [this] { OnWidgetGone(); });
}

QtWindow::~QtWindow() {
    Unregister();
    ForgetKeys();
    if (Capture::Holder() == this)
        Capture::End();
    if (m_widget == nullptr)
        return;
    m_widget->removeEventFilter(this);
    disconnect(m_widget, nullptr, this, nullptr);
    if (m_ownership == Ownership::Ours)
        TakeAway(*m_widget);
}

void QtWindow::AddPart(const QWidget& part) {
    m_part = &part;
    WindowsByWidget()[m_part] = this;
}

void QtWindow::Unregister() const {
    WindowsByWidget().erase(m_key);
    WindowsByWidget().erase(m_part);
}

void QtWindow::OnWidgetGone() {
    Unregister();
    window::ReportGone(m_window);
}

// A widget of the host is the host's alone again, unless the window is needed for itself.
void QtWindow::ObjectLeft() {
    if (m_ownership == Ownership::Hosts && m_window.Children().empty() && !m_window.WasAskedFor() &&
        CanTouchWidgets())
        m_window.Destroy();
}

// The host may put its widget into a form, or into another one, at any time.
void QtWindow::FollowParent() {
    if (m_ownership == Ownership::Hosts && (m_window.Object() != nullptr || m_window.Parent() != nullptr))
        m_window.SetParent(RequireWindowOf(m_widget->parentWidget()));
}

QtWindow* QtWindow::Of(const QObject* widget) {
    const auto found = WindowsByWidget().find(widget);
    return found != WindowsByWidget().end() ? found->second : nullptr;
}

QWidget* QtWindow::FocusTarget() const {
    QWidget* target = m_widget;
    while (target != nullptr && target->focusProxy() != nullptr)
        target = target->focusProxy();
    return target;
}

void QtWindow::Begin(const window::WindowRequest& request) {
    if (request.font != nullptr)
        SetFont(*request.font);
    SetText(request.text.View());
    Move(request.rect);
    m_widget->setEnabled((request.style & WS_DISABLED) == 0);
    if ((request.style & WS_TABSTOP) == 0)
        m_widget->setFocusPolicy(static_cast<Qt::FocusPolicy>(m_widget->focusPolicy() & ~Qt::TabFocus));
    TakeTabPlace();
    // One that is not told to hide would show as soon as its parent does.
    m_widget->setVisible((request.style & WS_VISIBLE) != 0);
    BeginReporting();
}

// The Tab key follows the tree of windows. Qt puts a new widget behind all others, which is right for the
// last one, and for the first one too, since the order is a ring.
void QtWindow::TakeTabPlace() {
    if (!IsTabStop(*m_widget))
        return;
    std::vector<QWidget*> stops;
    CollectTabStops(*RootOf(m_window), m_window, *m_widget, stops);
    const auto place = std::ranges::find(stops, m_widget.data());
    if (place != stops.begin() && place + 1 < stops.end())
        QWidget::setTabOrder(*(place - 1), m_widget);
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

void QtWindow::SetCursor(window::PointerShape shape) {
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

// What was made for the widget before the table was there knows nothing of it.
void QtWindow::SetAccessibleTable(window::AccessibleTable* table) {
    if (std::exchange(m_table, table) != table && m_widget != nullptr && CanTouchWidgets())
        ForgetAccessible(*m_widget);
}

void QtWindow::TellTableChange(window::TableChange change, window::AccessibleTable::Cell cell) {
    if (m_widget != nullptr && m_table != nullptr)
        qt::TellTableChange(*m_widget, change, cell);
}

QWidget* ParentWidget(const window::WindowRequest& request) {
    return request.parent != nullptr ? static_cast<QtWindow*>(request.parent)->Widget() : nullptr;
}

}  // namespace kortavin::qt
