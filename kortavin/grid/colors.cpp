#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/metrics.h"

namespace kortavin {

// Appearance, and the desktop's colours that it follows.

void CGridCtrl::ReadSystemColors() {
    m_sysWindowText = GetSysColor(COLOR_WINDOWTEXT);
    m_sysWindow = GetSysColor(COLOR_WINDOW);
    m_sysBtnFace = GetSysColor(COLOR_BTNFACE);
    m_sysBtnShadow = GetSysColor(COLOR_BTNSHADOW);
}

// A colour that the host chose stays; one that is still the system's follows it.
void CGridCtrl::OnSysColorChange() {
    const auto follow = [](COLORREF& color, COLORREF former, int index) {
        if (color == former)
            color = GetSysColor(index);
    };
    follow(m_textColour, m_sysWindowText, COLOR_WINDOWTEXT);
    follow(m_fixedTextColour, m_sysWindowText, COLOR_WINDOWTEXT);
    follow(m_textBkColour, m_sysWindow, COLOR_WINDOW);
    follow(m_bkColour, m_sysBtnShadow, COLOR_BTNSHADOW);
    follow(m_fixedBkColour, m_sysBtnFace, COLOR_BTNFACE);
    ReadSystemColors();
    InvalidateIfDrawn();
}

void CGridCtrl::InvalidateIfDrawn() {
    if (IsDrawn())
        Invalidate();
}

void CGridCtrl::SetAppearance(COLORREF& field, COLORREF color) {
    field = color;
    InvalidateIfDrawn();
}

void CGridCtrl::SetTextColor(COLORREF color) {
    SetAppearance(m_textColour, color);
}

void CGridCtrl::SetTextBkColor(COLORREF color) {
    SetAppearance(m_textBkColour, color);
}

void CGridCtrl::SetBkColor(COLORREF color) {
    SetAppearance(m_bkColour, color);
}

void CGridCtrl::SetFixedCellTextColor(COLORREF color) {
    SetAppearance(m_fixedTextColour, color);
}

void CGridCtrl::SetFixedCellBkColor(COLORREF color) {
    SetAppearance(m_fixedBkColour, color);
}

void CGridCtrl::SetGridColor(COLORREF color) {
    SetAppearance(m_gridColour, color);
}

void CGridCtrl::SetGridLines(int lines) {
    m_gridLines = lines;
    InvalidateIfDrawn();
}

void CGridCtrl::SetListMode(BOOL on) {
    m_listMode = on;
    InvalidateIfDrawn();
}

void CGridCtrl::SetRedraw(BOOL bAllowDraw, BOOL bResetScrollBars) {
    if (bAllowDraw && !m_allowDraw)
        Invalidate();
    m_allowDraw = bAllowDraw;
    if (bResetScrollBars)
        UpdateScrollBars();
}

void CGridCtrl::SetImageList(CImageList* list) {
    m_imageList = list;
    InvalidateIfDrawn();
}

}  // namespace kortavin
