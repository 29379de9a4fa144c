#pragma once

#include "kortavin/wizard/wizardpage.h"

namespace kortavin {

// How the tables are joined: a row equates a field of one table with a field of another.
class CPageRelation : public CRowsPage {
  public:
    CPageRelation();
    ~CPageRelation() override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void StoreClause() override;
    std::span<const int> TableColumns() const override;
    bool AppendsAfter(int col) const override;

  private:
    CTableFieldGrid m_Grid;
};

}  // namespace kortavin
