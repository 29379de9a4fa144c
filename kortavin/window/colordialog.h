#pragma once

#include "kortavin/window/wnd.h"

namespace kortavin {

inline constexpr DWORD CC_RGBINIT = 0x001;   // start with the given colour
inline constexpr DWORD CC_FULLOPEN = 0x002;  // the part for custom colours is open from the start
inline constexpr DWORD CC_ANYCOLOR = 0x100;

// The toolkit's modal colour chooser.
class KORTAVIN_API CColorDialog {
  public:
    explicit CColorDialog(COLORREF initial = 0, DWORD flags = 0, CWnd* parent = nullptr);
    // IDOK or IDCANCEL. CResourceException when it cannot open.
    int DoModal();
    COLORREF GetColor() const { return m_color; }  // chosen; the initial one before

  private:
    COLORREF m_color;
    DWORD m_flags;
    CWnd* m_parent;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CC_ANYCOLOR;
using kortavin::CC_FULLOPEN;
using kortavin::CC_RGBINIT;
using kortavin::CColorDialog;
#endif
