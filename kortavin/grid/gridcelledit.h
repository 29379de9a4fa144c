#pragma once

#include "kortavin/grid/celleditor.h"
#include "kortavin/window/edit.h"

namespace kortavin {

// A one-line edit box laid over a cell. Opened by typing, it ends on the arrow and page keys too; opened by
// the mouse, it uses them itself unless Ctrl is held.
class KORTAVIN_API CGridCellEdit : public grid::CellEditor<CEdit> {
  public:
    // Over `rect` (last pixels included) of the grid's client area. nFirstChar is what opened it: VK_LBUTTON,
    // a character, or a key.
    static void Open(CWnd* pParent, const CRect& rect, DWORD dwStyle, UINT nID, int row, int col,
                     const CString& initText, UINT nFirstChar);
    ~CGridCellEdit() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);

  private:
    CGridCellEdit(const CRect& rect, int row, int col, const CString& initText, UINT nFirstChar);
    void Begin(UINT firstChar);
    void GrowToText();

    BOOL m_exitOnArrows;
    CRect m_rect;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGridCellEdit;
#endif
