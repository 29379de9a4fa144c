#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

inline constexpr int CB_ERR = -1;

// The control id of the edit field of a CBS_DROPDOWN combo box, a child window of it.
inline constexpr int kComboEditId = 1001;

// A drop-down box: a field and a list. Items are not sorted. What the program selects is not notified; what
// the user selects is, by CBN_SELCHANGE. An owner-drawn one (CBS_OWNERDRAWFIXED) asks MeasureItem once, when
// the object is attached, and DrawItem for every item that shows and for its selection field.
class KORTAVIN_API CComboBox : public CWnd {
  public:
    ~CComboBox() override;
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);

    int GetCount() const;
    int AddString(const char* text);                // answers the index, CB_ERR without a window
    int InsertString(int index, const char* text);  // -1: at the end
    int DeleteString(UINT index);                   // answers how many are left
    void ResetContent();
    int GetLBText(int index, CString& text) const;  // answers the length in bytes
    int GetCurSel() const;                          // CB_ERR: none
    int SetCurSel(int index);  // CB_ERR for -1 and for an index that does not exist: none is selected
    // The first item after `startAfter` (-1: from the start, wrapping round) that begins with the text; ASCII
    // letters fold. An empty text matches nothing. FindStringExact asks for the whole text.
    int FindString(int startAfter, const char* text) const;
    int FindStringExact(int startAfter, const char* text) const;
    int SelectString(int startAfter, const char* text);  // CB_ERR: nothing changes

    int SetItemHeight(int index, UINT height);  // -1: of the selection field; else of all items. Pixels
    int GetItemHeight(int index) const;
    void SetDroppedWidth(UINT width);
    void ShowDropDown(BOOL show = TRUE);
    BOOL GetDroppedState() const;
    BOOL SetEditSel(int first, int last);
    void SetItemAccessibleName(int index, const char* name);

    virtual void MeasureItem(LPMEASUREITEMSTRUCT request);
    virtual void DrawItem(LPDRAWITEMSTRUCT request);

  protected:
    void PreSubclassWindow() override;
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CB_ERR;
using kortavin::CComboBox;
using kortavin::kComboEditId;
#endif
