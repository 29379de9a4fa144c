#include <utility>

#include "framework/window/combobox.h"
#include "framework/window/window.h"

namespace kortavin::window {
namespace {

constinit HWND s_focus = nullptr;
constinit HWND s_capture = nullptr;

WPARAM ParamOf(HWND window) {
    return reinterpret_cast<WPARAM>(window);
}

// Tells the loser, lets `take` do what the toolkit must, then tells the gainer. A handler that moves the
// focus on ends the matter for the windows behind it.
template <class Take>
void MoveFocus(HWND gainer, bool byUser, Take take) {
    const HWND loser = std::exchange(s_focus, gainer);
    const auto isOvertaken = [gainer] { return s_focus != gainer; };
    if (loser == gainer)
        return;
    SendMessage(loser, WM_KILLFOCUS, ParamOf(gainer));
    if (isOvertaken())
        return;
    take();
    if (!isOvertaken())
        SendMessage(gainer, WM_SETFOCUS, ParamOf(IsWindow(loser) ? loser : nullptr), byUser);
}

}  // namespace

HWND FocusWindow() {
    return s_focus;
}

// A combo box with an edit field leaves the focus to that.
void SetFocusTo(HWND gainer, bool byUser) {
    if (gainer != nullptr && (!IsWindow(gainer) || gainer->IsDying()))
        return;
    if (gainer != nullptr && gainer->Kind() == WindowKind::ComboBox)
        if (const HWND field = gainer->Child(kComboEditId); field != nullptr)
            gainer = field;
    const auto take = [gainer] {
        if (gainer != nullptr)
            gainer->Native().TakeFocus();
    };
    if (gainer == s_focus)
        take();
    else
        MoveFocus(gainer, byUser, take);
}

void ReportFocus(HWND gainer) noexcept {
    Guarded([gainer] {
        const bool canTake = IsWindow(gainer) && !gainer->IsDying();
        MoveFocus(canTake ? gainer : nullptr, true, [] {});
    });
}

HWND CaptureWindow() {
    return s_capture;
}

void SetCaptureTo(HWND gainer) {
    if (gainer != nullptr && (!IsWindow(gainer) || gainer->IsDying()))
        return;
    const HWND loser = std::exchange(s_capture, gainer);
    if (loser == gainer)
        return;
    if (IsWindow(loser))
        loser->Native().ReleaseCapture();
    if (gainer != nullptr)
        gainer->Native().SetCapture();
    SendMessage(loser, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(gainer));
}

void ReportCaptureLost() noexcept {
    Guarded([] { SendMessage(std::exchange(s_capture, nullptr), WM_CAPTURECHANGED); });
}

void LeaveFocusAndCapture(HWND window) noexcept {
    if (s_capture == window)
        Guarded([] { SetCaptureTo(nullptr); });
    if (s_focus == window)
        Guarded([] { MoveFocus(nullptr, false, [] {}); });
}

}  // namespace kortavin::window
