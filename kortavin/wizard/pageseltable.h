#pragma once

#include "kortavin/window/listbox.h"
#include "kortavin/wizard/wizardpage.h"

namespace kortavin {

// The tables and views that the statement reads. The sheet's list of chosen names is changed at once, and is
// what the right-hand list shows.
class CPageSelTable : public CWizardPage {
  public:
    CPageSelTable();
    ~CPageSelTable() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    void StoreClause() override;

    void OnSelectTable();
    void OnRemoveTable();

  private:
    void FillAvailableList();
    void FillSelectedList();

    CListBox m_SelectedList;
    CListBox m_AvailableList;
};

}  // namespace kortavin
