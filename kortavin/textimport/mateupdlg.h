#pragma once

#include "kortavin/base/arrays.h"
#include "kortavin/grid/mateupsamplegrid.h"
#include "kortavin/window/dialog.h"

namespace kortavin {

// The fields with their columns. Each cell offers the column names; others can be typed.
class CMateupListGrid : public CGridCtrl {
  public:
    using CGridCtrl::CGridCtrl;
    ~CMateupListGrid() override;

    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override;

    CStringArray m_Choices;
};

// The dialog behind CMateup: the fields to be filled on the left, the columns with a sample of each on the
// right. OK is refused, without a message, while a field's text is no column's name; names are compared
// without regard to ASCII letter case and to white space at their ends.
class CMateupDlg : public CDialog {
  public:
    explicit CMateupDlg(CWnd* parent = nullptr);
    ~CMateupDlg() override;

    // Separated by commas, as CMateup has them; set before the run.
    CString m_Columns;
    CString m_Samples;
    CString m_Targets;
    CWordArray m_Matches;  // one position (from 1) for each field after OK

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void OnOK() override;

  private:
    void FillListGrid(const CStringArray& columns, const CStringArray& targets);
    void FillSampleGrid(const CStringArray& columns, const CStringArray& samples);

    CMateupListGrid m_ListGrid;
    CMateupSampleGrid m_SampleGrid;
};

// Appends the items of a list that is separated by commas; answers how many.
int SplitList(const CString& text, CStringArray& items);

}  // namespace kortavin
