#pragma once

#include "framework/base/types.h"

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
