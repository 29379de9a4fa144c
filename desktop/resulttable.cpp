#include "desktop/resulttable.h"

#include <algorithm>
#include <new>

#include "desktop/progress.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/service/statement.h"

namespace kortavin::desktop {
namespace {

constexpr int kFirstRows = 256;    // to begin with; doubled as they come
constexpr int kMeasuredRows = 50;  // column widths follow the first rows
constexpr int kNarrowest = 48;     // pixels
constexpr int kWidest = 320;
constexpr char kLineBreak[] = "\r\n";

CString Heading(const CODBCFieldInfo& column) {
    CString type = service::FieldTypeName(column.m_nSQLType);
    return column.m_strName + kLineBreak + type.TrimRight();
}

// ODBC type codes of numbers: tiny and big integers, and from numeric to double.
bool IsNumber(const CODBCFieldInfo& column) {
    const SWORD type = column.m_nSQLType;
    return type == -6 || type == -5 || (type >= 2 && type <= 8);
}

void SetCell(CGridCtrl& grid, int row, int col, const CString& text, UINT format) {
    GridItem item;
    item.row = row;
    item.col = col;
    item.mask = GridItemText | GridItemFormat;
    item.text = text;
    item.nFormat = format;
    grid.SetItem(&item);
}

CString Number(int value) {
    CString text;
    text.Format("%d", value);
    return text;
}

class Unpainted {
  public:
    explicit Unpainted(CGridCtrl& grid) : m_grid(grid) { m_grid.SetRedraw(FALSE); }
    Unpainted(const Unpainted&) = delete;
    Unpainted& operator=(const Unpainted&) = delete;
    ~Unpainted() { m_grid.SetRedraw(TRUE, TRUE); }

  private:
    CGridCtrl& m_grid;
};

}  // namespace

CSize ResultGrid::MeasureCell(int row, int col, CDC* dc) {
    CSize size = CGridCtrl::MeasureCell(row, col, dc);
    const CString text = GetItemText(row, col);
    if (const int end = text.Find(kLineBreak); row == 0 && end >= 0) {
        const int margins = size.cx - GetTextExtent(text, TRUE).cx;
        const CSize name = GetTextExtent(text.Left(end), TRUE);
        const CSize type = GetTextExtent(text.Mid(end + 2), TRUE);
        size = {std::max(name.cx, type.cx) + margins, name.cy + type.cy};
    }
    return size;
}

ResultTable::ResultTable(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("result"));
    setAccessibleName(QStringLiteral("查询结果"));
    setAutoFillBackground(true);  // so that what is scrolled need not be painted again
    qt::AttachTo(m_grid, *this);
    m_grid.SetEditable(FALSE);
    m_grid.SetHandleTabKey(FALSE);
    Clear();
}

void ResultTable::Clear() {
    m_columns.clear();
    m_grid.DeleteAllItems();
    m_grid.Invalidate();
}

ResultTable::Outcome ResultTable::Fill(_CRecordsetEx& recordset, Progress& progress) {
    Clear();
    m_columns = service::DescribeResult(recordset);
    Outcome outcome;
    if (m_columns.empty())
        return outcome;
    const Unpainted unpainted(m_grid);
    try {
        MakeHeadings();
        ReadRows(recordset, progress, outcome);
    } catch (const Cancelled&) {
        outcome.wasStopped = true;
    } catch (const std::bad_alloc&) {
        Clear();
        throw;
    } catch (...) {
        FinishAt(outcome.rows);
        throw;
    }
    FinishAt(outcome.rows);
    return outcome;
}

void ResultTable::MakeHeadings() {
    m_grid.SetColumnCount(static_cast<int>(m_columns.size()) + 1);
    m_grid.SetRowCount(1);
    m_grid.SetFixedRowCount(1);
    m_grid.SetFixedColumnCount(1);
    for (std::size_t i = 0; i < m_columns.size(); ++i)
        SetCell(m_grid, 0, static_cast<int>(i) + 1, Heading(m_columns[i]), DT_CENTER | DT_VCENTER);
    m_grid.SetRowHeight(0, m_grid.MeasureCell(0, 1, nullptr).cy);
}

// Every row that is counted is there whole.
void ResultTable::ReadRows(_CRecordsetEx& recordset, Progress& progress, Outcome& outcome) {
    for (; !recordset.IsBOF() && !recordset.IsEOF(); recordset.MoveNext()) {
        if (outcome.rows == kMostRows) {
            outcome.hasMore = true;
            return;
        }
        const int row = outcome.rows + 1;
        if (row >= m_grid.GetRowCount())
            m_grid.SetRowCount(std::clamp(2 * row, kFirstRows, kMostRows + 1));
        ReadRow(recordset, row);
        outcome.rows = row;
        progress.Update([row] { return QStringLiteral("已读取 %L1 行…").arg(row); });
    }
}

void ResultTable::ReadRow(_CRecordsetEx& recordset, int row) {
    constexpr UINT kOneLine = DT_VCENTER | DT_SINGLELINE;
    SetCell(m_grid, row, 0, Number(row), kOneLine | DT_RIGHT);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        CString value;
        recordset.ReadFieldText(static_cast<short>(i), value);
        SetCell(m_grid, row, static_cast<int>(i) + 1, value,
                kOneLine | (IsNumber(m_columns[i]) ? DT_RIGHT : DT_LEFT));
    }
}

void ResultTable::FinishAt(int rows) {
    m_grid.SetRowCount(rows + 1);
    for (int col = 0; col < m_grid.GetColumnCount(); ++col) {
        int width = kNarrowest;
        for (int row = 0; row <= std::min(rows, kMeasuredRows); ++row)
            width = std::max(width, m_grid.MeasureCell(row, col, nullptr).cx);
        m_grid.SetColumnWidth(col, std::min(width, kWidest));
    }
    m_grid.SetFocusCell(1, 1);
}

}  // namespace kortavin::desktop
