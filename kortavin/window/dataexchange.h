#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

// One pass of moving data between a dialog's controls and its members.
class KORTAVIN_API CDataExchange {
  public:
    CDataExchange(CWnd* dialog, BOOL save) : m_bSaveAndValidate(save), m_pDlgWnd(dialog) {}

    // The control's window. CNotSupportedException when the dialog has none of that id.
    window::WindowRecord* PrepareCtrl(int id) const;

    BOOL m_bSaveAndValidate;  // TRUE: from controls to members
    CWnd* m_pDlgWnd;
};

// Attaches the object to the dialog's control, unless it has a window. CNotSupportedException when the dialog
// has no such control, or another object is attached to it.
KORTAVIN_API void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

// Moves a control's text. CNotSupportedException when the dialog has no such control.
KORTAVIN_API void DDX_Text(CDataExchange* exchange, int id, CString& text);

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CDataExchange;
using kortavin::DDX_Control;
using kortavin::DDX_Text;
#endif
