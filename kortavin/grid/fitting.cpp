#include <algorithm>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

// Sizes that follow the cells' contents or the window.

using grid::Axis;

namespace {

// Adds the same to every size, and the remainder in single pixels to the first ones.
void Distribute(Axis& axis, LONGLONG difference) {
    const int count = axis.Count();
    if (count < 1)
        return;
    const int share = static_cast<int>(difference / count);
    const int rest = static_cast<int>(difference % count);
    for (int i = 0; i < count; ++i) {
        const int single = i < std::abs(rest) ? (rest > 0 ? 1 : -1) : 0;
        axis.SetSize(i, std::max(axis.SizeAt(i) + share + single, 0));
    }
}

}  // namespace

CSize CGridCtrl::MeasureCell(int row, int col, CDC*) {
    const CFont& font = FontFor(row, col, IsCellFixed(row, col) != FALSE);
    if (font.GetNative() == nullptr)
        return {};
    const CString text = GetItemText(row, col);
    const CSize image = ImageSizeOf(row, col);
    const int height = font.GetNative()->Metrics().tmHeight + 2 * m_margin;
    return {font.GetNative()->Width(text.View()) + 4 * m_margin + image.cx, std::max(height, image.cy)};
}

int CGridCtrl::LargestWidth(int col, CDC& dc) {
    int largest = 0;
    for (int row = 0; row < GetRowCount(); ++row)
        largest = std::max(largest, MeasureCell(row, col, &dc).cx);
    return largest;
}

int CGridCtrl::LargestHeight(int row, CDC& dc) {
    int largest = 0;
    for (int col = 0; col < GetColumnCount(); ++col)
        largest = std::max(largest, MeasureCell(row, col, &dc).cy);
    return largest;
}

BOOL CGridCtrl::FitColumnToText(int col) {
    if (GetColumnWidth(col) < 0 || m_hWnd == nullptr)
        return FALSE;
    CClientDC dc(this);
    return SetColumnWidth(col, LargestWidth(col, dc));
}

BOOL CGridCtrl::FitRowToText(int row) {
    if (GetRowHeight(row) < 0 || m_hWnd == nullptr)
        return FALSE;
    CClientDC dc(this);
    return SetRowHeight(row, LargestHeight(row, dc));
}

void CGridCtrl::FitColumnsToText() {
    for (int col = 0; col < GetColumnCount(); ++col)
        FitColumnToText(col);
}

void CGridCtrl::FitRowsToText() {
    for (int row = 0; row < GetRowCount(); ++row)
        FitRowToText(row);
}

// Each cell is measured once for both directions.
void CGridCtrl::FitToText() {
    if (m_hWnd == nullptr)
        return;
    CClientDC dc(this);
    std::vector<int> widths(static_cast<std::size_t>(GetColumnCount()));
    for (int row = 0; row < GetRowCount(); ++row) {
        int height = 0;
        for (int col = 0; col < GetColumnCount(); ++col) {
            const CSize size = MeasureCell(row, col, &dc);
            int& width = widths[static_cast<std::size_t>(col)];
            width = std::max(width, size.cx);
            height = std::max(height, size.cy);
        }
        m_rows.SetSize(row, height);
    }
    for (int col = 0; col < GetColumnCount(); ++col)
        m_columns.SetSize(col, widths[static_cast<std::size_t>(col)]);
    InvalidateIfDrawn();
    UpdateScrollBars();
}

void CGridCtrl::StretchColumnsToFit() {
    CRect client;
    GetClientRect(&client);
    if (m_hWnd != nullptr)
        Distribute(m_columns, client.Width() - m_columns.Total());
    InvalidateIfDrawn();
    UpdateScrollBars();
}

void CGridCtrl::StretchRowsToFit() {
    CRect client;
    GetClientRect(&client);
    if (m_hWnd != nullptr)
        Distribute(m_rows, client.Height() - m_rows.Total());
    InvalidateIfDrawn();
    UpdateScrollBars();
}

void CGridCtrl::StretchToFit() {
    StretchColumnsToFit();
    StretchRowsToFit();
    StretchColumnsToFit();
}

}  // namespace kortavin
