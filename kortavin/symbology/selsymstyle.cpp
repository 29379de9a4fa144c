#include "kortavin/symbology/selsymstyle.h"

#include <algorithm>

#include "kortavin/symbology/picker.h"

namespace kortavin {

using namespace symbology;
using namespace window;
using base::TextId;

namespace {

// The values are radii in hundredths of a millimetre, in rising order.
constexpr PickerItem kSizes[] = {
    {TextId::SymbolTiny, 20},   {TextId::SymbolSmall, 50}, {TextId::SymbolMedium, 100},
    {TextId::SymbolLarge, 150}, {TextId::SymbolHuge, 200},
};
constexpr int kOtherSize = 50;  // of an item number that has no row
constexpr int kUnitsPerInch = 2540;

// Pixels.
constexpr int kItemWidth = 400;
constexpr int kItemHeight = 20;
constexpr int kFieldHeight = 24;
constexpr int kFrameMargin = 2;
constexpr int kSwatchWidth = 10;
constexpr int kSwatchMargin = 4;  // above and below
constexpr int kSwatchGap = 5;

int SizeOf(int number) {
    const PickerItem* item = FindItem(kSizes, number);
    return item != nullptr ? item->value : kOtherSize;
}

void DrawSwatch(CDC& dc, const CRect& swatch, COLORREF color) {
    CRect frame = swatch;
    frame.InflateRect(1, 1);
    dc.Rectangle(frame);
    const CBrush brush(color);
    dc.FillRect(swatch, &brush);
}

}  // namespace

CSelSymStyle::CSelSymStyle() = default;
CSelSymStyle::~CSelSymStyle() = default;

const MessageMap* CSelSymStyle::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {OnReflected<CBN_SELCHANGE, &CSelSymStyle::OnSelchange>(),
                                                OnMessage<WM_LBUTTONDOWN, &CSelSymStyle::OnLButtonDown>()};
    static const MessageMap map{CComboBox::GetMessageMap(), kEntries};
    return &map;
}

void CSelSymStyle::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) {
    EnsureItems(*this, kSizes);
    CDC& dc = *lpDrawItemStruct->hDC;
    const CRect& rect = lpDrawItemStruct->rcItem;
    const bool isField = (lpDrawItemStruct->itemState & ODS_COMBOBOXEDIT) != 0;
    if (isField)
        DrawSwatches(dc, rect);
    DrawSymbol(dc, rect, SizeOf(static_cast<int>(lpDrawItemStruct->itemID)), !isField);
}

void CSelSymStyle::DrawSwatches(CDC& dc, const CRect& field) {
    const int left = field.left + 2;
    m_ColorRect.SetRect(left, field.top + kSwatchMargin, left + kSwatchWidth, field.bottom - kSwatchMargin);
    m_BGColorRect = m_ColorRect;
    m_BGColorRect.OffsetRect(kSwatchWidth + kSwatchGap, 0);

    const SelectionGuard guard(dc);
    dc.SelectStockObject(BLACK_PEN);
    DrawSwatch(dc, m_ColorRect, m_Color);
    DrawSwatch(dc, m_BGColorRect, m_BGColor);
}

void CSelSymStyle::DrawSymbol(CDC& dc, const CRect& rect, int size, bool framed) const {
    const int rx = MulDiv(size, dc.GetDeviceCaps(LOGPIXELSX), kUnitsPerInch);
    const int ry = MulDiv(size, dc.GetDeviceCaps(LOGPIXELSY), kUnitsPerInch);
    dc.SetBkMode(OPAQUE);
    dc.SetBkColor(RGB(255, 255, 255));

    CPen pen(PS_SOLID, 0, m_BGColor);
    CBrush brush(m_Color);
    const SelectionGuard guard(dc);
    dc.SelectObject(&pen);
    if (framed) {
        CRect frame = rect;
        frame.DeflateRect(kFrameMargin, kFrameMargin);
        dc.Rectangle(frame);
    }
    const CPoint center(rect.left + (rect.right - rect.left) / 2, rect.top + (rect.bottom - rect.top) / 2);
    dc.SelectObject(&brush);
    dc.Ellipse({center.x - rx, center.y - ry, center.x + rx, center.y + ry});
}

void CSelSymStyle::MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItemStruct) {
    lpMeasureItemStruct->itemHeight = kItemHeight;
    lpMeasureItemStruct->itemWidth = kItemWidth;
    SetItemHeight(-1, kFieldHeight);
}

void CSelSymStyle::SetStyle(int nStyle) {
    m_Style = SelectItem(*this, kSizes, nStyle);
    m_Size = SizeOf(m_Style);
}

void CSelSymStyle::SetSize(int nSize) {
    const auto* largest = std::end(kSizes) - 1;
    const auto* found = std::ranges::lower_bound(kSizes, largest, nSize, {}, &PickerItem::value);
    SetStyle(static_cast<int>(found - kSizes));
}

void CSelSymStyle::SetColor(COLORREF color) {
    m_Color = color;
    RepaintParent(*this);
}

void CSelSymStyle::SetBGColor(COLORREF color) {
    m_BGColor = color;
    RepaintParent(*this);
}

void CSelSymStyle::OnSelchange() {
    m_Style = SelectedItem(*this);
    m_Size = SizeOf(m_Style);
}

void CSelSymStyle::OnLButtonDown(UINT, CPoint point) {
    const bool inColor = m_ColorRect.PtInRect(point);
    if (!inColor && !m_BGColorRect.PtInRect(point)) {
        Default();
        return;
    }
    const WindowGuard guard(*this);
    if (const auto chosen = ChooseColor(m_Color); chosen && guard.IsThere()) {
        (inColor ? m_Color : m_BGColor) = *chosen;
        RedrawWindow(nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
    }
}

}  // namespace kortavin
