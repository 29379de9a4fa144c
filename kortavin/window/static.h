#pragma once

#include "framework/window/wnd.h"

// A label, or the place for a picture that a derived class paints.
class KORTAVIN_API CStatic : public CWnd {
  public:
    ~CStatic() override;
    using CWnd::Create;
    BOOL Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id = 0xFFFF);
};
