#pragma once

#include "wizard/wizardpage.h"

// The fields that the statement returns, one a row.
class KORTAVIN_API CPageFields : public CGridPage {
  public:
    CPageFields();
    ~CPageFields() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void AppendRow() override;
    void StoreClause() override;

    void OnAdd() { AppendRow(); }
    void OnDelete() { DeleteFocusRow(1); }

  private:
    CTableFieldGrid m_Grid;
};
