#pragma once

namespace kortavin::qt {

// Has Qt's own boxes speak Chinese, unless the host has them translated already. Where Qt's translations are
// not installed they stay English, but for the buttons that the choosers name themselves.
void TranslateQt();

}  // namespace kortavin::qt
