#pragma once

#include "wizard/wizardpage.h"

// The fields that the statement returns, one a row.
class KORTAVIN_API CPageFields : public CRowsPage {
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
