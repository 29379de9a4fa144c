#pragma once

#include <span>

#include "kortavin/base/texts.h"
#include "kortavin/resources/dialogs.h"
#include "kortavin/wizard/cataloggrids.h"
#include "kortavin/wizard/sqlsheet.h"

namespace kortavin {

// What the wizard's pages have in common: the sheet whose part they edit, and that OK is not to be pressed on
// them.
class CWizardPage : public CPropertyPage {
  public:
    ~CWizardPage() override;
    void SetSheet(CSqlSheet* sheet) { m_pSheet = sheet; }  // before the run; not owned

  protected:
    using CPropertyPage::CPropertyPage;
    BOOL OnSetActive() override;
    BOOL OnKillActive() override;

    // Turns what the page shows into its clause, in the sheet. Called with a sheet only.
    virtual void StoreClause() {}

    CSqlSheet* m_pSheet = nullptr;
};

// A page with a grid below a row of headings. Finishing an edit in the last row appends a further one.
class CGridPage : public CWizardPage {
  public:
    ~CGridPage() override;

  protected:
    using CWizardPage::CWizardPage;
    virtual CCatalogGrid& Grid() = 0;

    void DoDataExchange(CDataExchange* exchange) override;
    BOOL OnInitDialog() override;
    BOOL OnKillActive() override;
    BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;

    virtual void SetUpGrid() = 0;  // counts and headings
    virtual void AppendRow() = 0;
    // Whether an edit in this column of the last row appends a row.
    virtual bool AppendsAfter(int col) const;

    void WriteHeading(int row, int col, base::TextId text);
    // A row at the end, as high as the first.
    int AppendEmptyRow();
    // The last row takes the texts of `columns` from the nearest row at or above it that has any of them.
    void CopyTablesDown(std::span<const int> columns);
    // Takes the focus cell's row away, unless it lies above `firstRow`, and focuses the cell above it.
    void DeleteFocusRow(int firstRow);
    void Redraw();
};

// A page of rows below one row of headings, with buttons that append a row and take the focus cell's away. A
// new row starts with the tables of the nearest one above that names any.
class CRowsPage : public CGridPage {
  public:
    ~CRowsPage() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    using CGridPage::CGridPage;
    void AppendRow() override;
    void OnAdd() { AppendRow(); }
    void OnDelete() { DeleteFocusRow(1); }

    virtual std::span<const int> TableColumns() const = 0;  // in which rows name tables
};

}  // namespace kortavin
