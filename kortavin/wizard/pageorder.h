#pragma once

#include "kortavin/wizard/wizardpage.h"

namespace kortavin {

// The sort keys, one a row: a field and its direction.
class CPageOrder : public CRowsPage {
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

}  // namespace kortavin
