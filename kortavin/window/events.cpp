#include "kortavin/window/windowrecord.h"
#include "kortavin/window/wnd.h"

namespace kortavin::window {
namespace {

// Drawing and measuring requests are the control's own first, as its notifications are.
bool IsRequestToControl(UINT message) {
    return message == WM_DRAWITEM || message == WM_MEASUREITEM;
}

}  // namespace

LRESULT WindowRecord::OfferToControl(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (m_object != nullptr && m_object->OnChildNotify(message, wParam, lParam, &result))
        return result;
    return SendMessage(IsWindow(this) ? Receiver() : nullptr, message, wParam, lParam);
}

LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!IsWindow(window))
        return 0;
    if (CWnd* const object = RecordOf(window)->Object(); object != nullptr)
        return object->WindowProc(message, wParam, lParam);
    return HandleByDefault(RecordOf(window), message, wParam, lParam);
}

LRESULT HandleByDefault(WindowRecord* window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            window->Destroy();
            return 0;
        case WM_GETFONT:
            return reinterpret_cast<LRESULT>(&window->Font());
        case WM_SETFONT:
            window->SetFont(*reinterpret_cast<const CFont*>(wParam));
            window->Native().SetFont(window->Font());
            if (lParam != 0)
                window->Native().Invalidate(nullptr);
            return 0;
        case WM_COMMAND:
        case WM_NOTIFY:
        case WM_DESTROY:
        case WM_NCDESTROY:
            return 0;
        default:
            return window->Native().DefaultProc(message, wParam, lParam);
    }
}

LRESULT NotifyReceiver(HWND control, WORD code) {
    if (!IsWindow(control))
        return 0;
    WindowRecord& record = *RecordOf(control);
    return record.OfferToControl(WM_COMMAND, MakeWParam(static_cast<WORD>(record.Id()), code),
                                 reinterpret_cast<LPARAM>(control));
}

LRESULT Report(WindowRecord& window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    LRESULT result = 0;
    Guarded([&] {
        result = IsRequestToControl(message) ? window.OfferToControl(message, wParam, lParam)
                                             : SendMessage(&window, message, wParam, lParam);
    });
    return result;
}

void ReportNotification(WindowRecord& control, WORD code) noexcept {
    Guarded([&] { NotifyReceiver(&control, code); });
}

void ReportGone(WindowRecord& window) noexcept {
    window.Destroy();
}

}  // namespace kortavin::window
