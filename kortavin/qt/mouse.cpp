#include "kortavin/qt/mouse.h"

#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <array>

#include "kortavin/qt/geometry.h"
#include "kortavin/window/keys.h"

namespace kortavin::qt {
namespace {

struct MouseMessage {
    UINT message;
    QEvent::Type type;
    Qt::MouseButton button;
};

// The right button has no message for its double click: it is another press.
constexpr std::array kMouseMessages{
    MouseMessage{WM_MOUSEMOVE, QEvent::MouseMove, Qt::NoButton},
    MouseMessage{WM_LBUTTONDOWN, QEvent::MouseButtonPress, Qt::LeftButton},
    MouseMessage{WM_LBUTTONUP, QEvent::MouseButtonRelease, Qt::LeftButton},
    MouseMessage{WM_LBUTTONDBLCLK, QEvent::MouseButtonDblClick, Qt::LeftButton},
    MouseMessage{WM_RBUTTONDOWN, QEvent::MouseButtonPress, Qt::RightButton},
    MouseMessage{WM_RBUTTONUP, QEvent::MouseButtonRelease, Qt::RightButton},
    MouseMessage{WM_RBUTTONDOWN, QEvent::MouseButtonDblClick, Qt::RightButton},
};

Qt::MouseButtons ButtonsOf(UINT keys) {
    Qt::MouseButtons buttons;
    buttons.setFlag(Qt::LeftButton, (keys & MK_LBUTTON) != 0);
    buttons.setFlag(Qt::RightButton, (keys & MK_RBUTTON) != 0);
    return buttons;
}

Qt::KeyboardModifiers ModifiersOf(UINT keys) {
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (keys & MK_SHIFT) != 0);
    modifiers.setFlag(Qt::ControlModifier, (keys & MK_CONTROL) != 0);
    return modifiers;
}

std::unique_ptr<QEvent> WheelEventOf(const window::Message& message, const QWidget& widget) {
    const QPointF global = ToQt(PointOfParam(message.lParam));
    const UINT keys = LOWORD(message.wParam);
    return std::make_unique<QWheelEvent>(widget.mapFromGlobal(global), global, QPoint(),
                                         QPoint(0, static_cast<SHORT>(HIWORD(message.wParam))),
                                         ButtonsOf(keys), ModifiersOf(keys), Qt::NoScrollPhase, false);
}

}  // namespace

std::optional<UINT> MouseMessageOf(const QMouseEvent& event) {
    const auto found = std::ranges::find_if(kMouseMessages, [&event](const MouseMessage& entry) {
        return entry.type == event.type() &&
               (entry.button == event.button() || entry.type == QEvent::MouseMove);
    });
    return found != kMouseMessages.end() ? std::optional(found->message) : std::nullopt;
}

UINT HeldKeys(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons) {
    return (buttons.testFlag(Qt::LeftButton) ? MK_LBUTTON : 0) |
           (buttons.testFlag(Qt::RightButton) ? MK_RBUTTON : 0) |
           (modifiers.testFlag(Qt::ShiftModifier) ? MK_SHIFT : 0) |
           (modifiers.testFlag(Qt::ControlModifier) ? MK_CONTROL : 0);
}

std::unique_ptr<QEvent> MouseEventOf(const window::Message& message, const QWidget& widget,
                                     QPoint clientOrigin) {
    if (message.message == WM_MOUSEWHEEL)
        return WheelEventOf(message, widget);
    const auto found = std::ranges::find(kMouseMessages, message.message, &MouseMessage::message);
    if (found == kMouseMessages.end())
        return nullptr;
    const QPointF local = ToQt(PointOfParam(message.lParam)) + clientOrigin;
    const UINT keys = static_cast<UINT>(message.wParam);
    return std::make_unique<QMouseEvent>(found->type, local, widget.mapToGlobal(local), found->button,
                                         ButtonsOf(keys), ModifiersOf(keys));
}

}  // namespace kortavin::qt
