#include "kortavin/window/metrics.h"

#include <string_view>

#include "kortavin/window/toolkit.h"

namespace kortavin {

COLORREF GetSysColor(int index) {
    const auto* const toolkit = window::CurrentToolkit();
    return toolkit != nullptr ? toolkit->SystemColor(index) : window::PlainColor(index);
}

int GetSystemMetrics(int index) {
    constexpr int kPlainBarWidth = 17;
    if (const auto* const toolkit = window::CurrentToolkit(); toolkit != nullptr)
        return toolkit->SystemMetric(index);
    return index == SM_CXVSCROLL || index == SM_CYHSCROLL ? kPlainBarWidth : 0;
}

namespace window {

COLORREF PlainColor(int index) {
    switch (index) {
        case COLOR_WINDOW:
        case COLOR_HIGHLIGHTTEXT:
        case COLOR_3DHIGHLIGHT:
            return RGB(255, 255, 255);
        case COLOR_HIGHLIGHT:
            return RGB(0, 0, 128);
        case COLOR_BTNFACE:
            return RGB(192, 192, 192);
        case COLOR_BTNSHADOW:
        case COLOR_GRAYTEXT:
            return RGB(128, 128, 128);
        default:
            return 0;
    }
}

LOGFONT MessageBoxFont() {
    if (const auto* const toolkit = CurrentToolkit(); toolkit != nullptr)
        return toolkit->MessageBoxFont();
    LOGFONT description;
    description.lfHeight = -12;
    description.lfWeight = FW_NORMAL;
    constexpr std::string_view kFace = "Arial";
    kFace.copy(description.lfFaceName.data(), kFace.size());
    return description;
}

}  // namespace window

}  // namespace kortavin
