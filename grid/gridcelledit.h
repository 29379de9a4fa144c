#pragma once

#include "framework/window/edit.h"
#include "grid/gridctrl.h"

// A one-line edit box laid over a cell. It owns itself: it closes when it loses the focus, after telling its
// grid, and is gone with its window. Opened by typing, it ends on the arrow and page keys too; opened by the
// mouse, it uses them itself unless Ctrl is held.
class KORTAVIN_API CGridCellEdit : public CEdit {
  public:
    // Over `rect` (last pixels included) of the grid's client area. nFirstChar is what opened it: VK_LBUTTON,
    // a character, or a key.
    static void Open(CWnd* pParent, const CRect& rect, DWORD dwStyle, UINT nID, int row, int col,
                     const CString& initText, UINT nFirstChar);
    ~CGridCellEdit() override;
    const kortavin::window::MessageMap* GetMessageMap() const override;

    // Reports the text to the grid and has the window closed.
    void EndEdit();

  protected:
    void PostNcDestroy() override;
    void OnKillFocus(CWnd* pNewWnd);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnSysChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    UINT OnGetDlgCode();

  private:
    CGridCellEdit(const CRect& rect, int row, int col, const CString& initText, UINT nFirstChar);
    void Begin(UINT firstChar);
    void LeaveBy(UINT key);
    void GrowToText();

    int m_row;
    int m_col;
    CString m_initialText;
    UINT m_lastChar = 0;  // the key that ended editing
    BOOL m_exitOnArrows;
    CRect m_rect;
    bool m_hasEnded = false;
};
