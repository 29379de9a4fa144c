#include "kortavin/symbology/selectcolor.h"

#include "kortavin/symbology/picker.h"

namespace kortavin {

using namespace symbology;
using namespace window;

CSelectColor::CSelectColor() = default;
CSelectColor::~CSelectColor() = default;

const MessageMap* CSelectColor::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {OnMessage<WM_PAINT, &CSelectColor::OnPaint>(),
                                                OnMessage<WM_LBUTTONDOWN, &CSelectColor::OnLButtonDown>()};
    static const MessageMap map{CStatic::GetMessageMap(), kEntries};
    return &map;
}

void CSelectColor::SetColor(COLORREF color) {
    m_Color = color;
    RepaintParent(*this);
}

void CSelectColor::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    const CBrush brush(m_Color);
    dc.FillRect(client, &brush);
}

void CSelectColor::OnLButtonDown(UINT, CPoint) {
    const WindowGuard guard(*this);
    if (const auto chosen = ChooseColor(m_Color); chosen && guard.IsThere())
        SetColor(*chosen);
    if (guard.IsThere())
        Default();
}

}  // namespace kortavin
