#include <QCloseEvent>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QWheelEvent>
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <exception>
#include <utility>

#include "kortavin/qt/accessibletable.h"
#include "kortavin/qt/capture.h"
#include "kortavin/qt/geometry.h"
#include "kortavin/qt/keys.h"
#include "kortavin/qt/mouse.h"
#include "kortavin/qt/reportedevent.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/keys.h"

namespace kortavin::qt {
namespace {

constexpr int kWholeWindow = INT_MIN;  // as what is painted

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::InputMethod:
            return true;
        default:
            return false;
    }
}

constinit const QInputEvent* s_inputEvent = nullptr;

// The input event that is being reported.
class InputScope {
  public:
    explicit InputScope(const QEvent& event) : m_former(s_inputEvent) {
        if (IsInput(event.type()) && event.type() != QEvent::InputMethod)
            s_inputEvent = static_cast<const QInputEvent*>(&event);
    }
    ~InputScope() { s_inputEvent = m_former; }
    InputScope(const InputScope&) = delete;
    InputScope& operator=(const InputScope&) = delete;

  private:
    const QInputEvent* m_former;
};

}  // namespace

std::optional<Qt::KeyboardModifiers> QtWindow::ModifiersOfEvent() {
    return s_inputEvent != nullptr ? std::optional(s_inputEvent->modifiers()) : std::nullopt;
}

void QtWindow::HandToWidget(QEvent& event) {
    if (m_widget != nullptr)
        static_cast<QObject*>(m_widget)->event(&event);
}

QtWindow::Outcome QtWindow::ReportEvent(QEvent* event, UINT message, WPARAM wParam, LPARAM lParam) {
    const QPointer<QtWindow> alive(this);
    ReportedEvent reported{event, message, wParam, lParam, m_reported};
    m_reported = &reported;
    if (message == WM_PAINT)
        GuardPainting(kWholeWindow, [this] { window::SendMessage(&m_window, WM_PAINT); });
    else
        window::Report(m_window, message, wParam, lParam);
    if (alive == nullptr)
        return Outcome::Gone;
    m_reported = reported.outer;
    return reported.wasHanded ? Outcome::Handed : Outcome::Taken;
}

// What fails may lie outside of what was painted.
void QtWindow::OnPainted(int part) {
    if (part != kWholeWindow || m_paintRegion.boundingRect().contains(ClientArea()))
        m_failingParts.erase(part);
}

void QtWindow::OnPaintError(int part) noexcept try {
    const bool isKnown = !m_failingParts.empty();
    m_failingParts.insert(part);
    if (isKnown)
        return;
    const auto tell = [error = std::current_exception()] {
        window::Guarded([&error] { std::rethrow_exception(error); });
    };
    QMetaObject::invokeMethod(qApp, tell, Qt::QueuedConnection);
} catch (...) {
    // No memory is left to tell it with.
}

LRESULT QtWindow::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (m_reported != nullptr && m_reported->Is(message, wParam, lParam)) {
        if (m_reported->event != nullptr && !std::exchange(m_reported->wasHanded, true))
            HandToWidget(*m_reported->event);
        return 0;
    }
    switch (message) {
        case WM_GETDLGCODE:
            return DialogCode();
        case WM_SETCURSOR:
            if (m_widget != nullptr && std::exchange(m_wasCursorSet, false))
                m_widget->unsetCursor();
            return 0;
        default:
            HandOwnEvent({message, wParam, lParam});
            return 0;
    }
}

void QtWindow::HandOwnEvent(const window::Message& message) {
    if (m_widget == nullptr)
        return;
    auto event = KeyEventOf(message);
    if (event == nullptr)
        event = MouseEventOf(message, *m_widget, ClientArea().topLeft());
    if (event != nullptr)
        HandToWidget(*event);
}

bool QtWindow::eventFilter(QObject* watched, QEvent* event) {
    bool isHandled = false;
    window::Guarded([&] {
        if (watched == m_widget && event->type() == QEvent::ParentChange)
            FollowParent();
        isHandled = watched == m_widget && !IsLeftAlone() && Filter(*event);
    });
    return isHandled;
}

// Without an object, a widget of the host is the host's again, and the mouse over a label is the parent's.
bool QtWindow::IsLeftAlone() const {
    return m_window.Object() == nullptr &&
           (m_ownership == Ownership::Hosts || m_window.Kind() == window::WindowKind::Static);
}

bool QtWindow::Filter(QEvent& event) {
    if (IsInput(event.type()) && !m_widget->isEnabled())
        return false;
    switch (event.type()) {
        case QEvent::Paint:
            return OnPaint(static_cast<QPaintEvent&>(event));
        case QEvent::Resize:
            return After(event, [this] { ReportSize(); });
        case QEvent::Hide:
        case QEvent::WindowDeactivate:
            return After(event, [this] { LoseCapture(); });
        case QEvent::PaletteChange:
        case QEvent::ApplicationPaletteChange:
            return After(event, [this] { window::Report(m_window, WM_SYSCOLORCHANGE); });
        case QEvent::Close:
            return OnClose(event);
        case QEvent::FocusIn:
            return OnFocusIn();
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
            return OnMouse(static_cast<QMouseEvent&>(event));
        case QEvent::Wheel:
            return OnWheel(static_cast<QWheelEvent&>(event));
        case QEvent::ShortcutOverride:
            return OnShortcutOverride(static_cast<QKeyEvent&>(event));
        case QEvent::KeyPress:
            return OnKeyPress(static_cast<QKeyEvent&>(event));
        case QEvent::KeyRelease:
            return OnKeyRelease(static_cast<QKeyEvent&>(event));
        case QEvent::InputMethod:
            return OnInputMethod(static_cast<QInputMethodEvent&>(event));
        default:
            return false;
    }
}

// The widget handles the event, then what follows from it is reported.
template <class Then>
bool QtWindow::After(QEvent& event, Then then) {
    const QPointer<QtWindow> alive(this);
    HandToWidget(event);
    if (alive != nullptr)
        then();
    return true;
}

// A plain widget has painted its frame and background when the window starts to paint.
bool QtWindow::OnPaint(QPaintEvent& event) {
    const bool isPlain = m_window.Kind() == window::WindowKind::Plain;
    m_invalid -= event.region();
    if (isPlain)
        HandToWidget(event);
    m_paintRegion = event.region();
    m_mayBeginPaint = true;
    if (ReportEvent(isPlain ? nullptr : &event, WM_PAINT) != Outcome::Gone)
        m_mayBeginPaint = false;
    return true;
}

// The host's own windows close by themselves.
bool QtWindow::OnClose(QEvent& event) {
    if (m_ownership == Ownership::Hosts)
        return false;
    event.ignore();
    window::Report(m_window, WM_CLOSE);
    return true;
}

// Input methods work where characters are wanted.
bool QtWindow::OnFocusIn() {
    if (m_window.Kind() != window::WindowKind::Plain)
        return false;
    TellFocusLater(*this);
    const QPointer<QtWindow> alive(this);
    const auto code = static_cast<UINT>(window::Report(m_window, WM_GETDLGCODE));
    if (alive != nullptr && m_widget != nullptr)
        m_widget->setAttribute(Qt::WA_InputMethodEnabled, (code & (DLGC_WANTCHARS | DLGC_WANTALLKEYS)) != 0);
    return alive == nullptr;
}

// What happens on the border is nobody's, and so is what a pressed button still hears of outside.
bool QtWindow::OnMouse(QMouseEvent& event) {
    const auto message = MouseMessageOf(event);
    const QPoint place = event.position().toPoint();
    const bool isCaptured = Capture::Holder() == this;
    if (!message || (!isCaptured && !ClientArea().contains(place)))
        return false;
    m_lastPointer = ClientPoint(place);
    if (isCaptured || AskForCursor(*message))
        ReportEvent(&event, *message, HeldKeys(event.modifiers(), event.buttons()),
                    MakePointParam(m_lastPointer));
    event.accept();
    return true;
}

bool QtWindow::AskForCursor(UINT message) {
    const QPointer<QtWindow> alive(this);
    window::Report(m_window, WM_SETCURSOR, reinterpret_cast<WPARAM>(&m_window),
                   static_cast<LPARAM>(MakeWParam(HTCLIENT, static_cast<WORD>(message))));
    return alive != nullptr;
}

// Whole notches are reported; fine wheels and touchpads turn by parts of one, which are the parents' where
// the window left the last notch to them.
bool QtWindow::OnWheel(QWheelEvent& event) {
    const int delta = event.angleDelta().y();
    if (delta == 0)
        return false;
    m_wheelRest = (m_wheelRest < 0) == (delta < 0) ? m_wheelRest + delta : delta;
    const int notches = m_wheelRest / WHEEL_DELTA * WHEEL_DELTA;
    m_wheelRest -= notches;
    event.accept();
    if (notches == 0)
        return m_takesWheel;
    const UINT keys = HeldKeys(event.modifiers(), event.buttons());
    const CPoint place = FromQt(event.globalPosition().toPoint());
    const Outcome outcome =
        ReportEvent(&event, WM_MOUSEWHEEL, MakeWParam(static_cast<WORD>(keys), static_cast<WORD>(notches)),
                    MakePointParam(place));
    if (outcome != Outcome::Gone)
        m_takesWheel = outcome == Outcome::Taken;
    return true;
}

}  // namespace kortavin::qt
