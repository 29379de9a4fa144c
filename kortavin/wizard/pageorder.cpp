#include "kortavin/wizard/pageorder.h"

#include "kortavin/base/texts.h"
#include "kortavin/query/clauses.h"

namespace kortavin {

using base::TextId;

CPageOrder::CPageOrder() : CRowsPage(resources::kSortPage) {}
CPageOrder::~CPageOrder() = default;

void CPageOrder::SetUpGrid() {
    m_Grid.SetRowCount(2);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetColumnCount(4);
    m_Grid.SetFixedColumnCount(1);
    WriteHeading(0, 1, TextId::Table);
    WriteHeading(0, 2, TextId::Field);
    WriteHeading(0, 3, TextId::PageSort);
}

std::span<const int> CPageOrder::TableColumns() const {
    static constexpr int kColumns[] = {1};
    return kColumns;
}

void CPageOrder::StoreClause() {
    std::vector<query::SortRow> rows;
    for (int row = 1; row < m_Grid.GetRowCount(); ++row)
        rows.push_back({m_Grid.GetItemText(row, 1), m_Grid.GetItemText(row, 2), m_Grid.GetItemText(row, 3)});
    m_pSheet->StoreOrder(query::BuildOrderClause(rows));
}

}  // namespace kortavin
