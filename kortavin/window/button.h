#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

// A push button, check box, radio button or group box. A click notifies with BN_CLICKED.
class KORTAVIN_API CButton : public CWnd {
  public:
    ~CButton() override;
    using CWnd::Create;
    BOOL Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id);

    int GetCheck() const;  // 1: checked
    void SetCheck(int check);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CButton;
#endif
