#include "kortavin/wizard/pagefields.h"

#include "kortavin/base/texts.h"
#include "kortavin/query/clauses.h"

namespace kortavin {

using base::TextId;

CPageFields::CPageFields() : CRowsPage(resources::kFieldsPage) {}
CPageFields::~CPageFields() = default;

void CPageFields::SetUpGrid() {
    m_Grid.SetRowCount(2);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetColumnCount(2);
    WriteHeading(0, 0, TextId::Table);
    WriteHeading(0, 1, TextId::Field);
}

std::span<const int> CPageFields::TableColumns() const {
    static constexpr int kColumns[] = {0};
    return kColumns;
}

void CPageFields::StoreClause() {
    std::vector<query::FieldRow> rows;
    for (int row = 1; row < m_Grid.GetRowCount(); ++row)
        rows.push_back({m_Grid.GetItemText(row, 0), m_Grid.GetItemText(row, 1)});
    m_pSheet->StoreFields(query::BuildFieldsClause(rows));
}

}  // namespace kortavin
