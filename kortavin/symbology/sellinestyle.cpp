#include "kortavin/symbology/sellinestyle.h"

#include "kortavin/symbology/picker.h"

namespace kortavin {

using namespace symbology;
using namespace window;
using base::TextId;

namespace {

// The values are pen styles.
constexpr PickerItem kStyles[] = {
    {TextId::LineSolid, PS_SOLID},
    {TextId::LineDash, PS_DASH},
    {TextId::LineDot, PS_DOT},
    {TextId::LineDashDot, PS_DASHDOT},
    {TextId::LineDashDotDot, PS_DASHDOTDOT},
};
constexpr COLORREF kLineColor = RGB(0, 0, 0);
constexpr COLORREF kSpaceColor = RGB(255, 255, 255);
constexpr int kMargin = 2;  // pixels

void DrawLine(CDC& dc, const CRect& rect, int penStyle) {
    const int y = rect.bottom - (rect.bottom - rect.top) / 2;
    CPen pen(penStyle, 1, kLineColor);
    const SelectionGuard guard(dc);
    dc.SelectObject(&pen);
    dc.SetBkMode(OPAQUE);
    dc.SetBkColor(kSpaceColor);
    const CBrush white(kSpaceColor);
    dc.FillRect(rect, &white);
    const CPoint ends[] = {{rect.left + kMargin, y}, {rect.right - kMargin, y}};
    dc.Polyline(ends);
}

}  // namespace

CSelLineStyle::CSelLineStyle() = default;
CSelLineStyle::~CSelLineStyle() = default;

const MessageMap* CSelLineStyle::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {OnReflected<CBN_SELCHANGE, &CSelLineStyle::OnSelchange>()};
    static const MessageMap map{CComboBox::GetMessageMap(), kEntries};
    return &map;
}

void CSelLineStyle::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) {
    EnsureItems(*this, kStyles);
    const PickerItem* style = FindItem(kStyles, static_cast<int>(lpDrawItemStruct->itemID));
    DrawLine(*lpDrawItemStruct->hDC, lpDrawItemStruct->rcItem, style != nullptr ? style->value : PS_SOLID);
}

void CSelLineStyle::SetStyle(int nStyle) {
    m_Style = SelectItem(*this, kStyles, nStyle);
}

void CSelLineStyle::OnSelchange() {
    m_Style = SelectedItem(*this);
}

}  // namespace kortavin
