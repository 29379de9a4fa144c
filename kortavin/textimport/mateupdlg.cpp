#include "kortavin/textimport/mateupdlg.h"

#include <algorithm>

#include "kortavin/base/texts.h"
#include "kortavin/grid/gridcellcombo.h"
#include "kortavin/grid/heading.h"
#include "kortavin/resources/dialogs.h"
#include "kortavin/textimport/token.h"

namespace kortavin {

using base::TextId;
using grid::SetHeading;

namespace {

void SetUp(CGridCtrl& grid, TextId firstHeading, TextId secondHeading) {
    grid.SetRowCount(1);
    grid.SetColumnCount(2);
    grid.SetFixedRowCount(1);
    grid.SetFixedColumnCount(1);
    SetHeading(grid, 0, 0, Text(firstHeading));
    SetHeading(grid, 0, 1, Text(secondHeading));
}

void AppendRow(CGridCtrl& grid, const CString& first, const CString& second) {
    const int row = grid.InsertRow("");
    grid.SetRowHeight(row, grid.GetRowHeight(0));
    grid.SetItemText(row, 0, first);
    grid.SetItemText(row, 1, second);
}

// As names are compared: without the white space at the ends, in upper case.
CString Comparable(const CString& name) {
    constexpr std::string_view kWhiteSpace = " \t\n\r\v\f";
    std::string_view text = name.View();
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    text = text.substr(0, text.find_last_not_of(kWhiteSpace) + 1);
    return CString(text).MakeUpper();
}

// From 1; 0 when no column that a position can name has the name.
WORD PositionOf(const CString& name, const CStringArray& columns) {
    const CString wanted = Comparable(name);
    const int count = std::min(columns.GetSize(), 0xFFFF);
    for (int i = 0; i < count; ++i)
        if (Comparable(columns[i]) == wanted)
            return static_cast<WORD>(i + 1);
    return 0;
}

}  // namespace

int SplitList(const CString& text, CStringArray& items) {
    CToken token(text);
    token.SetToken(",");
    int count = 0;
    for (; token.MoreTokens(); ++count)
        items.Add(token.GetNextToken());
    return count;
}

CMateupListGrid::~CMateupListGrid() = default;

void CMateupListGrid::CreateCellEditor(CRect& rect, DWORD, UINT nID, int row, int col, const char* text,
                                       int nChar) {
    CGridCellCombo::Open(this, rect, CBS_DROPDOWN, nID, row, col, m_Choices, text, static_cast<UINT>(nChar));
}

CMateupDlg::CMateupDlg(CWnd* parent) : CDialog(resources::kMatchDialog, parent) {}
CMateupDlg::~CMateupDlg() = default;

void CMateupDlg::DoDataExchange(CDataExchange* exchange) {
    CDialog::DoDataExchange(exchange);
    DDX_GridCtrl(exchange, resources::kMatchListGrid, m_ListGrid);
    DDX_GridCtrl(exchange, resources::kMatchSampleGrid, m_SampleGrid);
}

BOOL CMateupDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    CStringArray columns;
    CStringArray samples;
    CStringArray targets;
    SplitList(m_Columns, columns);
    SplitList(m_Samples, samples);
    SplitList(m_Targets, targets);
    FillListGrid(columns, targets);
    FillSampleGrid(columns, samples);
    return TRUE;
}

// The first guess pairs the fields with the columns in their order.
void CMateupDlg::FillListGrid(const CStringArray& columns, const CStringArray& targets) {
    SetUp(m_ListGrid, TextId::ItemToMatch, TextId::ColumnName);
    m_ListGrid.m_Choices = columns;
    for (int i = 0; i < targets.GetSize(); ++i)
        AppendRow(m_ListGrid, targets[i], columns[i]);
}

void CMateupDlg::FillSampleGrid(const CStringArray& columns, const CStringArray& samples) {
    SetUp(m_SampleGrid, TextId::ColumnName, TextId::SampleData);
    for (int i = 0; i < columns.GetSize(); ++i)
        AppendRow(m_SampleGrid, columns[i], samples[i]);
}

void CMateupDlg::OnOK() {
    CStringArray columns;
    CStringArray targets;
    SplitList(m_Columns, columns);
    SplitList(m_Targets, targets);
    m_Matches.RemoveAll();
    bool areAllMatched = true;
    for (int i = 0; i < targets.GetSize(); ++i) {
        const WORD position = PositionOf(m_ListGrid.GetItemText(i + 1, 1), columns);
        m_Matches.Add(position);
        areAllMatched = areAllMatched && position != 0;
    }
    if (areAllMatched)
        CDialog::OnOK();
}

}  // namespace kortavin
