#include "wizard/pagefields.h"

#include "query/clauses.h"
#include "resources/texts.h"

namespace resources = kortavin::resources;
namespace window = kortavin::window;
using resources::TextId;

CPageFields::CPageFields() : CGridPage(resources::kFieldsPage) {}
CPageFields::~CPageFields() = default;

const window::MessageMap* CPageFields::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {
        window::OnCommand<resources::kAddButton, &CPageFields::OnAdd>(),
        window::OnCommand<resources::kDeleteButton, &CPageFields::OnDelete>()};
    static const window::MessageMap map{CGridPage::GetMessageMap(), kEntries};
    return &map;
}

void CPageFields::SetUpGrid() {
    m_Grid.SetRowCount(2);
    m_Grid.SetFixedRowCount(1);
    m_Grid.SetColumnCount(2);
    WriteHeading(0, 0, TextId::Table);
    WriteHeading(0, 1, TextId::Field);
}

void CPageFields::AppendRow() {
    AppendEmptyRow();
    CopyTablesDown({0});
    Redraw();
}

void CPageFields::StoreClause() {
    std::vector<kortavin::query::FieldRow> rows;
    for (int row = 1; row < m_Grid.GetRowCount(); ++row)
        rows.push_back({m_Grid.GetItemText(row, 0), m_Grid.GetItemText(row, 1)});
    m_pSheet->StoreFields(kortavin::query::BuildFieldsClause(rows));
}
