#pragma once

#include "wizard/wizardpage.h"

// The sort keys, one a row: a field and its direction.
class KORTAVIN_API CPageOrder : public CRowsPage {
  public:
    CPageOrder();
    ~CPageOrder() override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void StoreClause() override;
    std::span<const int> TableColumns() const override;

  private:
    CSortGrid m_Grid;
};
