#include "kortavin/window/gdi.h"

#include <utility>

#include "kortavin/window/fontcache.h"

namespace kortavin {

namespace window {

// The lines run through the middle, so that a small swatch shows them too.
std::optional<HatchPattern> HatchPatternOf(int hatchStyle) {
    switch (hatchStyle) {
        case HS_HORIZONTAL:
            return HatchPattern{0x00, 0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00};
        case HS_VERTICAL:
            return HatchPattern{0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08, 0x08};
        case HS_FDIAGONAL:
            return HatchPattern{0x80, 0x40, 0x20, 0x10, 0x08, 0x04, 0x02, 0x01};
        case HS_BDIAGONAL:
            return HatchPattern{0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80};
        case HS_CROSS:
            return HatchPattern{0x08, 0x08, 0x08, 0x08, 0xFF, 0x08, 0x08, 0x08};
        case HS_DIAGCROSS:
            return HatchPattern{0x81, 0x42, 0x24, 0x18, 0x18, 0x24, 0x42, 0x81};
        default:
            return std::nullopt;
    }
}

std::span<const int> DashesOf(int penStyle) {
    static constexpr int kDash[] = {18, 6};
    static constexpr int kDot[] = {3, 3};
    static constexpr int kDashDot[] = {9, 6, 3, 6};
    static constexpr int kDashDotDot[] = {9, 3, 3, 3, 3, 3};
    switch (penStyle) {
        case PS_DASH:
            return kDash;
        case PS_DOT:
            return kDot;
        case PS_DASHDOT:
            return kDashDot;
        case PS_DASHDOTDOT:
            return kDashDotDot;
        default:
            return {};
    }
}

}  // namespace window

CFont::CFont(const LOGFONT& description) {
    CreateFontIndirect(&description);
}

BOOL CFont::CreateFontIndirect(const LOGFONT* description) {
    if (description == nullptr)
        return FALSE;
    // Before anything changes: without a toolkit this throws.
    auto native = window::SharedFont(*description);
    m_description = *description;
    m_native = std::move(native);
    return m_native != nullptr;
}

void CFont::DeleteObject() {
    m_native.reset();
}

}  // namespace kortavin
