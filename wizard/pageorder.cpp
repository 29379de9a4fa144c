#include "wizard/pageorder.h"

#include "query/clauses.h"
#include "resources/texts.h"

namespace resources = kortavin::resources;
namespace window = kortavin::window;
using resources::TextId;

CPageOrder::CPageOrder() : CGridPage(resources::kSortPage) {}
CPageOrder::~CPageOrder() = default;

const window::MessageMap* CPageOrder::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {
        window::OnCommand<resources::kAddButton, &CPageOrder::OnAdd>(),
        window::OnCommand<resources::kDeleteButton, &CPageOrder::OnDelete>()};
    static const window::MessageMap map{CGridPage::GetMessageMap(), kEntries};
    return &map;
}

void CPageOrder::SetUpGrid() {
    m_Grid.SetRowCount(2);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetColumnCount(4);
    m_Grid.SetFixedColumnCount(1);
    WriteHeading(0, 1, TextId::Table);
    WriteHeading(0, 2, TextId::Field);
    WriteHeading(0, 3, TextId::PageSort);
}

void CPageOrder::AppendRow() {
    AppendEmptyRow();
    CopyTablesDown({1});
    Redraw();
}

void CPageOrder::StoreClause() {
    std::vector<kortavin::query::SortRow> rows;
    for (int row = 1; row < m_Grid.GetRowCount(); ++row)
        rows.push_back({m_Grid.GetItemText(row, 1), m_Grid.GetItemText(row, 2), m_Grid.GetItemText(row, 3)});
    m_pSheet->StoreOrder(kortavin::query::BuildOrderClause(rows));
}
