#pragma once

#include <QKeyEvent>
#include <memory>
#include <vector>

#include "kortavin/base/cstring.h"
#include "kortavin/window/messagemap.h"

namespace kortavin::qt {

// The number of an event's key; that of "a character without a key" for one that has none.
UINT VirtualKeyOf(const QKeyEvent& event);

// The characters of a text, one for a message each: up to four bytes of GBK, the first one highest.
std::vector<WPARAM> CharactersOf(const QString& text);

// The event that stands for a key or character message of the program, for a widget to handle; null for other
// messages.
std::unique_ptr<QEvent> KeyEventOf(const window::Message& message);

}  // namespace kortavin::qt
