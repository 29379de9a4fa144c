#pragma once

#include "kortavin/window/module.h"

namespace kortavin::window {

using OwnModuleFactory = const ResourceModule& (*)();

// The module of this library's own dialogs and texts stands above the windows that use it, and names itself
// while the library is loaded. The factory runs when something is first looked up.
bool RegisterOwnModule(OwnModuleFactory factory) noexcept;

}  // namespace kortavin::window
