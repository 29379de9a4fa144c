#include "kortavin/wizard/cataloggrids.h"

#include "kortavin/base/texts.h"
#include "kortavin/grid/gridcellcombo.h"
#include "kortavin/grid/gridcelledit.h"

namespace kortavin {

using base::TextId;

CCatalogGrid::~CCatalogGrid() = default;
CTableFieldGrid::~CTableFieldGrid() = default;
CConditionGrid::~CConditionGrid() = default;
CSortGrid::~CSortGrid() = default;

CStringArray CCatalogGrid::ChosenTables() const {
    return m_pSelTables != nullptr ? *m_pSelTables : CStringArray();
}

CStringArray CCatalogGrid::ColumnsOfTableIn(int row, int col) const {
    CStringArray columns;
    const CString table = GetItemText(row, col);
    if (!table.IsEmpty() && m_pDatabase != nullptr)
        m_pDatabase->GetColumnList(table, columns);
    return columns;
}

void CCatalogGrid::OpenList(const CStringArray& choices, const CRect& rect, UINT nID, int row, int col,
                            const char* text, int nChar) {
    CGridCellCombo::Open(this, rect, CBS_DROPDOWN, nID, row, col, choices, text, static_cast<UINT>(nChar));
}

void CTableFieldGrid::CreateCellEditor(CRect& rect, DWORD, UINT nID, int row, int col, const char* text,
                                       int nChar) {
    const bool isTable = col == 0 || col == 2;
    OpenList(isTable ? ChosenTables() : ColumnsOfTableIn(row, col - 1), rect, nID, row, col, text, nChar);
}

void CConditionGrid::CreateCellEditor(CRect& rect, DWORD, UINT nID, int row, int col, const char* text,
                                      int nChar) {
    if (row == 1 || row == 2)
        OpenList(row == 1 ? ChosenTables() : ColumnsOfTableIn(1, col), rect, nID, row, col, text, nChar);
    else
        CGridCellEdit::Open(this, rect, ES_CENTER, nID, row, col, text, static_cast<UINT>(nChar));
}

void CSortGrid::CreateCellEditor(CRect& rect, DWORD, UINT nID, int row, int col, const char* text,
                                 int nChar) {
    CStringArray choices;
    switch (col) {
        case 1:
            choices = ChosenTables();
            break;
        case 2:
            choices = ColumnsOfTableIn(row, 1);
            break;
        case 3:
            choices.Add(Text(TextId::Ascending));
            choices.Add(Text(TextId::Descending));
            break;
        default:
            return;
    }
    OpenList(choices, rect, nID, row, col, text, nChar);
}

}  // namespace kortavin
