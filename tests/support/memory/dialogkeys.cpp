#include <algorithm>
#include <vector>

#include "kortavin/window/keys.h"
#include "tests/support/memory/controls.h"

using kortavin::window::WindowKind;

namespace kortavin::testing {
namespace {

window::WindowRecord* DialogOf(window::WindowRecord* window) {
    while (window != nullptr && window->Kind() != WindowKind::Dialog)
        window = window->Parent();
    return window;
}

// Enter is a character to those who want characters; Esc only to those who want all keys.
bool IsWanted(window::WindowRecord* target, UINT key) {
    const auto code = static_cast<UINT>(window::Report(*target, WM_GETDLGCODE));
    const UINT needed = key == VK_TAB ? DLGC_WANTTAB : key == VK_RETURN ? DLGC_WANTCHARS : 0;
    return (code & (needed | DLGC_WANTALLKEYS)) != 0;
}

// In the order of their making, at any depth.
void AppendTabStops(std::vector<window::WindowRecord*>& stops, window::WindowRecord* parent) {
    for (window::WindowRecord* const child : parent->Children()) {
        const auto& native = static_cast<MemoryWindow&>(child->Native());
        if ((child->Style() & WS_TABSTOP) != 0 && native.AcceptsInput())
            stops.push_back(native.FocusPlace());
        AppendTabStops(stops, child);
    }
}

void MoveFocusByTab(window::WindowRecord* dialog, bool backwards) {
    std::vector<window::WindowRecord*> stops;
    AppendTabStops(stops, dialog);
    if (stops.empty())
        return;
    if (backwards)
        std::ranges::reverse(stops);
    auto next = std::ranges::find(stops, window::FocusWindow());
    next = next == stops.end() || next + 1 == stops.end() ? stops.begin() : next + 1;
    window::ReportFocus(*next);
}

MemoryButton* AsPushButton(window::WindowRecord* window) {
    if (window->Kind() != WindowKind::Button)
        return nullptr;
    auto* const button = static_cast<MemoryButton*>(&window->Native());
    return button->IsPushButton() && button->AcceptsInput() ? button : nullptr;
}

// The one that has the focus, else the default button.
MemoryButton* ButtonForEnter(window::WindowRecord* target, window::WindowRecord* dialog) {
    if (auto* const focused = AsPushButton(target))
        return focused;
    for (window::WindowRecord* const child : dialog->Children())
        if (auto* const button = AsPushButton(child); button != nullptr && button->IsDefault())
            return button;
    return nullptr;
}

}  // namespace

bool HandleDialogKey(window::WindowRecord* target, UINT key) {
    const bool isDialogKey = key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE;
    window::WindowRecord* const dialog = DialogOf(target);
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
