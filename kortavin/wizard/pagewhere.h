#pragma once

#include "kortavin/wizard/wizardpage.h"

namespace kortavin {

// The condition, by example: a column names a field, each row below holds texts such as ">10"
// that must hold together, and the rows are alternatives.
class CPageWhere : public CGridPage {
  public:
    CPageWhere();
    ~CPageWhere() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    CCatalogGrid& Grid() override { return m_Grid; }
    void SetUpGrid() override;
    void AppendRow() override;
    void StoreClause() override;

    void OnAddColumn();
    void OnAddRow() { AppendRow(); }
    void OnDeleteColumn();
    void OnDeleteRow();
    void RenumberColumns();

  private:
    CConditionGrid m_Grid;
};

}  // namespace kortavin
