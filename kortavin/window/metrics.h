#pragma once

#include "kortavin/base/export.h"
#include "kortavin/base/types.h"
#include "kortavin/window/gdi.h"

namespace kortavin {

// System colours (arguments of GetSysColor).
inline constexpr int COLOR_WINDOW = 5;
inline constexpr int COLOR_WINDOWTEXT = 8;
inline constexpr int COLOR_HIGHLIGHT = 13;
inline constexpr int COLOR_HIGHLIGHTTEXT = 14;
inline constexpr int COLOR_BTNFACE = 15;
inline constexpr int COLOR_BTNSHADOW = 16;
inline constexpr int COLOR_GRAYTEXT = 17;
inline constexpr int COLOR_BTNTEXT = 18;
inline constexpr int COLOR_3DHIGHLIGHT = 20;
inline constexpr int COLOR_3DDKSHADOW = 21;

// System metrics in pixels (arguments of GetSystemMetrics).
inline constexpr int SM_CXVSCROLL = 2;
inline constexpr int SM_CYHSCROLL = 3;

// Of the desktop, through the toolkit when there is one. None is loaded for the question: until then the
// answers are those of a plain desktop, black on white with grey buttons. 0 for an unknown index.
KORTAVIN_API COLORREF GetSysColor(int index);
KORTAVIN_API int GetSystemMetrics(int index);

namespace window {

// The colours of that plain desktop.
KORTAVIN_API COLORREF PlainColor(int index);

// The font in which message boxes are written, which new grids take. Loads no toolkit either.
KORTAVIN_API LOGFONT MessageBoxFont();

}  // namespace window

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::COLOR_3DDKSHADOW;
using kortavin::COLOR_3DHIGHLIGHT;
using kortavin::COLOR_BTNFACE;
using kortavin::COLOR_BTNSHADOW;
using kortavin::COLOR_BTNTEXT;
using kortavin::COLOR_GRAYTEXT;
using kortavin::COLOR_HIGHLIGHT;
using kortavin::COLOR_HIGHLIGHTTEXT;
using kortavin::COLOR_WINDOW;
using kortavin::COLOR_WINDOWTEXT;
using kortavin::GetSysColor;
using kortavin::GetSystemMetrics;
using kortavin::SM_CXVSCROLL;
using kortavin::SM_CYHSCROLL;
#endif
