#include "kortavin/qt/scrollbars.h"

#include <QCoreApplication>
#include <QSignalBlocker>
#include <QStyle>
#include <QWheelEvent>
#include <algorithm>
#include <utility>

#include "kortavin/qt/application.h"

namespace kortavin::qt {
namespace {

int LastPosition(const window::ScrollState& state) {
    return std::max(state.minimum, state.page > 0 ? state.maximum - state.page + 1 : state.maximum);
}

bool IsNeeded(const window::ScrollState& state) {
    return LastPosition(state) > state.minimum;
}

std::optional<UINT> RequestOf(int action) {
    switch (action) {
        case QAbstractSlider::SliderSingleStepAdd:
            return SB_LINEDOWN;
        case QAbstractSlider::SliderSingleStepSub:
            return SB_LINEUP;
        case QAbstractSlider::SliderPageStepAdd:
            return SB_PAGEDOWN;
        case QAbstractSlider::SliderPageStepSub:
            return SB_PAGEUP;
        case QAbstractSlider::SliderToMinimum:
            return SB_TOP;
        case QAbstractSlider::SliderToMaximum:
            return SB_BOTTOM;
        default:
            return std::nullopt;
    }
}

int Thickness(const QWidget& widget) {
    return widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
}

}  // namespace

ScrollBars::ScrollBars(QWidget& widget, window::WindowRecord& window)
    : m_widget(widget), m_window(window), m_corner(new QWidget(&widget)) {
    m_corner->setAutoFillBackground(true);
    m_corner->hide();
    Connect(SB_HORZ);
    Connect(SB_VERT);
}

// This may happen in the midst of a bar's own event.
ScrollBars::~ScrollBars() {
    if (!CanTouchWidgets())
        return;
    for (QWidget* const widget : {static_cast<QWidget*>(m_bars[SB_HORZ].widget),
                                  static_cast<QWidget*>(m_bars[SB_VERT].widget), m_corner.data()})
        if (widget != nullptr) {
            widget->hide();
            widget->deleteLater();
        }
}

void ScrollBars::Connect(int bar) {
    auto* const widget = new QScrollBar(bar == SB_HORZ ? Qt::Horizontal : Qt::Vertical, &m_widget);
    m_bars[bar].widget = widget;
    widget->hide();
    widget->setCursor(Qt::ArrowCursor);
    widget->setFocusPolicy(Qt::NoFocus);
    widget->setTracking(false);
    widget->installEventFilter(this);
    connect(widget, &QScrollBar::actionTriggered, this, [this, bar](int action) { OnAction(bar, action); });
    connect(widget, &QScrollBar::sliderMoved, this, [this, bar] { Request(bar, SB_THUMBTRACK); });
    connect(widget, &QScrollBar::sliderReleased, this, [this, bar] { OnReleased(bar); });
    // Only the bar's menu sets a value without our doing: "scroll here".
    connect(widget, &QScrollBar::valueChanged, this, [this, bar] { OnReleased(bar); });
}

void ScrollBars::Set(int bar, const window::ScrollState& state) {
    auto& [widget, kept, isShown] = m_bars[bar];
    kept = state;
    kept.position = std::clamp(state.position, state.minimum, LastPosition(state));
    isShown = IsNeeded(state);
    if (widget == nullptr)
        return;
    const QSignalBlocker blocker(widget);
    widget->setRange(state.minimum, LastPosition(state));
    widget->setPageStep(std::max(state.page, 1));
    if (!widget->isSliderDown())  // the thumb stays under the pointer
        widget->setValue(kept.position);
}

window::ScrollState ScrollBars::Get(int bar) const {
    const auto& [widget, kept, isShown] = m_bars[bar];
    window::ScrollState state = kept;
    state.trackPosition = widget != nullptr && isShown ? widget->sliderPosition() : state.position;
    return state;
}

// What the user asks for, before the bar follows; it goes back, and moves when the window sets its position.
void ScrollBars::OnAction(int bar, int action) {
    const auto request = RequestOf(action);
    if (!request)
        return;
    QScrollBar* const widget = m_bars[bar].widget;
    widget->setSliderPosition(widget->value());
    Request(bar, *request);
}

void ScrollBars::OnReleased(int bar) {
    const QPointer<ScrollBars> alive(this);
    Request(bar, SB_THUMBPOSITION);
    if (alive != nullptr)
        Request(bar, SB_ENDSCROLL);
    if (alive == nullptr)
        return;
    const QSignalBlocker blocker(m_bars[bar].widget);
    m_bars[bar].widget->setValue(m_bars[bar].state.position);
}

void ScrollBars::Request(int bar, UINT request) {
    const int position = m_bars[bar].widget->sliderPosition();
    window::Report(
        m_window, bar == SB_HORZ ? WM_HSCROLL : WM_VSCROLL,
        MakeWParam(static_cast<WORD>(request), static_cast<WORD>(std::clamp(position, 0, 0xFFFF))));
}

QRect ScrollBars::Remaining(const QRect& inner) const {
    const int right = m_bars[SB_VERT].isShown ? Thickness(m_widget) : 0;
    const int bottom = m_bars[SB_HORZ].isShown ? Thickness(m_widget) : 0;
    const QRect rest = inner.adjusted(0, 0, -right, -bottom);
    return {rest.topLeft(), rest.size().expandedTo({0, 0})};
}

void ScrollBars::Place(const QRect& inner) {
    const QRect rest = Remaining(inner);
    const int right = rest.x() + rest.width(), bottom = rest.y() + rest.height(), size = Thickness(m_widget);
    const auto place = [](QWidget* widget, const QRect& rect, bool isShown) {
        if (widget == nullptr)
            return;
        widget->setGeometry(rect);
        widget->setVisible(isShown);
        widget->raise();
    };
    place(m_bars[SB_HORZ].widget, {rest.x(), bottom, rest.width(), size}, m_bars[SB_HORZ].isShown);
    place(m_bars[SB_VERT].widget, {right, rest.y(), size, rest.height()}, m_bars[SB_VERT].isShown);
    place(m_corner, {right, bottom, size, size}, m_bars[SB_HORZ].isShown && m_bars[SB_VERT].isShown);
}

// The wheel is the window's wherever it is turned.
bool ScrollBars::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Wheel)
        return QObject::eventFilter(watched, event);
    const auto& wheel = static_cast<QWheelEvent&>(*event);
    QWheelEvent forwarded(m_widget.mapFromGlobal(wheel.globalPosition()), wheel.globalPosition(),
                          wheel.pixelDelta(), wheel.angleDelta(), wheel.buttons(), wheel.modifiers(),
                          wheel.phase(), wheel.inverted());
    QCoreApplication::sendEvent(&m_widget, &forwarded);
    return true;
}

}  // namespace kortavin::qt
