#include "kortavin/wizard/pagerelation.h"

#include "kortavin/base/texts.h"
#include "kortavin/query/clauses.h"

namespace kortavin {

using base::TextId;

CPageRelation::CPageRelation() : CRowsPage(resources::kRelationsPage) {}
CPageRelation::~CPageRelation() = default;

void CPageRelation::SetUpGrid() {
    m_Grid.SetRowCount(2);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetColumnCount(4);
    WriteHeading(0, 0, TextId::FirstTable);
    WriteHeading(0, 1, TextId::Field);
    WriteHeading(0, 2, TextId::SecondTable);
    WriteHeading(0, 3, TextId::Field);
}

bool CPageRelation::AppendsAfter(int col) const {
    return col == 2 || col == 3;
}

std::span<const int> CPageRelation::TableColumns() const {
    static constexpr int kColumns[] = {0, 2};
    return kColumns;
}

void CPageRelation::StoreClause() {
    std::vector<query::RelationRow> rows;
    for (int row = 1; row < m_Grid.GetRowCount(); ++row)
        rows.push_back({m_Grid.GetItemText(row, 0), m_Grid.GetItemText(row, 1), m_Grid.GetItemText(row, 2),
                        m_Grid.GetItemText(row, 3)});
    m_pSheet->StoreRelation(query::BuildRelationClause(rows));
}

}  // namespace kortavin
