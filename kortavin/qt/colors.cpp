#include "kortavin/qt/colors.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <algorithm>

namespace kortavin::qt {
namespace {

struct SystemColorEntry {
    int index;
    QPalette::ColorGroup group;
    QPalette::ColorRole role;
};

constexpr SystemColorEntry kSystemColors[] = {
    {COLOR_WINDOW, QPalette::Active, QPalette::Base},
    {COLOR_WINDOWTEXT, QPalette::Active, QPalette::Text},
    {COLOR_HIGHLIGHT, QPalette::Active, QPalette::Highlight},
    {COLOR_HIGHLIGHTTEXT, QPalette::Active, QPalette::HighlightedText},
    {COLOR_BTNFACE, QPalette::Active, QPalette::Button},
    {COLOR_BTNSHADOW, QPalette::Active, QPalette::Dark},
    {COLOR_GRAYTEXT, QPalette::Disabled, QPalette::Text},
    {COLOR_BTNTEXT, QPalette::Active, QPalette::ButtonText},
    {COLOR_3DHIGHLIGHT, QPalette::Active, QPalette::Light},
    {COLOR_3DDKSHADOW, QPalette::Active, QPalette::Shadow},
};

}  // namespace

QColor ToQt(COLORREF color) {
    return QColor(GetRValue(color), GetGValue(color), GetBValue(color));
}

COLORREF FromQt(const QColor& color) {
    const auto part = [](int value) { return static_cast<BYTE>(value); };
    return RGB(part(color.red()), part(color.green()), part(color.blue()));
}

COLORREF SystemColor(int index) {
    const auto* entry = std::ranges::find(kSystemColors, index, &SystemColorEntry::index);
    return entry == std::end(kSystemColors)
               ? 0
               : FromQt(QApplication::palette().color(entry->group, entry->role));
}

int SystemMetric(int index) {
    const bool known = index == SM_CXVSCROLL || index == SM_CYHSCROLL;
    return known ? QApplication::style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
}

}  // namespace kortavin::qt
