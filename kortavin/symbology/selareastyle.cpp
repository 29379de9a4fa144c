#include "kortavin/symbology/selareastyle.h"

#include "kortavin/symbology/picker.h"

namespace kortavin {

using namespace symbology;
using namespace window;
using base::TextId;

namespace {

constexpr int kSolid = -1;  // no hatch

// The values are hatch styles.
constexpr PickerItem kStyles[] = {
    {TextId::AreaHorizontal, HS_HORIZONTAL},
    {TextId::AreaVertical, HS_VERTICAL},
    {TextId::AreaFallingDiagonal, HS_FDIAGONAL},
    {TextId::AreaRisingDiagonal, HS_BDIAGONAL},
    {TextId::AreaCross, HS_CROSS},
    {TextId::AreaDiagonalCross, HS_DIAGCROSS},
    {TextId::AreaSolid, kSolid},
};

CBrush BrushOf(int number, COLORREF color) {
    const PickerItem* style = FindItem(kStyles, number);
    if (style == nullptr)
        return {};
    return style->value == kSolid ? CBrush(color) : CBrush(style->value, color);
}

}  // namespace

CSelAreaStyle::CSelAreaStyle() = default;
CSelAreaStyle::~CSelAreaStyle() = default;

const MessageMap* CSelAreaStyle::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        OnReflected<CBN_SELCHANGE, &CSelAreaStyle::OnSelchange>(),
        OnMessage<WM_LBUTTONDOWN, &CSelAreaStyle::OnButtonDown>(),
        OnMessage<WM_RBUTTONDOWN, &CSelAreaStyle::OnButtonDown>(),
    };
    static const MessageMap map{CComboBox::GetMessageMap(), kEntries};
    return &map;
}

void CSelAreaStyle::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) {
    EnsureItems(*this, kStyles);
    CDC& dc = *lpDrawItemStruct->hDC;
    const CBrush brush = BrushOf(static_cast<int>(lpDrawItemStruct->itemID), m_Color);
    dc.SetBkMode(OPAQUE);
    dc.SetBkColor(m_BGColor);
    dc.FillRect(lpDrawItemStruct->rcItem, &brush);
}

void CSelAreaStyle::SetStyle(int nStyle) {
    m_Style = SelectItem(*this, kStyles, nStyle);
}

void CSelAreaStyle::SetColor(COLORREF color) {
    m_Color = color;
    RepaintParent(*this);
}

void CSelAreaStyle::SetBGColor(COLORREF color) {
    m_BGColor = color;
    RepaintParent(*this);
}

void CSelAreaStyle::SetOutLineColor(COLORREF color) {
    m_OutLineColor = color;
    RepaintParent(*this);
}

void CSelAreaStyle::OnSelchange() {
    m_Style = SelectedItem(*this);
}

void CSelAreaStyle::OnButtonDown(UINT, CPoint) {
    Default();
}

}  // namespace kortavin
