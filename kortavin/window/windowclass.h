#pragma once

#include <optional>

#include "kortavin/window/toolkit.h"

namespace kortavin::window {

// What a window of the named class is, ASCII letters folded; nothing for a class that nobody named.
std::optional<WindowKind> KindOfClass(const char* className);

}  // namespace kortavin::window
