#pragma once

#include "kortavin/base/types.h"

namespace kortavin {

// Keys by their numbers; letters and digits have those of their capital ASCII characters.
inline constexpr UINT VK_LBUTTON = 1;
inline constexpr UINT VK_RBUTTON = 2;
inline constexpr UINT VK_BACK = 8;
inline constexpr UINT VK_TAB = 9;
inline constexpr UINT VK_RETURN = 13;
inline constexpr UINT VK_SHIFT = 16;
inline constexpr UINT VK_CONTROL = 17;
inline constexpr UINT VK_MENU = 18;
inline constexpr UINT VK_ESCAPE = 27;
inline constexpr UINT VK_SPACE = 32;
inline constexpr UINT VK_PRIOR = 33;
inline constexpr UINT VK_NEXT = 34;
inline constexpr UINT VK_END = 35;
inline constexpr UINT VK_HOME = 36;
inline constexpr UINT VK_LEFT = 37;
inline constexpr UINT VK_UP = 38;
inline constexpr UINT VK_RIGHT = 39;
inline constexpr UINT VK_DOWN = 40;
inline constexpr UINT VK_INSERT = 45;
inline constexpr UINT VK_DELETE = 46;
inline constexpr UINT VK_F1 = 112;  // F2 to F12 follow
inline constexpr UINT VK_F4 = 115;

// What is held down, in the first parameter of mouse messages.
inline constexpr UINT MK_LBUTTON = 0x01;
inline constexpr UINT MK_RBUTTON = 0x02;
inline constexpr UINT MK_SHIFT = 0x04;
inline constexpr UINT MK_CONTROL = 0x08;

// One notch of a mouse wheel.
inline constexpr int WHEEL_DELTA = 120;

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::MK_CONTROL;
using kortavin::MK_LBUTTON;
using kortavin::MK_RBUTTON;
using kortavin::MK_SHIFT;
using kortavin::VK_BACK;
using kortavin::VK_CONTROL;
using kortavin::VK_DELETE;
using kortavin::VK_DOWN;
using kortavin::VK_END;
using kortavin::VK_ESCAPE;
using kortavin::VK_F1;
using kortavin::VK_F4;
using kortavin::VK_HOME;
using kortavin::VK_INSERT;
using kortavin::VK_LBUTTON;
using kortavin::VK_LEFT;
using kortavin::VK_MENU;
using kortavin::VK_NEXT;
using kortavin::VK_PRIOR;
using kortavin::VK_RBUTTON;
using kortavin::VK_RETURN;
using kortavin::VK_RIGHT;
using kortavin::VK_SHIFT;
using kortavin::VK_SPACE;
using kortavin::VK_TAB;
using kortavin::VK_UP;
using kortavin::WHEEL_DELTA;
#endif
