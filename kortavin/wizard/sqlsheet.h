#pragma once

#include "kortavin/query/definition.h"
#include "kortavin/window/propertysheet.h"

namespace kortavin {

// The query wizard's dialog: six pages under tabs, each of which edits one part of the query definition that
// the sheet carries. It can be confirmed only while the statement page shows.
class CSqlSheet : public CPropertySheet, public query::QueryDefinition {
  public:
    explicit CSqlSheet(unsigned captionId, CWnd* parent = nullptr, unsigned selected = 0);
    explicit CSqlSheet(const char* caption, CWnd* parent = nullptr, unsigned selected = 0);
    ~CSqlSheet() override;

    // Nothing while there is no OK button.
    void EnableOkButton(BOOL enable);

    // Runs with this library's resources as the current source; the former one is current again afterwards,
    // also when an error leaves this. Otherwise as CPropertySheet's.
    int DoModal() override;
};

}  // namespace kortavin
