#include "kortavin/wizard/pagewhere.h"

#include "kortavin/base/texts.h"
#include "kortavin/query/clauses.h"

namespace kortavin {

using base::TextId;

CPageWhere::CPageWhere() : CGridPage(resources::kConditionsPage) {}
CPageWhere::~CPageWhere() = default;

const window::MessageMap* CPageWhere::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {
        window::OnCommand<resources::kAddColumnButton, &CPageWhere::OnAddColumn>(),
        window::OnCommand<resources::kAddRowButton, &CPageWhere::OnAddRow>(),
        window::OnCommand<resources::kDeleteColumnButton, &CPageWhere::OnDeleteColumn>(),
        window::OnCommand<resources::kDeleteRowButton, &CPageWhere::OnDeleteRow>()};
    static const window::MessageMap map{CGridPage::GetMessageMap(), kEntries};
    return &map;
}

namespace {

constexpr int kTableRow = 1;
constexpr int kFieldRow = 2;
constexpr int kFirstCondition = 3;
constexpr UINT kColumnFormat = DT_CENTER | DT_VCENTER | DT_SINGLELINE;

}  // namespace

void CPageWhere::SetUpGrid() {
    m_Grid.SetRowCount(kFirstCondition + 1);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetColumnCount(2);
    m_Grid.SetFixedColumnCount(1);
    WriteHeading(kTableRow, 0, TextId::Table);
    WriteHeading(kFieldRow, 0, TextId::Field);
    WriteHeading(kFirstCondition, 0, TextId::PageConditions);
}

void CPageWhere::AppendRow() {
    m_Grid.SetItemText(AppendEmptyRow(), 0, Text(TextId::OrRow));
    Redraw();
}

// The first condition row stays.
void CPageWhere::OnDeleteRow() {
    DeleteFocusRow(kFirstCondition + 1);
}

void CPageWhere::OnAddColumn() {
    const int col = m_Grid.InsertColumn(nullptr, kColumnFormat);
    m_Grid.SetColumnWidth(col, m_Grid.GetColumnWidth(col - 1));
    RenumberColumns();
    Redraw();
}

void CPageWhere::OnDeleteColumn() {
    const int last = m_Grid.GetColumnCount() - 1;
    const auto [row, col] = m_Grid.GetFocusCell();
    if (row < 0 || col < 1)
        return;
    m_Grid.DeleteColumn(col);
    m_Grid.SetFocusCell(row, col == last ? col - 1 : col);
    RenumberColumns();
    Redraw();
}

void CPageWhere::RenumberColumns() {
    for (int col = 1; col < m_Grid.GetColumnCount(); ++col) {
        CString number;
        number.Format("%d", col);
        m_Grid.SetItemText(0, col, number);
    }
}

void CPageWhere::StoreClause() {
    query::ConditionGrid conditions;
    for (int col = 1; col < m_Grid.GetColumnCount(); ++col)
        conditions.columns.push_back(
            {m_Grid.GetItemText(kTableRow, col), m_Grid.GetItemText(kFieldRow, col)});
    for (int row = kFirstCondition; row < m_Grid.GetRowCount(); ++row) {
        auto& texts = conditions.rows.emplace_back();
        for (int col = 1; col < m_Grid.GetColumnCount(); ++col)
            texts.push_back(m_Grid.GetItemText(row, col));
    }
    m_pSheet->StoreWhere(query::BuildWhereClause(conditions));
}

}  // namespace kortavin
