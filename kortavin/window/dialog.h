#pragma once

#include "kortavin/window/dataexchange.h"
#include "kortavin/window/module.h"
#include "kortavin/window/wnd.h"

namespace kortavin {

// A modal dialog made from a template. Enter presses its default button, Esc cancels.
class KORTAVIN_API CDialog : public CWnd {
  public:
    CDialog() = default;  // for InitModalIndirect
    explicit CDialog(unsigned templateId, CWnd* parent = nullptr);
    ~CDialog() override;

    // A template in memory, which must live until DoModal returns; its texts are those of `module` (null: the
    // current source).
    void InitModalIndirect(const window::DialogTemplate& dialog, CWnd* parent = nullptr,
                           const window::ResourceModule* module = nullptr);

    // Shows the dialog and runs it until EndDialog; answers what that was given. IDCANCEL when the window was
    // destroyed without; -1 when the object has a window already, or when its data could not be moved to its
    // controls, after that was shown. CResourceException when the template or a class of its controls does
    // not exist or no toolkit can be had. An error in a handler that is not the framework's ends the run and
    // is thrown.
    virtual int DoModal();
    void EndDialog(int result);

    // Pixels for dialog units, by the dialog's font.
    void MapDialogRect(CRect* rect) const;

    const window::MessageMap* GetMessageMap() const override;

  protected:
    // All controls exist. Moves data to them. TRUE: the first control with WS_TABSTOP gets the focus.
    virtual BOOL OnInitDialog();
    virtual void OnOK();      // moves data to members, then ends with IDOK
    virtual void OnCancel();  // ends with IDCANCEL

    void OnClose();

  private:
    friend class CPropertySheet;
    window::FoundDialog FindTemplate() const;
    void Open(const window::FoundDialog& found);
    void FocusFirstControl(bool byUser = false);
    int RunToEnd();

    unsigned m_templateId = 0;
    const window::DialogTemplate* m_template = nullptr;
    const window::ResourceModule* m_module = nullptr;
    CWnd* m_parent = nullptr;
    CSize m_unit{8, 16};  // the average character of the dialog's font
    std::optional<int> m_result;
};

namespace window {

// A hidden dialog window as the template says, without its controls. CResourceException as DoModal.
KORTAVIN_API WindowRecord* MakeDialogWindow(const FoundDialog& found, WindowRecord* parent);
// Makes the controls of a template in a window that is there, for dialogs and the like. Answers the size of a
// character that the dialog units stand for.
KORTAVIN_API CSize MakeControls(WindowRecord* parent, const DialogTemplate& dialog,
                                const ResourceModule& module);

KORTAVIN_API CFont DialogFont(const DialogTemplate& dialog);
// The average character of a font, four dialog units wide and eight high.
KORTAVIN_API CSize DialogUnitOf(const CFont& font);
KORTAVIN_API CRect PixelsOf(const CRect& units, CSize unit);

}  // namespace window

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CDialog;
#endif
