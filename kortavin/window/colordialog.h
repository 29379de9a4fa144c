#pragma once

#include "framework/window/wnd.h"

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
