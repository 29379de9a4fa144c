#pragma once

#include <QMouseEvent>
#include <memory>
#include <optional>

#include "kortavin/window/messagemap.h"

class QWidget;

namespace kortavin::qt {

// Nothing for a button that no message tells of.
std::optional<UINT> MouseMessageOf(const QMouseEvent& event);

// The keys and buttons that are down, for a mouse message.
UINT HeldKeys(Qt::KeyboardModifiers modifiers, Qt::MouseButtons buttons);

// The event that stands for a mouse message of the program, for the widget to handle; null for other
// messages. The client area starts at `clientOrigin`.
std::unique_ptr<QEvent> MouseEventOf(const window::Message& message, const QWidget& widget,
                                     QPoint clientOrigin);

}  // namespace kortavin::qt
