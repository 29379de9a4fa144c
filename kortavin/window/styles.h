#pragma once

#include "kortavin/base/types.h"

namespace kortavin {

// Styles of windows and controls. A template or a Create call combines them.
inline constexpr DWORD WS_POPUP = 0x80000000;
inline constexpr DWORD WS_CHILD = 0x40000000;
inline constexpr DWORD WS_VISIBLE = 0x10000000;
inline constexpr DWORD WS_DISABLED = 0x08000000;
inline constexpr DWORD WS_CAPTION = 0x00C00000;
inline constexpr DWORD WS_BORDER = 0x00800000;
inline constexpr DWORD WS_VSCROLL = 0x00200000;
inline constexpr DWORD WS_HSCROLL = 0x00100000;
inline constexpr DWORD WS_SYSMENU = 0x00080000;
inline constexpr DWORD WS_GROUP = 0x00020000;
inline constexpr DWORD WS_TABSTOP = 0x00010000;

// Buttons; the kind is the low four bits.
inline constexpr DWORD BS_PUSHBUTTON = 0x0;
inline constexpr DWORD BS_DEFPUSHBUTTON = 0x1;
inline constexpr DWORD BS_AUTOCHECKBOX = 0x3;
inline constexpr DWORD BS_GROUPBOX = 0x7;
inline constexpr DWORD BS_AUTORADIOBUTTON = 0x9;
inline constexpr DWORD BS_TYPEMASK = 0xF;

// Labels; the alignment is the low five bits.
inline constexpr DWORD SS_LEFT = 0x0;
inline constexpr DWORD SS_CENTER = 0x1;
inline constexpr DWORD SS_RIGHT = 0x2;
inline constexpr DWORD SS_TYPEMASK = 0x1F;
inline constexpr DWORD SS_NOTIFY = 0x100;

// Combo boxes; the kind is the low two bits.
inline constexpr DWORD CBS_DROPDOWN = 0x2;      // an edit field with a list
inline constexpr DWORD CBS_DROPDOWNLIST = 0x3;  // a choice from a list only
inline constexpr DWORD CBS_OWNERDRAWFIXED = 0x10;
inline constexpr DWORD CBS_AUTOHSCROLL = 0x40;
inline constexpr DWORD CBS_SORT = 0x100;
inline constexpr DWORD CBS_HASSTRINGS = 0x200;

// List boxes.
inline constexpr DWORD LBS_NOTIFY = 0x1;  // tells its parent of selections and double clicks
inline constexpr DWORD LBS_SORT = 0x2;
inline constexpr DWORD LBS_NOINTEGRALHEIGHT = 0x100;  // as high as it was made, whatever fits

// Edit boxes.
inline constexpr DWORD ES_LEFT = 0x0;
inline constexpr DWORD ES_CENTER = 0x1;
inline constexpr DWORD ES_RIGHT = 0x2;
inline constexpr DWORD ES_MULTILINE = 0x4;
inline constexpr DWORD ES_AUTOVSCROLL = 0x40;
inline constexpr DWORD ES_AUTOHSCROLL = 0x80;
inline constexpr DWORD ES_READONLY = 0x800;
inline constexpr DWORD ES_WANTRETURN = 0x1000;  // Enter breaks the line; else it is the dialog's

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::BS_AUTOCHECKBOX;
using kortavin::BS_AUTORADIOBUTTON;
using kortavin::BS_DEFPUSHBUTTON;
using kortavin::BS_GROUPBOX;
using kortavin::BS_PUSHBUTTON;
using kortavin::BS_TYPEMASK;
using kortavin::CBS_AUTOHSCROLL;
using kortavin::CBS_DROPDOWN;
using kortavin::CBS_DROPDOWNLIST;
using kortavin::CBS_HASSTRINGS;
using kortavin::CBS_OWNERDRAWFIXED;
using kortavin::CBS_SORT;
using kortavin::ES_AUTOHSCROLL;
using kortavin::ES_AUTOVSCROLL;
using kortavin::ES_CENTER;
using kortavin::ES_LEFT;
using kortavin::ES_MULTILINE;
using kortavin::ES_READONLY;
using kortavin::ES_RIGHT;
using kortavin::ES_WANTRETURN;
using kortavin::LBS_NOINTEGRALHEIGHT;
using kortavin::LBS_NOTIFY;
using kortavin::LBS_SORT;
using kortavin::SS_CENTER;
using kortavin::SS_LEFT;
using kortavin::SS_NOTIFY;
using kortavin::SS_RIGHT;
using kortavin::SS_TYPEMASK;
using kortavin::WS_BORDER;
using kortavin::WS_CAPTION;
using kortavin::WS_CHILD;
using kortavin::WS_DISABLED;
using kortavin::WS_GROUP;
using kortavin::WS_HSCROLL;
using kortavin::WS_POPUP;
using kortavin::WS_SYSMENU;
using kortavin::WS_TABSTOP;
using kortavin::WS_VISIBLE;
using kortavin::WS_VSCROLL;
#endif
