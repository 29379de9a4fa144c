#include <algorithm>

#include "kortavin/grid/gridctrl.h"

namespace kortavin {

// Counts, and the rows and columns that come and go with them. What can fail for lack of memory comes first,
// so that the grid stays whole.

using window::TableChange;

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

// The bars come last: one that comes or goes sizes the window, and the owner may hear of that.
void CGridCtrl::FollowLayout() {
    TellTableChange(TableChange::Layout);
    UpdateScrollBars();
}

void CGridCtrl::FollowCounts() {
    InvalidateIfDrawn();
    FollowLayout();
}

// Cells first: an axis that counts a row stands for its cells. Rows that memory does not suffice for are
// taken back.
void CGridCtrl::AppendRows(int count) {
    const std::size_t former = m_rowData.size();
    try {
        m_rowData.reserve(static_cast<std::size_t>(count));
        while (m_rowData.size() < static_cast<std::size_t>(count))
            m_rowData.push_back(NewRow(static_cast<int>(m_rowData.size())));
        m_rows.Resize(count, m_defaultRowHeight);
    } catch (...) {
        m_rowData.resize(former);
        throw;
    }
}

void CGridCtrl::AppendColumns(int count) {
    const auto former = static_cast<std::size_t>(GetColumnCount());
    try {
        for (int row = 0; row < GetRowCount(); ++row) {
            Row& cells = m_rowData[static_cast<std::size_t>(row)];
            cells.reserve(static_cast<std::size_t>(count));
            while (cells.size() < static_cast<std::size_t>(count))
                cells.emplace_back(NewCell(row, static_cast<int>(cells.size())));
        }
        m_columns.Resize(count, m_defaultColWidth);
    } catch (...) {
        for (Row& cells : m_rowData)
            cells.resize(std::min(cells.size(), former));
        throw;
    }
}

BOOL CGridCtrl::SetRowCount(int n) {
    const Life life(*this);
    if (n >= 0 && m_focusCell.row >= n)
        SetFocusCell(-1, -1);
    if (n < 0 || !life)
        return FALSE;
    if (n == GetRowCount())
        return TRUE;
    m_fixedRowCount = std::min(m_fixedRowCount, n);
    if (n > GetRowCount()) {
        AppendRows(n);
    } else {
        for (int row = n; row < GetRowCount(); ++row)
            ClearRow(row);
        m_rows.Resize(n, 0);
        m_rowData.resize(static_cast<std::size_t>(n));
    }
    FollowCounts();
    return TRUE;
}

BOOL CGridCtrl::SetColumnCount(int n) {
    const Life life(*this);
    if (n >= 0 && m_focusCell.col >= n)
        SetFocusCell(-1, -1);
    if (n < 0 || !life)
        return FALSE;
    if (n == GetColumnCount())
        return TRUE;
    m_fixedColCount = std::min(m_fixedColCount, n);
    if (n > GetColumnCount()) {
        AppendColumns(n);
    } else {
        for (int col = n; col < GetColumnCount(); ++col)
            ClearColumn(col);
        m_columns.Resize(n, 0);
        for (Row& cells : m_rowData)
            cells.resize(static_cast<std::size_t>(n));
    }
    FollowCounts();
    return TRUE;
}

BOOL CGridCtrl::SetFixedRowCount(int n) {
    const Life life(*this);
    if (n < 0 || (n > GetRowCount() && !SetRowCount(n)))
        return FALSE;
    if (m_focusCell.row < n)
        SetFocusCell(-1, -1);
    if (!life)
        return FALSE;
    m_fixedRowCount = std::min(n, GetRowCount());
    FollowCounts();
    return TRUE;
}

BOOL CGridCtrl::SetFixedColumnCount(int n) {
    const Life life(*this);
    if (n < 0 || (n > GetColumnCount() && !SetColumnCount(n)))
        return FALSE;
    if (m_focusCell.col < n)
        SetFocusCell(-1, -1);
    if (!life)
        return FALSE;
    m_fixedColCount = std::min(n, GetColumnCount());
    FollowCounts();
    return TRUE;
}

int CGridCtrl::InsertRow(const char* heading, int nRow) {
    if (nRow >= GetRowCount() || !DropSelection() || nRow > GetRowCount())
        return -1;
    if (GetColumnCount() < 1)
        SetColumnCount(1);
    const int row = nRow < 0 ? GetRowCount() : nRow;
    m_rowData.insert(m_rowData.begin() + row, NewRow(row));
    try {
        m_rows.Insert(row, GetTextExtent(heading, TRUE).cy);
    } catch (...) {
        m_rowData.erase(m_rowData.begin() + row);
        throw;
    }
    SetItemText(row, 0, heading);
    FollowLayout();
    return row;
}

// All that memory must suffice for is there before the first row changes.
int CGridCtrl::InsertColumn(const char* heading, UINT nFormat, int nCol) {
    if (nCol >= GetColumnCount() || !DropSelection() || nCol > GetColumnCount())
        return -1;
    if (GetRowCount() < 1)
        SetRowCount(1);
    const int col = nCol < 0 ? GetColumnCount() : nCol;
    Row made;
    for (int row = 0; row < GetRowCount(); ++row) {
        made.emplace_back(NewCell(row, col));
        made.back()->format = nFormat;
        Row& cells = m_rowData[static_cast<std::size_t>(row)];
        cells.reserve(cells.size() + 1);
    }
    m_columns.Insert(col, GetTextExtent(heading, TRUE).cx);
    for (std::size_t row = 0; row < made.size(); ++row)
        m_rowData[row].insert(m_rowData[row].begin() + col, std::move(made[row]));
    SetItemText(0, col, heading);
    FollowLayout();
    return col;
}

BOOL CGridCtrl::DeleteRow(int nRow) {
    if (nRow < 0 || nRow >= GetRowCount() || !DropSelection() || nRow >= GetRowCount())
        return FALSE;
    ClearRow(nRow);
    m_rowData.erase(m_rowData.begin() + nRow);
    m_rows.Erase(nRow);
    m_fixedRowCount -= nRow < m_fixedRowCount;
    FollowLayout();
    return TRUE;
}

BOOL CGridCtrl::DeleteColumn(int nCol) {
    if (nCol < 0 || nCol >= GetColumnCount() || !DropSelection() || nCol >= GetColumnCount())
        return FALSE;
    ClearColumn(nCol);
    for (Row& cells : m_rowData)
        cells.erase(cells.begin() + nCol);
    m_columns.Erase(nCol);
    m_fixedColCount -= nCol < m_fixedColCount;
    FollowLayout();
    return TRUE;
}

BOOL CGridCtrl::DeleteBodyRows() {
    const Life life(*this);
    for (int row = GetRowCount(); life && row >= m_fixedRowCount; --row)
        DeleteRow(row);
    return TRUE;
}

BOOL CGridCtrl::DeleteAllItems() {
    if (!DropSelection())
        return FALSE;
    for (int row = 0; row < GetRowCount(); ++row)
        ClearRow(row);
    m_rowData.clear();
    m_rows.Resize(0, 0);
    m_columns.Resize(0, 0);
    m_fixedRowCount = 0;
    m_fixedColCount = 0;
    FollowLayout();
    return TRUE;
}

}  // namespace kortavin
