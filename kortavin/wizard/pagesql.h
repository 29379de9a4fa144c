#pragma once

#include "kortavin/db/recordsetex.h"
#include "kortavin/grid/mateupsamplegrid.h"
#include "kortavin/wizard/wizardpage.h"

namespace kortavin {

// The statement. It is composed afresh whenever the page shows; here it can be changed, executed for a look
// at its first rows, loaded and saved. What the box holds when the sheet is confirmed is the wizard's result.
class CPageSql : public CWizardPage {
  public:
    CPageSql();
    ~CPageSql() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnSetActive() override;
    void OnOK() override;

    void OnCheck();
    void OnLoad();
    void OnSave();

    // Executes the text and shows its first rows. Errors are discarded: FALSE, and a statement that fails
    // leaves the preview as it was, one whose rows fail leaves those that came before. The connection's query
    // timeout is 999 seconds from then on.
    BOOL RunCheck(const CString& text, CGeoDatabase& database);
    BOOL FillPreviewRows(_CRecordsetEx& recordset);
    void FillPreviewHeader(const _CRecordsetEx& recordset);

  private:
    void AppendRows(_CRecordsetEx& recordset, int firstLabel);

    CString m_strSql;
    CMateupSampleGrid m_Grid;
};

}  // namespace kortavin
