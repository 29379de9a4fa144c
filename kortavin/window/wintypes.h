#pragma once

#include <cstdint>

#include "kortavin/base/cstring.h"
#include "kortavin/base/geometry.h"
#include "kortavin/base/types.h"

namespace kortavin {

// A window's handle. Null stands for no window; no other value means anything to a host.
using HWND = void*;

// A message's two parameters and its answer. All three can hold a pointer.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using SHORT = std::int16_t;

constexpr WORD LOWORD(std::uint64_t value) {
    return static_cast<WORD>(value);
}
constexpr WORD HIWORD(std::uint64_t value) {
    return static_cast<WORD>(value >> 16);
}
// Two 16-bit halves in one message parameter.
constexpr WPARAM MakeWParam(WORD low, WORD high) {
    return WPARAM{low} | WPARAM{high} << 16;
}
// A point travels in a message as two signed 16-bit halves, x in the low one; coordinates outside are
// clamped.
constexpr LPARAM MakePointParam(CPoint point) {
    const auto half = [](int value) { return static_cast<WORD>(std::clamp(value, -32768, 32767)); };
    return static_cast<LPARAM>(MakeWParam(half(point.x), half(point.y)));
}
constexpr CPoint PointOfParam(LPARAM lParam) {
    return {static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam))};
}

// The head of every record that WM_NOTIFY carries: the sender, its control id and what happened.
struct NMHDR {
    HWND hwndFrom = nullptr;
    UINT_PTR idFrom = 0;
    int code = 0;
};

class CDC;

// A request to draw one item of an owner-drawn control (WM_DRAWITEM).
struct DRAWITEMSTRUCT {
    UINT CtlType = 0;
    UINT CtlID = 0;
    UINT itemID = 0;  // as an int: -1 is the selection field with nothing selected
    UINT itemAction = 0;
    UINT itemState = 0;  // ODS_ bits
    HWND hwndItem = nullptr;
    CDC* hDC = nullptr;  // starts in the system's window text and background colours
    CRect rcItem;        // in the coordinates of hDC; of the control itself for its selection field
    UINT_PTR itemData = 0;
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;

// The question how large the items of an owner-drawn control are, in pixels (WM_MEASUREITEM).
struct MEASUREITEMSTRUCT {
    UINT CtlType = 0;
    UINT CtlID = 0;
    UINT itemID = 0;
    UINT itemWidth = 0;
    UINT itemHeight = 0;  // preset with the height of the control's font
    UINT_PTR itemData = 0;
};
using LPMEASUREITEMSTRUCT = MEASUREITEMSTRUCT*;

inline constexpr UINT ODT_LISTBOX = 2;
inline constexpr UINT ODT_COMBOBOX = 3;
inline constexpr UINT ODA_DRAWENTIRE = 1;
inline constexpr UINT ODS_SELECTED = 0x0001;
inline constexpr UINT ODS_DISABLED = 0x0004;
inline constexpr UINT ODS_FOCUS = 0x0010;
inline constexpr UINT ODS_COMBOBOXEDIT = 0x1000;

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using HWND = kortavin::HWND;
using WPARAM = kortavin::WPARAM;
using LPARAM = kortavin::LPARAM;
using LRESULT = kortavin::LRESULT;
using UINT_PTR = kortavin::UINT_PTR;
using SHORT = kortavin::SHORT;
using kortavin::DRAWITEMSTRUCT;
using kortavin::HIWORD;
using kortavin::LOWORD;
using kortavin::LPDRAWITEMSTRUCT;
using kortavin::LPMEASUREITEMSTRUCT;
using kortavin::MakePointParam;
using kortavin::MakeWParam;
using kortavin::MEASUREITEMSTRUCT;
using kortavin::NMHDR;
using kortavin::ODA_DRAWENTIRE;
using kortavin::ODS_COMBOBOXEDIT;
using kortavin::ODS_DISABLED;
using kortavin::ODS_FOCUS;
using kortavin::ODS_SELECTED;
using kortavin::ODT_COMBOBOX;
using kortavin::ODT_LISTBOX;
using kortavin::PointOfParam;
#endif
