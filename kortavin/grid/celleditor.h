#pragma once

#include <utility>

#include "kortavin/grid/gridtypes.h"
#include "kortavin/window/wnd.h"

// What the in-place editors share.
namespace kortavin::grid {

// What the first character does to an editor's text.
struct FirstCharacter {
    bool selectsAll;  // else the caret goes to the end
    bool isTyped;     // the editor gets it as WM_CHAR
};
// A list editor treats Tab and the blank as characters.
FirstCharacter EffectOfFirst(UINT firstChar, bool isList);

// PgUp, PgDn and the arrows, by which an editor is left if Ctrl is held or if that is how it was opened.
bool IsLeavingKey(UINT key, bool evenWithoutCtrl);

// Tells the grid the new text, and has the editor closed. The editor may be gone afterwards.
KORTAVIN_API void ReportEdit(CWnd& editor, CGridPos cell, const CString& text, UINT lastChar);

// A control whose keys are all its own: neither Tab, Enter and Esc nor Alt with a letter are the dialog's.
template <class Control>
class KORTAVIN_API KeyKeeper : public Control {
  public:
    const window::MessageMap* GetMessageMap() const override {
        using namespace window;
        static constexpr MessageEntry kEntries[] = {
            OnMessage<WM_SYSCHAR, &KeyKeeper::OnSysChar>(),
            OnMessage<WM_GETDLGCODE, &KeyKeeper::OnGetDlgCode>(),
        };
        static const MessageMap map{Control::GetMessageMap(), kEntries};
        return &map;
    }

  protected:
    void OnSysChar(UINT, UINT, UINT) {}
    UINT OnGetDlgCode() { return DLGC_WANTALLKEYS; }
};

// An edit or combo box laid over a cell. It owns itself: it closes when it loses the focus, after telling its
// grid, and is gone with its window. Taking the focus away is what ends the edit.
template <class Control>
class KORTAVIN_API CellEditor : public KeyKeeper<Control> {
  public:
    const window::MessageMap* GetMessageMap() const override {
        static constexpr window::MessageEntry kEntries[] = {
            window::OnMessage<WM_KILLFOCUS, &CellEditor::OnKillFocus>()};
        static const window::MessageMap map{KeyKeeper<Control>::GetMessageMap(), kEntries};
        return &map;
    }

    // Reports the text to the grid, after Esc the one that the cell had, and has the window closed.
    void EndEdit() {
        if (this->m_hWnd != nullptr && !std::exchange(m_hasEnded, true))
            ReportEdit(*this, m_cell, m_lastChar == VK_ESCAPE ? m_initialText : this->GetWindowText(),
                       m_lastChar);
    }

  protected:
    CellEditor(CGridPos cell, const CString& initText) : m_cell(cell), m_initialText(initText) {}
    void PostNcDestroy() override { delete this; }
    // Whether its own loss of the focus ends it.
    virtual bool HoldsFocusItself() const { return true; }
    void OnKillFocus(CWnd*) {
        const HWND window = this->m_hWnd;
        this->Default();
        if (window::IsWindow(window) && HoldsFocusItself())
            EndEdit();
    }
    void LeaveBy(UINT key) {
        if (key == VK_ESCAPE)
            this->SetWindowText(m_initialText);
        m_lastChar = key;
        this->GetParent()->SetFocus();
    }
    const CString& InitialText() const { return m_initialText; }

  private:
    CGridPos m_cell;
    CString m_initialText;
    UINT m_lastChar = 0;  // the key that ended editing
    bool m_hasEnded = false;
};

}  // namespace kortavin::grid
