#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

inline constexpr int LB_ERR = -1;

// A list of texts, at most one of them selected, in the order in which they were added (with LBS_SORT: in the
// order of their bytes). What the program selects is not notified; what the user selects is, by
// LBN_SELCHANGE, and a double click by LBN_DBLCLK, both for LBS_NOTIFY only.
class KORTAVIN_API CListBox : public CWnd {
  public:
    ~CListBox() override;
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);

    int GetCount() const;             // 0 without a window
    int AddString(const char* text);  // answers the index, LB_ERR without a window
    int DeleteString(UINT index);     // answers how many are left
    void ResetContent();
    int GetText(int index, CString& text) const;  // answers the length in bytes; LB_ERR: no such item
    int GetCurSel() const;                        // LB_ERR: none
    int SetCurSel(int index);  // LB_ERR for -1 and for an index that does not exist: none is selected
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CListBox;
using kortavin::LB_ERR;
#endif
