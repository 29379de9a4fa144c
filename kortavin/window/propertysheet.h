#pragma once

#include <vector>

#include "kortavin/window/dialog.h"

namespace kortavin {

namespace window {
class NativeTabs;
}

class CPropertySheet;

// One page of a property sheet: the controls of a template, made when the page is first to show. The
// template's caption is the text of the page's tab. Not run by itself: DoModal and EndDialog are the sheet's.
class KORTAVIN_API CPropertyPage : public CDialog {
  public:
    explicit CPropertyPage(unsigned templateId);
    ~CPropertyPage() override;

  protected:
    friend class CPropertySheet;

    CPropertySheet* GetParentSheet() const { return m_propertySheet; }  // null outside a run

    // As of a dialog, the first time that the page is to show.
    BOOL OnInitDialog() override;
    // The page is about to show; FALSE: the former one stays.
    virtual BOOL OnSetActive();
    // Another page, or the OK button, is about to take over. Moves data to members. FALSE: the page stays.
    virtual BOOL OnKillActive();
    // The sheet was confirmed; called for each page that has shown. OnCancel is not called.
    void OnOK() override;
    void OnCancel() override;

  private:
    CPropertySheet* m_propertySheet = nullptr;
    bool m_isSetUp = false;
};

// A modal dialog of pages under tabs, with an OK and a Cancel button (IDOK, IDCANCEL).
class KORTAVIN_API CPropertySheet : public CDialog {
  public:
    // The caption as a text or as the number of one in the resources. `selected` is the page shown first.
    explicit CPropertySheet(unsigned captionId, CWnd* parent = nullptr, unsigned selected = 0);
    explicit CPropertySheet(const char* caption, CWnd* parent = nullptr, unsigned selected = 0);
    ~CPropertySheet() override;

    // Before the run. The page is not owned and must live until DoModal returns.
    void AddPage(CPropertyPage* page);
    int GetPageCount() const { return static_cast<int>(m_pages.size()); }
    CPropertyPage* GetPage(int index) const;         // null outside
    int GetActiveIndex() const { return m_active; }  // -1: none shows
    // As the user does it. FALSE when a page refuses, for an index that does not exist, and outside a run.
    BOOL SetActivePage(int index);

    // As a dialog's. Throws CResourceException when a page's template does not exist. A sheet without pages
    // answers -1.
    int DoModal() override;

    const window::MessageMap* GetMessageMap() const override;

  protected:
    BOOL OnInitDialog() override;
    // Leaves the page that shows, confirms every page that has shown, and ends. Nothing while the button is
    // disabled.
    void OnOK() override;

    void OnTabChosen();

  private:
    std::vector<window::FoundDialog> FindTemplates() const;
    window::NativeTabs& Tabs() const;
    CRect MakePages();
    void MakeButtons(const CRect& tabs);
    void SetUp(CPropertyPage& page, const window::FoundDialog& found);
    bool Activate(int index);
    void ShowOnly(int index, bool byKeys = false);
    BOOL TurnTo(int index, bool byKeys);

    CString m_caption;
    CWnd* m_sheetParent;
    int m_first;
    int m_active = -1;
    std::vector<CPropertyPage*> m_pages;
    std::vector<window::FoundDialog> m_templates;  // of the pages, during a run
    window::DialogTemplate m_frame;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CPropertyPage;
using kortavin::CPropertySheet;
#endif
