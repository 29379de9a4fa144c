#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

// Messages to edit boxes and to the edit field of a combo box, which the toolkit answers. Places in the text
// are byte offsets.
inline constexpr UINT EM_GETSEL = 0x00B0;       // answers the two ends as LOWORD and HIWORD
inline constexpr UINT EM_SETSEL = 0x00B1;       // from wParam to lParam; (0, -1): all; (-1, ...): none
inline constexpr UINT EM_SCROLLCARET = 0x00B7;  // the caret comes into view

inline constexpr WORD EN_SETFOCUS = 0x0100;
inline constexpr WORD EN_KILLFOCUS = 0x0200;
inline constexpr WORD EN_CHANGE = 0x0300;  // by the user

// A field for typing, of one line or, with ES_MULTILINE, of several that end in CR LF.
class KORTAVIN_API CEdit : public CWnd {
  public:
    ~CEdit() override;
    using CWnd::Create;
    BOOL Create(DWORD style, const CRect& rect, CWnd* parent, UINT id);

    // The caret comes to the end of the selection, and into view.
    void SetSel(int first, int last);
    void GetSel(int& first, int& last);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CEdit;
using kortavin::EM_GETSEL;
using kortavin::EM_SCROLLCARET;
using kortavin::EM_SETSEL;
using kortavin::EN_CHANGE;
using kortavin::EN_KILLFOCUS;
using kortavin::EN_SETFOCUS;
#endif
