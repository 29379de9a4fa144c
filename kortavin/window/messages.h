#pragma once

#include "kortavin/window/messagebox.h"
#include "kortavin/window/wintypes.h"

namespace kortavin {

// Messages. Where a handler's signature is fixed (messagemap.h), it stands behind the number.
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_SIZE = 0x0005;  // void (UINT type, int width, int height)
// lParam of WM_SETFOCUS: nonzero when the user moved the focus.
inline constexpr UINT WM_SETFOCUS = 0x0007;   // void (CWnd* loser)
inline constexpr UINT WM_KILLFOCUS = 0x0008;  // void (CWnd* gainer)
inline constexpr UINT WM_ENABLE = 0x000A;     // void (BOOL enabled)
inline constexpr UINT WM_SETREDRAW = 0x000B;
inline constexpr UINT WM_PAINT = 0x000F;           // void ()
inline constexpr UINT WM_CLOSE = 0x0010;           // void ()
inline constexpr UINT WM_ERASEBKGND = 0x0014;      // BOOL (CDC*)
inline constexpr UINT WM_SYSCOLORCHANGE = 0x0015;  // void ()
inline constexpr UINT WM_SETCURSOR = 0x0020;       // BOOL (CWnd*, UINT hitTest, UINT message)
inline constexpr UINT WM_DRAWITEM = 0x002B;
inline constexpr UINT WM_MEASUREITEM = 0x002C;
inline constexpr UINT WM_SETFONT = 0x0030;     // wParam: CFont*, lParam: nonzero to redraw
inline constexpr UINT WM_GETFONT = 0x0031;     // answers a CFont*
inline constexpr UINT WM_NOTIFY = 0x004E;      // void (NMHDR*, LRESULT*)
inline constexpr UINT WM_GETDLGCODE = 0x0087;  // UINT ()
inline constexpr UINT WM_NCDESTROY = 0x0082;
inline constexpr UINT WM_KEYDOWN = 0x0100;  // void (UINT key, UINT repeats, UINT flags)
inline constexpr UINT WM_KEYUP = 0x0101;    // the same
inline constexpr UINT WM_CHAR = 0x0102;     // the same; a double-byte character's bytes, lead byte high
inline constexpr UINT WM_SYSCHAR = 0x0106;  // the same
inline constexpr UINT WM_IME_STARTCOMPOSITION = 0x010D;  // void (): it goes on where the focus is afterwards
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_TIMER = 0x0113;        // void (UINT_PTR id)
inline constexpr UINT WM_HSCROLL = 0x0114;      // void (UINT request, UINT position, CWnd* bar)
inline constexpr UINT WM_VSCROLL = 0x0115;      // the same
inline constexpr UINT WM_MOUSEMOVE = 0x0200;    // void (UINT keys, CPoint): client coordinates
inline constexpr UINT WM_LBUTTONDOWN = 0x0201;  // the same for all buttons
inline constexpr UINT WM_LBUTTONUP = 0x0202;
inline constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
inline constexpr UINT WM_RBUTTONDOWN = 0x0204;
inline constexpr UINT WM_RBUTTONUP = 0x0205;
inline constexpr UINT WM_MOUSEWHEEL = 0x020A;  // BOOL (UINT keys, short delta, CPoint): screen coordinates
inline constexpr UINT WM_CAPTURECHANGED = 0x0215;  // void (CWnd* gainer)
inline constexpr UINT WM_USER = 0x0400;

// Requests of WM_HSCROLL and WM_VSCROLL.
inline constexpr UINT SB_LINEUP = 0, SB_LINELEFT = 0;
inline constexpr UINT SB_LINEDOWN = 1, SB_LINERIGHT = 1;
inline constexpr UINT SB_PAGEUP = 2, SB_PAGELEFT = 2;
inline constexpr UINT SB_PAGEDOWN = 3, SB_PAGERIGHT = 3;
inline constexpr UINT SB_THUMBPOSITION = 4;
inline constexpr UINT SB_THUMBTRACK = 5;
inline constexpr UINT SB_TOP = 6, SB_LEFT = 6;
inline constexpr UINT SB_BOTTOM = 7, SB_RIGHT = 7;
inline constexpr UINT SB_ENDSCROLL = 8;

// The two bars of a window.
inline constexpr int SB_HORZ = 0;
inline constexpr int SB_VERT = 1;

// Codes with which controls notify (the high word of WM_COMMAND's wParam).
inline constexpr WORD BN_CLICKED = 0;
inline constexpr WORD BN_DOUBLECLICKED = 5;
inline constexpr WORD CBN_SELCHANGE = 1;
inline constexpr WORD CBN_DBLCLK = 2;
inline constexpr WORD CBN_SETFOCUS = 3;
inline constexpr WORD CBN_KILLFOCUS = 4;
inline constexpr WORD CBN_EDITCHANGE = 5;
inline constexpr WORD CBN_DROPDOWN = 7;
inline constexpr WORD CBN_CLOSEUP = 8;
inline constexpr WORD LBN_SELCHANGE = 1;
inline constexpr WORD LBN_DBLCLK = 2;
inline constexpr WORD TCN_SELCHANGE = 0xFDD9;

// Answers to WM_GETDLGCODE: which keys a window wants for itself. Of Tab, Enter and Esc, which dialogs use,
// it hears only if it asks: Enter comes with the characters, Esc with all keys only.
inline constexpr UINT DLGC_WANTARROWS = 0x0001;
inline constexpr UINT DLGC_WANTTAB = 0x0002;
inline constexpr UINT DLGC_WANTALLKEYS = 0x0004;
inline constexpr UINT DLGC_WANTCHARS = 0x0080;

// Flags of RedrawWindow.
inline constexpr UINT RDW_INVALIDATE = 0x0001;
inline constexpr UINT RDW_ERASE = 0x0004;
inline constexpr UINT RDW_UPDATENOW = 0x0100;

// Where WM_SETCURSOR says the pointer is.
inline constexpr UINT HTCLIENT = 1;

// The control id of what is never looked up. IDOK and IDCANCEL (messagebox.h) have a meaning to dialogs.
inline constexpr int IDC_STATIC = -1;

inline constexpr UINT ID_EDIT_SELECT_ALL = 57642;

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::BN_CLICKED;
using kortavin::BN_DOUBLECLICKED;
using kortavin::CBN_CLOSEUP;
using kortavin::CBN_DBLCLK;
using kortavin::CBN_DROPDOWN;
using kortavin::CBN_EDITCHANGE;
using kortavin::CBN_KILLFOCUS;
using kortavin::CBN_SELCHANGE;
using kortavin::CBN_SETFOCUS;
using kortavin::DLGC_WANTALLKEYS;
using kortavin::DLGC_WANTARROWS;
using kortavin::DLGC_WANTCHARS;
using kortavin::DLGC_WANTTAB;
using kortavin::HTCLIENT;
using kortavin::ID_EDIT_SELECT_ALL;
using kortavin::IDC_STATIC;
using kortavin::LBN_DBLCLK;
using kortavin::LBN_SELCHANGE;
using kortavin::RDW_ERASE;
using kortavin::RDW_INVALIDATE;
using kortavin::RDW_UPDATENOW;
using kortavin::SB_BOTTOM;
using kortavin::SB_ENDSCROLL;
using kortavin::SB_HORZ;
using kortavin::SB_LEFT;
using kortavin::SB_LINEDOWN;
using kortavin::SB_LINELEFT;
using kortavin::SB_LINERIGHT;
using kortavin::SB_LINEUP;
using kortavin::SB_PAGEDOWN;
using kortavin::SB_PAGELEFT;
using kortavin::SB_PAGERIGHT;
using kortavin::SB_PAGEUP;
using kortavin::SB_RIGHT;
using kortavin::SB_THUMBPOSITION;
using kortavin::SB_THUMBTRACK;
using kortavin::SB_TOP;
using kortavin::SB_VERT;
using kortavin::TCN_SELCHANGE;
using kortavin::WM_CAPTURECHANGED;
using kortavin::WM_CHAR;
using kortavin::WM_CLOSE;
using kortavin::WM_COMMAND;
using kortavin::WM_DESTROY;
using kortavin::WM_DRAWITEM;
using kortavin::WM_ENABLE;
using kortavin::WM_ERASEBKGND;
using kortavin::WM_GETDLGCODE;
using kortavin::WM_GETFONT;
using kortavin::WM_HSCROLL;
using kortavin::WM_IME_STARTCOMPOSITION;
using kortavin::WM_INITDIALOG;
using kortavin::WM_KEYDOWN;
using kortavin::WM_KEYUP;
using kortavin::WM_KILLFOCUS;
using kortavin::WM_LBUTTONDBLCLK;
using kortavin::WM_LBUTTONDOWN;
using kortavin::WM_LBUTTONUP;
using kortavin::WM_MEASUREITEM;
using kortavin::WM_MOUSEMOVE;
using kortavin::WM_MOUSEWHEEL;
using kortavin::WM_NCDESTROY;
using kortavin::WM_NOTIFY;
using kortavin::WM_PAINT;
using kortavin::WM_RBUTTONDOWN;
using kortavin::WM_RBUTTONUP;
using kortavin::WM_SETCURSOR;
using kortavin::WM_SETFOCUS;
using kortavin::WM_SETFONT;
using kortavin::WM_SETREDRAW;
using kortavin::WM_SIZE;
using kortavin::WM_SYSCHAR;
using kortavin::WM_SYSCOLORCHANGE;
using kortavin::WM_TIMER;
using kortavin::WM_USER;
using kortavin::WM_VSCROLL;
#endif
