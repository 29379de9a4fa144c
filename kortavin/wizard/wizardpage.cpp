#include "kortavin/wizard/wizardpage.h"

#include <algorithm>

#include "kortavin/grid/heading.h"

namespace kortavin {

CWizardPage::~CWizardPage() = default;

BOOL CWizardPage::OnSetActive() {
    if (m_pSheet != nullptr)
        m_pSheet->EnableOkButton(FALSE);
    return CPropertyPage::OnSetActive();
}

BOOL CWizardPage::OnKillActive() {
    if (m_pSheet != nullptr)
        StoreClause();
    return CPropertyPage::OnKillActive();
}

CGridPage::~CGridPage() = default;

void CGridPage::DoDataExchange(CDataExchange* exchange) {
    CWizardPage::DoDataExchange(exchange);
    DDX_GridCtrl(exchange, resources::kGrid, Grid());
}

BOOL CGridPage::OnInitDialog() {
    CWizardPage::OnInitDialog();
    SetUpGrid();
    if (m_pSheet != nullptr) {
        Grid().m_pSelTables = m_pSheet->m_pSelTables;
        Grid().m_pDatabase = m_pSheet->m_pDatabase;
    }
    return TRUE;
}

// The page takes the focus from an open cell editor, whose text so comes into its cell.
BOOL CGridPage::OnKillActive() {
    SetFocus();
    return CWizardPage::OnKillActive();
}

// An appended row takes the focus cell away; it comes back, so that Tab and Enter lead on from there.
BOOL CGridPage::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto& notify = *reinterpret_cast<const GridNotify*>(lParam);
    if (notify.hdr.idFrom != resources::kGrid)
        return CWizardPage::OnNotify(wParam, lParam, result);
    if (notify.hdr.code == GridNotifyEditCommitted && notify.row == Grid().GetRowCount() - 1 &&
        AppendsAfter(notify.col)) {
        const CGridPos focus = Grid().GetFocusCell();
        AppendRow();
        Grid().SetFocusCell(focus);
    }
    return TRUE;
}

bool CGridPage::AppendsAfter(int) const {
    return true;
}

void CGridPage::WriteHeading(int row, int col, base::TextId text) {
    grid::SetHeading(Grid(), row, col, Text(text));
}

int CGridPage::AppendEmptyRow() {
    const int row = Grid().InsertRow(nullptr);
    Grid().SetRowHeight(row, Grid().GetRowHeight(0));
    return row;
}

void CGridPage::CopyTablesDown(std::span<const int> columns) {
    const int last = Grid().GetRowCount() - 1;
    for (int row = last; row >= 1; --row) {
        const auto isFilled = [&](int col) { return !Grid().GetItemText(row, col).IsEmpty(); };
        if (!std::ranges::any_of(columns, isFilled))
            continue;
        for (const int col : columns)
            Grid().SetItemText(last, col, Grid().GetItemText(row, col));
        return;
    }
}

void CGridPage::DeleteFocusRow(int firstRow) {
    const CGridPos focus = Grid().GetFocusCell();
    if (focus.row < firstRow || focus.col < 0)
        return;
    Grid().DeleteRow(focus.row);
    Grid().SetFocusCell(focus.row - 1, focus.col);
    Redraw();
}

void CGridPage::Redraw() {
    Invalidate();
    Grid().Invalidate();
}

CRowsPage::~CRowsPage() = default;

const window::MessageMap* CRowsPage::GetMessageMap() const {
    namespace window = window;
    static constexpr window::MessageEntry kEntries[] = {
        window::OnCommand<resources::kAddButton, &CRowsPage::OnAdd>(),
        window::OnCommand<resources::kDeleteButton, &CRowsPage::OnDelete>()};
    static const window::MessageMap map{CGridPage::GetMessageMap(), kEntries};
    return &map;
}

void CRowsPage::AppendRow() {
    AppendEmptyRow();
    CopyTablesDown(TableColumns());
    Redraw();
}

}  // namespace kortavin
