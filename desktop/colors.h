#pragma once

namespace kortavin::desktop {

enum class Colors { Light, Dark };

// Qt's own style and one of two sets of colours in place of the desktop's, also while windows are open.
void UseColors(Colors colors);

}  // namespace kortavin::desktop
