#pragma once

#include <memory>

#include "kortavin/window/toolkit.h"

namespace kortavin::window {

// The toolkit's font for a description: the one that something uses already, else a new one.
// CResourceException where no toolkit can be had.
std::shared_ptr<const NativeFont> SharedFont(const LOGFONT& description);

// To be called before another toolkit takes the place of the one in use: its fonts are handed out no more.
void ForgetFonts();

}  // namespace kortavin::window
