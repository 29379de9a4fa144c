#include "kortavin/wizard/pageseltable.h"

#include <algorithm>

#include "kortavin/base/texts.h"
#include "kortavin/query/clauses.h"

namespace kortavin {

namespace {

// Null stands for an empty list.
void Fill(CListBox& list, const CStringArray* names) {
    list.ResetContent();
    if (names != nullptr)
        for (const CString& name : *names)
            list.AddString(name);
}

// -1: it is not there.
int PlaceOf(const CString& name, const CStringArray& names) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found != names.end() ? static_cast<int>(found - names.begin()) : -1;
}

}  // namespace

CPageSelTable::CPageSelTable() : CWizardPage(resources::kTablesPage) {}
CPageSelTable::~CPageSelTable() = default;

const window::MessageMap* CPageSelTable::GetMessageMap() const {
    static constexpr window::MessageEntry kEntries[] = {
        window::OnCommand<resources::kAddButton, &CPageSelTable::OnSelectTable>(),
        window::OnCommand<resources::kDeleteButton, &CPageSelTable::OnRemoveTable>(),
        window::OnControl<LBN_DBLCLK, resources::kAvailableList, &CPageSelTable::OnSelectTable>(),
        window::OnControl<LBN_DBLCLK, resources::kSelectedList, &CPageSelTable::OnRemoveTable>()};
    static const window::MessageMap map{CWizardPage::GetMessageMap(), kEntries};
    return &map;
}

void CPageSelTable::DoDataExchange(CDataExchange* exchange) {
    CWizardPage::DoDataExchange(exchange);
    DDX_Control(exchange, resources::kSelectedList, m_SelectedList);
    DDX_Control(exchange, resources::kAvailableList, m_AvailableList);
}

BOOL CPageSelTable::OnInitDialog() {
    CWizardPage::OnInitDialog();
    m_AvailableList.SetAccessibleText(Text(base::TextId::AvailableTables));
    m_SelectedList.SetAccessibleText(Text(base::TextId::ChosenTables));
    FillAvailableList();
    FillSelectedList();
    return TRUE;
}

void CPageSelTable::FillAvailableList() {
    Fill(m_AvailableList, m_pSheet != nullptr ? m_pSheet->m_pTables : nullptr);
}

void CPageSelTable::FillSelectedList() {
    Fill(m_SelectedList, m_pSheet != nullptr ? m_pSheet->m_pSelTables : nullptr);
}

void CPageSelTable::OnSelectTable() {
    CString name;
    const bool isSelected = m_AvailableList.GetText(m_AvailableList.GetCurSel(), name) != LB_ERR;
    CStringArray* const chosen = m_pSheet != nullptr ? m_pSheet->m_pSelTables : nullptr;
    if (!isSelected || chosen == nullptr || PlaceOf(name, *chosen) >= 0)
        return;
    chosen->Add(name);
    FillSelectedList();
}

void CPageSelTable::OnRemoveTable() {
    CString name;
    const int selected = m_SelectedList.GetCurSel();
    if (m_SelectedList.GetText(selected, name) == LB_ERR)
        return;
    m_SelectedList.DeleteString(static_cast<UINT>(selected));
    if (CStringArray* const chosen = m_pSheet != nullptr ? m_pSheet->m_pSelTables : nullptr)
        chosen->RemoveAt(PlaceOf(name, *chosen));
    FillSelectedList();
}

void CPageSelTable::StoreClause() {
    CStringArray names;
    for (int i = 0; i < m_SelectedList.GetCount(); ++i) {
        CString name;
        m_SelectedList.GetText(i, name);
        names.Add(name);
    }
    m_pSheet->StoreTables(query::BuildTablesClause(names));
}

}  // namespace kortavin
