#pragma once

#include "framework/window/listbox.h"
#include "wizard/wizardpage.h"

// The tables and views that the statement reads. The sheet's list of chosen names is changed at once, and is
// what the right-hand list shows.
class KORTAVIN_API CPageSelTable : public CWizardPage {
  public:
    CPageSelTable();
    ~CPageSelTable() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

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
