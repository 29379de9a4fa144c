#pragma once

#include "kortavin/wizard/wizardpage.h"

namespace kortavin {

// The fields that the statement returns, one a row.
class CPageFields : public CRowsPage {
  public:
    CPageFields();
    ~CPageFields() override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void StoreClause() override;
    std::span<const int> TableColumns() const override;

  private:
    CTableFieldGrid m_Grid;
};

}  // namespace kortavin
