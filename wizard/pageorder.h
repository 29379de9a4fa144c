#pragma once

#include "wizard/wizardpage.h"

// The sort keys, one a row: a field and its direction.
class KORTAVIN_API CPageOrder : public CGridPage {
  public:
    CPageOrder();
    ~CPageOrder() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void AppendRow() override;
    void StoreClause() override;

    void OnAdd() { AppendRow(); }
    void OnDelete() { DeleteFocusRow(1); }

  private:
    CSortGrid m_Grid;
};
