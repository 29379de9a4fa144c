#include "desktop/gridpage.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QCheckBox>
#include <algorithm>
#include <set>
#include <vector>

#include "kortavin/grid/gridcellcombo.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/service/statement.h"
#include "sample/sample.h"

namespace kortavin::desktop {
namespace {

constexpr int kRows = 100'000;
constexpr int kCountry = 3;  // column of the cities

using Row = std::vector<CString>;

// The column names, then the cities.
std::vector<Row> ReadCities() {
    CGeoDatabase database;
    database.Open("Driver=SQLite3;Database=:memory:;StepAPI=1");
    sample::WriteSample(database);
    const auto cities = service::OpenStatement(database, "SELECT * FROM Cities");
    Row names;
    for (const CODBCFieldInfo& column : service::DescribeResult(*cities))
        names.push_back(column.m_strName);
    std::vector<Row> rows{names};
    for (; !cities->IsEOF(); cities->MoveNext()) {
        Row& row = rows.emplace_back(names.size());
        for (std::size_t i = 0; i < row.size(); ++i)
            cities->ReadFieldText(static_cast<short>(i), row[i]);
    }
    return rows;
}

void SetRow(CGridCtrl& grid, int row, const Row& texts) {
    for (std::size_t i = 0; i < texts.size(); ++i)
        grid.SetItemText(row, static_cast<int>(i) + 1, texts[i]);
}

}  // namespace

void ListedGrid::SetChoices(int col, const CStringArray& choices) {
    m_listed = col;
    m_choices = choices;
}

void ListedGrid::CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                                  int nChar) {
    if (col == m_listed)
        CGridCellCombo::Open(this, rect, CBS_DROPDOWN, nID, row, col, m_choices, text,
                             static_cast<UINT>(nChar));
    else
        CGridCtrl::CreateCellEditor(rect, dwStyle, nID, row, col, text, nChar);
}

GridPage::GridPage() {
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeSwitches());
    auto* place = new QWidget;
    place->setObjectName(QStringLiteral("grid"));
    place->setAccessibleName(QStringLiteral("城市"));
    place->setAutoFillBackground(true);  // so that what is scrolled need not be painted again
    column->addWidget(place, 1);
    Fill();
    qt::AttachTo(m_grid, *place);
    for (int col = 0; col < m_grid.GetColumnCount(); ++col)
        m_grid.SetColumnWidth(col, col == 0 ? 64 : std::max(104, m_grid.MeasureCell(0, col, nullptr).cx));
    for (int row = 0; row < m_grid.GetRowCount(); ++row)
        m_grid.SetRowHeight(row, 24);
    m_grid.SetFocusCell(1, 1);
}

void GridPage::Fill() {
    const auto rows = ReadCities();
    m_grid.SetColumnCount(static_cast<int>(rows.front().size()) + 1);
    m_grid.SetRowCount(kRows + 1);
    m_grid.SetFixedRowCount(1);
    m_grid.SetFixedColumnCount(1);
    SetRow(m_grid, 0, rows.front());
    std::set<CString> countries;
    for (std::size_t i = 1; i < rows.size(); ++i)
        countries.insert(rows[i][kCountry]);
    CStringArray choices;
    for (const CString& country : countries)
        choices.Add(country);
    m_grid.SetChoices(kCountry + 1, choices);
    for (int row = 1; row <= kRows; ++row) {
        SetRow(m_grid, row, rows[1 + static_cast<std::size_t>(row - 1) % (rows.size() - 1)]);
        CString number;
        number.Format("%6d", row);  // in the order of texts, too
        m_grid.SetItemText(row, 0, number);
    }
    for (int row = 0; row <= kRows; ++row)
        for (int col = 0; col < m_grid.GetColumnCount(); ++col)
            m_grid.SetItemFormat(row, col,
                                 DT_VCENTER | DT_SINGLELINE |
                                     (row == 0   ? DT_CENTER
                                      : col == 0 ? DT_RIGHT
                                                 : DT_LEFT));
}

QHBoxLayout* GridPage::MakeSwitches() {
    auto* row = new QHBoxLayout;
    AddSwitch(*row, QStringLiteral("列表模式(&L)"), "listMode", false, &CGridCtrl::SetListMode);
    AddSwitch(*row, QStringLiteral("单行选择(&R)"), "singleRow", false, &CGridCtrl::SetSingleRowSelection);
    AddSwitch(*row, QStringLiteral("可编辑(&E)"), "editable", true, &CGridCtrl::SetEditable);
    AddSwitch(*row, QStringLiteral("Tab 键移动单元格(&T)"), "tabKey", true, &CGridCtrl::SetHandleTabKey);
    row->addStretch();
    return row;
}

void GridPage::AddSwitch(QHBoxLayout& row, const QString& text, const char* name, bool isOn,
                         void (CGridCtrl::*set)(BOOL)) {
    auto* box = new QCheckBox(text);
    box->setObjectName(QString::fromLatin1(name));
    box->setChecked(isOn);
    connect(box, &QCheckBox::toggled, this, [this, set](bool checked) { (m_grid.*set)(checked); });
    row.addWidget(box);
}

}  // namespace kortavin::desktop
