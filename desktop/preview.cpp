#include "desktop/preview.h"

#include <array>

#include "kortavin/window/metrics.h"

namespace kortavin::desktop {
namespace {

constexpr COLORREF kPaper = 0xFFFFFF;
constexpr COLORREF kCaption = 0x606060;
constexpr COLORREF kFold = 0xD0D0D0;  // between the cells
constexpr int kSolidArea = 6;         // the area styles before it are hatch styles
constexpr int kHundredthsPerInch = 2540;

CPoint CentreOf(const CRect& rect) {
    return {rect.left + rect.Width() / 2, rect.top + rect.Height() / 2};
}

void DrawCaption(CDC& dc, const CRect& cell, std::string_view utf8) {
    CRect place = cell;
    place.DeflateRect(8, 6);
    dc.SetTextColor(kCaption);
    dc.SetBkMode(TRANSPARENT);
    if (const auto text = CString::FromUtf8(utf8))
        dc.DrawText(text->View(), &place, DT_SINGLELINE | DT_NOPREFIX);
}

}  // namespace

const window::MessageMap* Preview::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {window::OnMessage<WM_PAINT, &Preview::OnPaint>()};
    static const window::MessageMap kMap{CWnd::GetMessageMap(), kEntries};
    return &kMap;
}

void Preview::Show(const Symbols& symbols) {
    if (symbols == m_symbols)
        return;
    m_symbols = symbols;
    RedrawWindow();
}

void Preview::OnPaint() {
    struct Cell {
        const char* caption;
        void (Preview::*draw)(CDC&, const CRect&) const;
    };
    static constexpr std::array<Cell, 4> kCells{{{"线", &Preview::DrawLine},
                                                 {"面", &Preview::DrawArea},
                                                 {"点", &Preview::DrawPoint},
                                                 {"文字", &Preview::DrawTextSymbol}}};
    CPaintDC dc(this);
    CRect client;
    GetClientRect(&client);
    dc.FillSolidRect(client, kPaper);
    const CSize size{client.Width() / 2, client.Height() / 2};
    for (int i = 0; i < 4; ++i) {
        const CRect cell(CPoint{i % 2 * size.cx, i / 2 * size.cy}, size);
        const int saved = dc.SaveDC();
        dc.IntersectClipRect(cell);
        DrawCaption(dc, cell, kCells[i].caption);
        (this->*kCells[i].draw)(dc, cell);
        dc.RestoreDC(saved);
    }
    dc.FillSolidRect({size.cx, 0, size.cx + 1, client.bottom}, kFold);
    dc.FillSolidRect({0, size.cy, client.right, size.cy + 1}, kFold);
}

void Preview::DrawLine(CDC& dc, const CRect& cell) const {
    CPen pen(m_symbols.lineStyle, 1, m_symbols.lineColor);
    CPen* former = dc.SelectObject(&pen);
    dc.SetBkMode(OPAQUE);
    dc.SetBkColor(kPaper);
    const int width = cell.Width(), middle = CentreOf(cell).y, rise = cell.Height() / 6;
    dc.Polyline(std::array{
        CPoint{cell.left + width / 8, middle + rise}, CPoint{cell.left + width * 3 / 8, middle - rise},
        CPoint{cell.left + width * 5 / 8, middle + rise}, CPoint{cell.right - width / 8, middle - rise}});
    dc.SelectObject(former);
}

void Preview::DrawArea(CDC& dc, const CRect& cell) const {
    CBrush brush = m_symbols.areaStyle == kSolidArea ? CBrush(m_symbols.areaColor)
                                                     : CBrush(m_symbols.areaStyle, m_symbols.areaColor);
    CPen pen(PS_SOLID, 1, m_symbols.areaOutline);
    CBrush* formerBrush = dc.SelectObject(&brush);
    CPen* formerPen = dc.SelectObject(&pen);
    dc.SetBkMode(OPAQUE);
    dc.SetBkColor(m_symbols.areaBackground);
    CRect area = cell;
    area.DeflateRect(cell.Width() / 6, cell.Height() / 4);
    dc.Rectangle(area);
    dc.SelectObject(formerPen);
    dc.SelectObject(formerBrush);
}

void Preview::DrawPoint(CDC& dc, const CRect& cell) const {
    CBrush brush(m_symbols.pointColor);
    CPen pen(PS_SOLID, 1, m_symbols.pointOutline);
    CBrush* formerBrush = dc.SelectObject(&brush);
    CPen* formerPen = dc.SelectObject(&pen);
    const int rx = MulDiv(m_symbols.pointSize, dc.GetDeviceCaps(LOGPIXELSX), kHundredthsPerInch);
    const int ry = MulDiv(m_symbols.pointSize, dc.GetDeviceCaps(LOGPIXELSY), kHundredthsPerInch);
    const CPoint centre = CentreOf(cell);
    dc.Ellipse({centre.x - rx, centre.y - ry, centre.x + rx, centre.y + ry});
    dc.SelectObject(formerPen);
    dc.SelectObject(formerBrush);
}

void Preview::DrawTextSymbol(CDC& dc, const CRect& cell) const {
    LOGFONT description = window::MessageBoxFont();
    description.lfHeight = -cell.Height() / 3;
    CFont font(description);
    CFont* former = dc.SelectObject(&font);
    dc.SetTextColor(m_symbols.textColor);
    dc.SetBkMode(TRANSPARENT);
    CRect place = cell;
    dc.DrawText(m_symbols.text.View(), &place, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
    dc.SelectObject(former);
}

}  // namespace kortavin::desktop
