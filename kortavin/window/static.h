#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

// A label, or the place for a picture that a derived class paints.
class KORTAVIN_API CStatic : public CWnd {
  public:
    ~CStatic() override;
    using CWnd::Create;
    BOOL Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id = 0xFFFF);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CStatic;
#endif
