#include "kortavin/grid/geometry.h"

#include <algorithm>

#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// Where the cells of a grid lie.

namespace {

constexpr int kLargestSize = 1 << 24;  // no window is as large, and positions can be added to

}  // namespace

using grid::AxisView;

AxisView CGridCtrl::RowView() const {
    CRect client;
    GetClientRect(&client);
    return {m_rows, m_fixedRowCount, GetScrollPosition(SB_VERT), client.bottom};
}

AxisView CGridCtrl::ColumnView() const {
    CRect client;
    GetClientRect(&client);
    return {m_columns, m_fixedColCount, GetScrollPosition(SB_HORZ), client.right};
}

int CGridCtrl::GetFixedRowsHeight() const {
    return RowView().FixedSize();
}

int CGridCtrl::GetFixedColumnsWidth() const {
    return ColumnView().FixedSize();
}

CGridPos CGridCtrl::GetFirstScrollCell() const {
    return {RowView().First(), ColumnView().First()};
}

CGridRange CGridCtrl::GetVisibleScrollRange(CRect* pRect) const {
    const AxisView rows = RowView();
    const AxisView columns = ColumnView();
    const auto lastRow = rows.LastVisible();
    const auto lastCol = columns.LastVisible();
    if (pRect != nullptr)
        *pRect = CRect(0, 0, lastCol.end, lastRow.end);
    return {rows.First(), columns.First(), lastRow.index, lastCol.index};
}

CGridRange CGridCtrl::GetFullyVisibleScrollRange() const {
    const AxisView rows = RowView();
    const AxisView columns = ColumnView();
    return {rows.First(), columns.First(), rows.LastFullyVisible(), columns.LastFullyVisible()};
}

BOOL CGridCtrl::GetCellTopLeft(int row, int col, CPoint* p) const {
    const auto y = IsValid(row, col) ? RowView().StartOf(row) : std::nullopt;
    const auto x = y ? ColumnView().StartOf(col) : std::nullopt;
    if (!x)
        return FALSE;
    *p = CPoint(*x, *y);
    return TRUE;
}

BOOL CGridCtrl::GetCellRect(int row, int col, CRect* r) const {
    CPoint corner;
    if (!GetCellTopLeft(row, col, &corner))
        return FALSE;
    *r = CRect(corner.x, corner.y, corner.x + m_columns.SizeAt(col) - 1, corner.y + m_rows.SizeAt(row) - 1);
    return TRUE;
}

CGridPos CGridCtrl::HitTestCell(CPoint pt, BOOL bAllowFixedCellCheck) const {
    return {RowView().HitTest(pt.y, bAllowFixedCellCheck != FALSE),
            ColumnView().HitTest(pt.x, bAllowFixedCellCheck != FALSE)};
}

BOOL CGridCtrl::IsCellVisible(int row, int col) const {
    CPoint corner;
    CRect client;
    GetClientRect(&client);
    return m_hWnd != nullptr && GetCellTopLeft(row, col, &corner) && corner.x < client.right &&
           corner.y < client.bottom;
}

int CGridCtrl::GetRowHeight(int row) const {
    return row >= 0 && row < GetRowCount() ? m_rows.SizeAt(row) : -1;
}

int CGridCtrl::GetColumnWidth(int col) const {
    return col >= 0 && col < GetColumnCount() ? m_columns.SizeAt(col) : -1;
}

BOOL CGridCtrl::SetRowHeight(int row, int height) {
    if (GetRowHeight(row) < 0 || height < 0)
        return FALSE;
    m_rows.SetSize(row, std::min(height, kLargestSize));
    UpdateScrollBars();
    return TRUE;
}

BOOL CGridCtrl::SetColumnWidth(int col, int width) {
    if (GetColumnWidth(col) < 0 || width < 0)
        return FALSE;
    m_columns.SetSize(col, std::min(width, kLargestSize));
    UpdateScrollBars();
    return TRUE;
}

BOOL CGridCtrl::IsOnColumnBorder(CPoint pt) const {
    if (pt.y >= GetFixedRowsHeight())
        return FALSE;
    const CGridPos cell = HitTestCell(pt);
    CPoint corner;
    return GetCellTopLeft(cell.row, cell.col, &corner) &&
           IsNearBorder(pt.x - corner.x, m_columns.SizeAt(cell.col), cell.col);
}

BOOL CGridCtrl::IsOnRowBorder(CPoint pt) const {
    if (pt.x >= GetFixedColumnsWidth())
        return FALSE;
    const CGridPos cell = HitTestCell(pt);
    CPoint corner;
    return GetCellTopLeft(cell.row, cell.col, &corner) &&
           IsNearBorder(pt.y - corner.y, m_rows.SizeAt(cell.row), cell.row);
}

// The first row or column cannot be resized by the border before it.
bool CGridCtrl::IsNearBorder(int distanceFromStart, int size, int index) const {
    return (distanceFromStart <= m_resizeCaptureRange && index != 0) ||
           size - distanceFromStart <= m_resizeCaptureRange;
}

}  // namespace kortavin
