#pragma once

#include "wizard/wizardpage.h"

// How the tables are joined: a row equates a field of one table with a field of another.
class KORTAVIN_API CPageRelation : public CGridPage {
  public:
    CPageRelation();
    ~CPageRelation() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void AppendRow() override;
    void StoreClause() override;
    bool AppendsAfter(int col) const override;

    void OnAdd() { AppendRow(); }
    void OnDelete() { DeleteFocusRow(1); }

  private:
    CTableFieldGrid m_Grid;
};
