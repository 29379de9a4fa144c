#pragma once

#include <string_view>

#include "tests/support/memory/toolkit.h"

// What the user does. Points are in the client area of the window that is named; the mouse reaches the child
// under the point there, or the window that has the capture or got the button's press. Keys go to the focus
// window. `keys` are MK_SHIFT and MK_CONTROL, held down for the call. What a modal dialog covers, what is
// disabled and what is hidden is not reached.
namespace kortavin::testing {

// The left button. A press gives a control the focus first.
void Press(CWnd& window, CPoint point, UINT keys = 0);
void Release(CWnd& window, CPoint point, UINT keys = 0);
void Click(CWnd& window, CPoint point, UINT keys = 0);
void DoubleClick(CWnd& window, CPoint point, UINT keys = 0);  // a click, and the second one
void MoveTo(CWnd& window, CPoint point, UINT keys = 0);
// At the window's middle. One that leaves it to the default handling passes it on to its parent.
void Wheel(CWnd& window, int delta, UINT keys = 0);

// A key's press with the character that it types, its release, or both. Of a dialog's keys (Tab, Enter, Esc)
// the focus window gets those that it asks for by its dialog code. VK_SHIFT, VK_CONTROL and VK_MENU stay held
// down.
void KeyDown(UINT virtualKey, UINT keys = 0);
void KeyUp(UINT virtualKey, UINT keys = 0);
void Key(UINT virtualKey, UINT keys = 0);
// Characters, with their keys where they have any: a double-byte one comes from an input method.
void Type(std::string_view gbkText);

void MoveFocusTo(CWnd* window);  // by the desktop's own means; null: to another program
void LoseCapture();
void CloseByUser(CWnd& window);
// A request of one of a window's own bars; the position is that of the thumb.
void ScrollBy(CWnd& window, int bar, UINT request, int position = 0);
// False, and nothing happens, when it does not run.
bool FireTimer(CWnd& window, UINT_PTR id);

// Opens the list if need be and picks an item there.
void PickItem(CComboBox& combo, int index);
// Has an owner-drawn combo draw one item of its list.
void DrawListItem(CComboBox& combo, int index, PixelSurface& surface, const CRect& rect);

// Sends what was posted and paints what is invalid.
void Loop();

}  // namespace kortavin::testing
