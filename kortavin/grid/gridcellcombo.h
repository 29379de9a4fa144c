#pragma once

#include "kortavin/base/arrays.h"
#include "kortavin/grid/celleditor.h"
#include "kortavin/window/combobox.h"
#include "kortavin/window/edit.h"

namespace kortavin {

// The edit field of a list editor. What ends editing it passes on to its combo box.
class KORTAVIN_API CGridComboEdit : public grid::KeyKeeper<CEdit> {
  public:
    ~CGridComboEdit() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    void OnKillFocus(CWnd* pNewWnd);
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);
};

// A drop-down list laid over a cell, with an edit field (CBS_DROPDOWN) or without (CBS_DROPDOWNLIST). Tab,
// Enter and Esc end it when they are released, so that they can first close its list.
class KORTAVIN_API CGridCellCombo : public grid::CellEditor<CComboBox> {
  public:
    // Over `rect` (last pixels included) of the grid's client area, wide enough for the widest item. The
    // first item that begins with the text is selected, ASCII letters folded; else the field shows the text.
    static void Open(CWnd* pParent, const CRect& rect, DWORD dwStyle, UINT nID, int row, int col,
                     const CStringArray& items, const CString& initText, UINT nFirstChar);
    ~CGridCellCombo() override;
    const window::MessageMap* GetMessageMap() const override;

  protected:
    bool HoldsFocusItself() const override;
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags);

  private:
    CGridCellCombo(int row, int col, const CString& initText);
    void Fill(const CRect& rect, const CStringArray& items);
    void Begin(UINT firstChar);

    CGridComboEdit m_edit;
    int m_numLines = 4;  // cell heights that the list adds below the cell
    BOOL m_exitOnArrows = FALSE;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGridCellCombo;
using kortavin::CGridComboEdit;
#endif
