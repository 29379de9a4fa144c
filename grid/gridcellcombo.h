#pragma once

#include "framework/base/arrays.h"
#include "framework/window/combobox.h"
#include "framework/window/edit.h"
#include "grid/gridctrl.h"

class CGridCellCombo;

// The edit field of a list editor. What ends editing it passes on to its combo box.
class KORTAVIN_API CGridComboEdit : public CEdit {
  public:
    ~CGridComboEdit() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

  protected:
    void OnKillFocus(CWnd* pNewWnd);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnSysChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    UINT OnGetDlgCode();
};

// A drop-down list laid over a cell, with an edit field (CBS_DROPDOWN) or without (CBS_DROPDOWNLIST). It owns
// itself, as CGridCellEdit does. Tab, Enter and Esc end it when they are released, so that they can first
// close its list.
class KORTAVIN_API CGridCellCombo : public CComboBox {
  public:
    // Over `rect` (last pixels included) of the grid's client area, wide enough for the widest item. The
    // first item that begins with the text is selected, ASCII letters folded; else the field shows the text.
    static void Open(CWnd* pParent, const CRect& rect, DWORD dwStyle, UINT nID, int row, int col,
                     const CStringArray& items, const CString& initText, UINT nFirstChar);
    ~CGridCellCombo() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

    // Reports the text to the grid and has the window closed.
    void EndEdit();

  protected:
    void PostNcDestroy() override;
    void OnKillFocus(CWnd* pNewWnd);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnSysChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    UINT OnGetDlgCode();

  private:
    CGridCellCombo(int row, int col, const CString& initText);
    void Fill(const CRect& rect, const CStringArray& items);
    void Begin(UINT firstChar);
    void LeaveBy(UINT key);

    CGridComboEdit m_edit;
    int m_numLines = 4;  // cell heights that the list adds below the cell
    CString m_initialText;
    int m_row;
    int m_col;
    UINT m_lastChar = 0;  // the key that ended editing
    BOOL m_exitOnArrows = FALSE;
    bool m_hasEnded = false;
};
