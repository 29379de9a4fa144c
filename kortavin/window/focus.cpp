#include <utility>

#include "kortavin/window/combobox.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin::window {
namespace {

constinit WindowRecord* s_focus = nullptr;
constinit WindowRecord* s_capture = nullptr;

WPARAM ParamOf(WindowRecord* window) {
    return reinterpret_cast<WPARAM>(window);
}

// Tells the loser, lets `take` do what the toolkit must, then tells the gainer. A handler that moves the
// focus on ends the matter for the windows behind it.
template <class Take>
void MoveFocus(WindowRecord* gainer, bool byUser, Take take) {
    WindowRecord* const loser = std::exchange(s_focus, gainer);
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

WindowRecord* FocusWindow() {
    return s_focus;
}

// A combo box with an edit field leaves the focus to that.
void SetFocusTo(HWND window, bool byUser) {
    WindowRecord* gainer = RecordOf(window);
    if (gainer != nullptr && (!IsWindow(gainer) || gainer->IsDying()))
        return;
    if (gainer != nullptr && gainer->Kind() == WindowKind::ComboBox)
        if (WindowRecord* const field = gainer->Child(kComboEditId); field != nullptr)
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

void ReportFocus(HWND window) noexcept {
    Guarded([gainer = RecordOf(window)] {
        const bool canTake = IsWindow(gainer) && !gainer->IsDying();
        MoveFocus(canTake ? gainer : nullptr, true, [] {});
    });
}

WindowRecord* CaptureWindow() {
    return s_capture;
}

void SetCaptureTo(HWND window) {
    WindowRecord* const gainer = RecordOf(window);
    if (gainer != nullptr && (!IsWindow(gainer) || gainer->IsDying()))
        return;
    WindowRecord* const loser = std::exchange(s_capture, gainer);
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
