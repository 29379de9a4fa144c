#pragma once

#include "kortavin/window/gdi.h"

namespace kortavin::grid {

// One record for all cells of equal fonts; it stays for the life of the process.
const LOGFONT* SharedFont(const LOGFONT& font);

}  // namespace kortavin::grid
