#include <algorithm>
#include <vector>

#include "framework/window/keys.h"
#include "tests/support/memory/controls.h"

using kortavin::window::WindowKind;

namespace kortavin::testing {
namespace {

HWND DialogOf(HWND window) {
    while (window != nullptr && window->Kind() != WindowKind::Dialog)
        window = window->Parent();
    return window;
}

// Enter is a character to those who want characters; Esc only to those who want all keys.
bool IsWanted(HWND target, UINT key) {
    const auto code = static_cast<UINT>(window::Report(*target, WM_GETDLGCODE));
    const UINT needed = key == VK_TAB ? DLGC_WANTTAB : key == VK_RETURN ? DLGC_WANTCHARS : 0;
    return (code & (needed | DLGC_WANTALLKEYS)) != 0;
}

// In the order of their making, at any depth.
void AppendTabStops(std::vector<HWND>& stops, HWND parent) {
    for (const HWND child : parent->Children()) {
        const auto& native = static_cast<MemoryWindow&>(child->Native());
        if ((child->Style() & WS_TABSTOP) != 0 && native.AcceptsInput())
            stops.push_back(native.FocusPlace());
        AppendTabStops(stops, child);
    }
}

void MoveFocusByTab(HWND dialog, bool backwards) {
    std::vector<HWND> stops;
    AppendTabStops(stops, dialog);
    if (stops.empty())
        return;
    if (backwards)
        std::ranges::reverse(stops);
    auto next = std::ranges::find(stops, window::FocusWindow());
    next = next == stops.end() || next + 1 == stops.end() ? stops.begin() : next + 1;
    window::ReportFocus(*next);
}

MemoryButton* AsPushButton(HWND window) {
    if (window->Kind() != WindowKind::Button)
        return nullptr;
    auto* const button = static_cast<MemoryButton*>(&window->Native());
    return button->IsPushButton() && button->AcceptsInput() ? button : nullptr;
}

// The one that has the focus, else the default button.
MemoryButton* ButtonForEnter(HWND target, HWND dialog) {
    if (auto* const focused = AsPushButton(target))
        return focused;
    for (const HWND child : dialog->Children())
        if (auto* const button = AsPushButton(child); button != nullptr && button->IsDefault())
            return button;
    return nullptr;
}

}  // namespace

bool HandleDialogKey(HWND target, UINT key) {
    const bool isDialogKey = key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE;
    const HWND dialog = DialogOf(target);
    if (!isDialogKey || dialog == nullptr || IsWanted(target, key))
        return false;
    if (key == VK_TAB)
        MoveFocusByTab(dialog, TheDesktop().IsKeyDown(VK_SHIFT));
    else if (key == VK_ESCAPE)
        window::Report(*dialog, WM_COMMAND, IDCANCEL);
    else if (auto* const button = ButtonForEnter(target, dialog))
        button->Click();
    return true;
}

}  // namespace kortavin::testing
