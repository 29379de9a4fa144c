#pragma once

#include <array>
#include <memory>
#include <optional>
#include <span>

#include "kortavin/base/export.h"
#include "kortavin/base/types.h"

namespace kortavin {

namespace window {
class NativeFont;
}

// The description of a font: 60 bytes, so that cells can share and compare it.
struct LOGFONT {
    LONG lfHeight = 0;  // below 0: the em height in pixels; above: the cell height; 0: a default
    LONG lfWidth = 0;
    LONG lfEscapement = 0;
    LONG lfOrientation = 0;
    LONG lfWeight = 0;  // 400 normal, 600 semi-bold, 700 bold; 0: normal
    BYTE lfItalic = 0;
    BYTE lfUnderline = 0;
    BYTE lfStrikeOut = 0;
    BYTE lfCharSet = 0;
    BYTE lfOutPrecision = 0;
    BYTE lfClipPrecision = 0;
    BYTE lfQuality = 0;
    BYTE lfPitchAndFamily = 0;
    std::array<char, 32> lfFaceName{};  // GBK, ended by a zero byte

    friend bool operator==(const LOGFONT&, const LOGFONT&) = default;
};
static_assert(sizeof(LOGFONT) == 60);

inline constexpr LONG FW_NORMAL = 400;
inline constexpr LONG FW_SEMIBOLD = 600;

// Measures of a font in pixels. The height is ascent plus descent.
struct TEXTMETRIC {
    LONG tmHeight = 0;
    LONG tmAscent = 0;
    LONG tmDescent = 0;
    LONG tmInternalLeading = 0;
    LONG tmExternalLeading = 0;
    LONG tmAveCharWidth = 0;
};

// Pen styles.
inline constexpr int PS_SOLID = 0;
inline constexpr int PS_DASH = 1;
inline constexpr int PS_DOT = 2;
inline constexpr int PS_DASHDOT = 3;
inline constexpr int PS_DASHDOTDOT = 4;
inline constexpr int PS_NULL = 5;

// Hatch styles.
inline constexpr int HS_HORIZONTAL = 0;
inline constexpr int HS_VERTICAL = 1;
inline constexpr int HS_FDIAGONAL = 2;  // falling from upper left to lower right
inline constexpr int HS_BDIAGONAL = 3;  // rising from lower left to upper right
inline constexpr int HS_CROSS = 4;
inline constexpr int HS_DIAGCROSS = 5;

namespace window {

// 8 by 8 pixels, repeated from the client area's origin. Row 0 is the upper one; bit 7 of a row is its left
// pixel; a set bit is painted in the hatch's colour.
using HatchPattern = std::array<BYTE, 8>;

// Nothing for a number that is no hatch style.
KORTAVIN_API std::optional<HatchPattern> HatchPatternOf(int hatchStyle);

// Lengths in pixels of dash, gap, dash, gap...; empty for a solid line. Only lines one pixel wide are dashed.
KORTAVIN_API std::span<const int> DashesOf(int penStyle);

}  // namespace window

// How lines and outlines are drawn. Width 0 means one pixel. A wider pen is solid whatever its style.
class KORTAVIN_API CPen {
  public:
    CPen(int style, int width, COLORREF color) : m_style(style), m_width(width), m_color(color) {}

    int GetStyle() const { return m_style; }
    int GetWidth() const { return m_width < 1 ? 1 : m_width; }
    COLORREF GetColor() const { return m_color; }

  private:
    int m_style;
    int m_width;
    COLORREF m_color;
};

// How areas are filled: solid, hatched, or not at all (the hollow brush, and a hatch style that does not
// exist).
class KORTAVIN_API CBrush {
  public:
    CBrush() = default;  // hollow
    explicit CBrush(COLORREF color) : m_solid(true), m_color(color) {}
    CBrush(int hatchStyle, COLORREF color) : m_hatch(window::HatchPatternOf(hatchStyle)), m_color(color) {}

    bool IsHollow() const { return !m_solid && !m_hatch; }
    const std::optional<window::HatchPattern>& GetHatch() const { return m_hatch; }
    COLORREF GetColor() const { return m_color; }

  private:
    bool m_solid = false;
    std::optional<window::HatchPattern> m_hatch;
    COLORREF m_color = 0;
};

// A font made from its description by the toolkit, which is loaded if need be (CResourceException where none
// can be had). Equal descriptions share what the toolkit made.
class KORTAVIN_API CFont {
  public:
    CFont() = default;
    explicit CFont(const LOGFONT& description);
    BOOL CreateFontIndirect(const LOGFONT* description);  // FALSE for null
    void DeleteObject();

    const LOGFONT& GetLogFont() const { return m_description; }
    // Null until the font was created.
    const window::NativeFont* GetNative() const { return m_native.get(); }

  private:
    LOGFONT m_description;
    std::shared_ptr<const window::NativeFont> m_native;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CBrush;
using kortavin::CFont;
using kortavin::CPen;
using kortavin::FW_NORMAL;
using kortavin::FW_SEMIBOLD;
using kortavin::HS_BDIAGONAL;
using kortavin::HS_CROSS;
using kortavin::HS_DIAGCROSS;
using kortavin::HS_FDIAGONAL;
using kortavin::HS_HORIZONTAL;
using kortavin::HS_VERTICAL;
using kortavin::LOGFONT;
using kortavin::PS_DASH;
using kortavin::PS_DASHDOT;
using kortavin::PS_DASHDOTDOT;
using kortavin::PS_DOT;
using kortavin::PS_NULL;
using kortavin::PS_SOLID;
using kortavin::TEXTMETRIC;
#endif
