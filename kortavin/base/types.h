#pragma once

#include <cstdint>

namespace kortavin {

// The framework's own scalar names. Widths are fixed, so records and signatures mean the same everywhere.
#ifndef BOOL  // which some database headers define
using BOOL = std::int32_t;
#endif
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using UINT = std::uint32_t;
using LONG = std::int32_t;
using DWORD = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using LPCSTR = const char*;

// Many C libraries define these.
#ifndef TRUE
inline constexpr BOOL TRUE = 1;
#endif
#ifndef FALSE
inline constexpr BOOL FALSE = 0;
#endif

// A colour as 0x00BBGGRR: red in the low byte, then green, then blue.
using COLORREF = std::uint32_t;

constexpr COLORREF RGB(BYTE red, BYTE green, BYTE blue) {
    return COLORREF{red} | COLORREF{green} << 8 | COLORREF{blue} << 16;
}
constexpr BYTE GetRValue(COLORREF color) {
    return static_cast<BYTE>(color);
}
constexpr BYTE GetGValue(COLORREF color) {
    return static_cast<BYTE>(color >> 8);
}
constexpr BYTE GetBValue(COLORREF color) {
    return static_cast<BYTE>(color >> 16);
}

// number * numerator / denominator over a 64-bit product, rounded half away from zero.
// -1 when the denominator is 0 or the result does not fit in 32 bits.
constexpr int MulDiv(int number, int numerator, int denominator) {
    if (denominator == 0)
        return -1;
    const LONGLONG product = LONGLONG{number} * numerator;
    const LONGLONG divisor = denominator;
    const LONGLONG half = (divisor < 0 ? -divisor : divisor) / 2;
    const LONGLONG result = (product < 0 ? product - half : product + half) / divisor;
    return result < INT32_MIN || result > INT32_MAX ? -1 : static_cast<int>(result);
}

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
#ifndef BOOL
using BOOL = kortavin::BOOL;
#endif
using BYTE = kortavin::BYTE;
using WORD = kortavin::WORD;
using UINT = kortavin::UINT;
using LONG = kortavin::LONG;
using DWORD = kortavin::DWORD;
using LONGLONG = kortavin::LONGLONG;
using ULONGLONG = kortavin::ULONGLONG;
using LPCSTR = kortavin::LPCSTR;
using COLORREF = kortavin::COLORREF;
#ifndef TRUE
using kortavin::TRUE;
#endif
#ifndef FALSE
using kortavin::FALSE;
#endif
using kortavin::GetBValue;
using kortavin::GetGValue;
using kortavin::GetRValue;
using kortavin::MulDiv;
using kortavin::RGB;
#endif
