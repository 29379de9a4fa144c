#include <algorithm>

#include "grid/gridctrl.h"

// Counts, and the rows and columns that come and go with them. What can fail for lack of memory comes first,
// so that the grid stays whole.

CGridCell* CGridCtrl::CellAt(int row, int col) const {
    return IsValid(row, col) ? m_rowData[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)].get()
                             : nullptr;
}

BOOL CGridCtrl::IsValid(int row, int col) const {
    return row >= 0 && row < GetRowCount() && col >= 0 && col < GetColumnCount();
}

BOOL CGridCtrl::IsValid(const CGridRange& range) const {
    return range.minRow >= 0 && range.minCol >= 0 && range.maxRow < GetRowCount() &&
           range.maxCol < GetColumnCount() && range.minRow <= range.maxRow && range.minCol <= range.maxCol;
}

CGridCell* CGridCtrl::NewCell(int row, int col) {
    auto cell = std::make_unique<CGridCell>();
    const auto above = static_cast<std::size_t>(row) - 1;
    const auto place = static_cast<std::size_t>(col);
    if (row >= 1 && above < m_rowData.size() && place < m_rowData[above].size())
        cell->format = m_rowData[above][place]->format;
    return cell.release();
}

void CGridCtrl::ClearCell(CGridCell* cell, int row, int col) {
    SetItemState(row, col, 0);
    if (cell != nullptr)
        cell->text.Empty();
}

CGridCtrl::Row CGridCtrl::NewRow(int row) {
    Row cells;
    cells.reserve(static_cast<std::size_t>(GetColumnCount()));
    for (int col = 0; col < GetColumnCount(); ++col)
        cells.emplace_back(NewCell(row, col));
    return cells;
}

void CGridCtrl::ClearRow(int row) {
    for (int col = 0; col < GetColumnCount(); ++col)
        ClearCell(CellAt(row, col), row, col);
}

void CGridCtrl::ClearColumn(int col) {
    for (int row = 0; row < GetRowCount(); ++row)
        ClearCell(CellAt(row, col), row, col);
}

void CGridCtrl::FollowCounts() {
    if (!IsDrawn())
        return;
    UpdateScrollBars();
    Invalidate();
}

BOOL CGridCtrl::SetRowCount(int n) {
    if (n < 0)
        return FALSE;
    if (n == GetRowCount())
        return TRUE;
    m_fixedRowCount = std::min(m_fixedRowCount, n);
    if (m_focusCell.row >= n)
        SetFocusCell(-1, -1);
    const int former = GetRowCount();
    for (int row = n; row < former; ++row)
        ClearRow(row);
    if (n > former)
        m_rowData.reserve(static_cast<std::size_t>(n));
    m_rows.Resize(n, m_defaultRowHeight);
    m_rowData.resize(static_cast<std::size_t>(std::min(n, former)));
    for (int row = former; row < n; ++row)
        m_rowData.push_back(NewRow(row));
    FollowCounts();
    return TRUE;
}

BOOL CGridCtrl::SetColumnCount(int n) {
    if (n < 0)
        return FALSE;
    if (n == GetColumnCount())
        return TRUE;
    m_fixedColCount = std::min(m_fixedColCount, n);
    if (m_focusCell.col >= n)
        SetFocusCell(-1, -1);
    const int former = GetColumnCount();
    for (int col = n; col < former; ++col)
        ClearColumn(col);
    m_columns.Resize(n, m_defaultColWidth);
    for (int row = 0; row < GetRowCount(); ++row) {
        Row& cells = m_rowData[static_cast<std::size_t>(row)];
        cells.resize(static_cast<std::size_t>(std::min(n, former)));
        cells.reserve(static_cast<std::size_t>(n));
        for (int col = former; col < n; ++col)
            cells.emplace_back(NewCell(row, col));
    }
    FollowCounts();
    return TRUE;
}

BOOL CGridCtrl::SetFixedRowCount(int n) {
    if (n < 0 || (n > GetRowCount() && !SetRowCount(n)))
        return FALSE;
    if (m_focusCell.row < n)
        SetFocusCell(-1, -1);
    m_fixedRowCount = n;
    InvalidateIfDrawn();
    return TRUE;
}

BOOL CGridCtrl::SetFixedColumnCount(int n) {
    if (n < 0 || (n > GetColumnCount() && !SetColumnCount(n)))
        return FALSE;
    if (m_focusCell.col < n)
        SetFocusCell(-1, -1);
    m_fixedColCount = n;
    InvalidateIfDrawn();
    return TRUE;
}

int CGridCtrl::InsertRow(const char* heading, int nRow) {
    if (nRow >= 0 && nRow >= GetRowCount())
        return -1;
    ClearSelection();
    if (GetColumnCount() < 1)
        SetColumnCount(1);
    const int row = nRow < 0 ? GetRowCount() : nRow;
    m_rowData.insert(m_rowData.begin() + row, NewRow(row));
    m_rows.Insert(row, 0);
    SetItemText(row, 0, heading);
    SetRowHeight(row, GetTextExtent(heading, TRUE).cy);
    UpdateScrollBars();
    return row;
}

int CGridCtrl::InsertColumn(const char* heading, UINT nFormat, int nCol) {
    if (nCol >= 0 && nCol >= GetColumnCount())
        return -1;
    ClearSelection();
    if (GetRowCount() < 1)
        SetRowCount(1);
    const int col = nCol < 0 ? GetColumnCount() : nCol;
    for (int row = 0; row < GetRowCount(); ++row) {
        Row& cells = m_rowData[static_cast<std::size_t>(row)];
        cells.insert(cells.begin() + col, std::unique_ptr<CGridCell>(NewCell(row, col)));
    }
    m_columns.Insert(col, 0);
    SetItemText(0, col, heading);
    for (int row = 0; row < GetRowCount(); ++row)
        SetItemFormat(row, col, nFormat);
    SetColumnWidth(col, GetTextExtent(heading, TRUE).cx);
    UpdateScrollBars();
    return col;
}

BOOL CGridCtrl::DeleteRow(int nRow) {
    if (nRow < 0 || nRow >= GetRowCount())
        return FALSE;
    ClearSelection();
    ClearRow(nRow);
    m_rowData.erase(m_rowData.begin() + nRow);
    m_rows.Erase(nRow);
    m_fixedRowCount -= nRow < m_fixedRowCount;
    UpdateScrollBars();
    return TRUE;
}

BOOL CGridCtrl::DeleteColumn(int nCol) {
    if (nCol < 0 || nCol >= GetColumnCount())
        return FALSE;
    ClearSelection();
    ClearColumn(nCol);
    for (Row& cells : m_rowData)
        cells.erase(cells.begin() + nCol);
    m_columns.Erase(nCol);
    m_fixedColCount -= nCol < m_fixedColCount;
    UpdateScrollBars();
    return TRUE;
}

BOOL CGridCtrl::DeleteBodyRows() {
    for (int row = GetRowCount(); row >= m_fixedRowCount; --row)
        DeleteRow(row);
    return TRUE;
}

BOOL CGridCtrl::DeleteAllItems() {
    ClearSelection();
    for (int row = 0; row < GetRowCount(); ++row)
        ClearRow(row);
    m_rowData.clear();
    m_rows.Resize(0, 0);
    m_columns.Resize(0, 0);
    m_focusCell = CGridPos();
    m_fixedRowCount = 0;
    m_fixedColCount = 0;
    UpdateScrollBars();
    return TRUE;
}
