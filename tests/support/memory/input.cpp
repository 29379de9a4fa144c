#include "tests/support/memory/input.h"

#include <cctype>

#include "kortavin/base/codepage.h"
#include "kortavin/window/combobox.h"
#include "kortavin/window/keys.h"
#include "tests/support/memory/controls.h"

using kortavin::window::IsWindow;
using kortavin::window::Report;

namespace kortavin::testing {
namespace {

// Shift and Ctrl, held down for the time of one call.
class HeldKeys {
  public:
    explicit HeldKeys(UINT keys) {
        for (const auto& [flag, key] : {std::pair(MK_SHIFT, VK_SHIFT), std::pair(MK_CONTROL, VK_CONTROL)}) {
            if ((keys & flag) == 0 || TheDesktop().IsKeyDown(key))
                continue;
            TheDesktop().HoldKey(key, nullptr);
            m_held.push_back(key);
        }
    }
    ~HeldKeys() {
        for (const UINT key : m_held)
            TheDesktop().LiftKey(key);
    }
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;

  private:
    std::vector<UINT> m_held;
};

UINT MouseKeys() {
    const auto flagOf = [](UINT key, UINT flag) { return TheDesktop().IsKeyDown(key) ? flag : 0; };
    return flagOf(VK_LBUTTON, MK_LBUTTON) | flagOf(VK_SHIFT, MK_SHIFT) | flagOf(VK_CONTROL, MK_CONTROL);
}

// Of windows that overlap, the one made last lies on top.
MemoryWindow* WindowAt(MemoryWindow& window, CPoint screenPoint) {
    const auto& children = window.Record().Children();
    for (auto child = children.rbegin(); child != children.rend(); ++child) {
        auto& native = static_cast<MemoryWindow&>((*child)->Native());
        if (native.IsHitBy(native.ScreenToClient(screenPoint)))
            return WindowAt(native, screenPoint);
    }
    return &window;
}

// Moves the pointer and answers the window that hears of it; null for none.
MemoryWindow* MouseTarget(CWnd& window, CPoint point) {
    MemoryToolkit& desktop = TheDesktop();
    MemoryWindow& named = NativeOf(window);
    const CPoint screenPoint = desktop.MovePointer(named.ClientToScreen(point));
    const bool isOn = CRect({0, 0}, named.GetClientSize()).PtInRect(named.ScreenToClient(screenPoint));
    MemoryWindow* target = desktop.Captor() != nullptr ? desktop.Captor() : desktop.PressedWindow();
    if (target == nullptr && isOn && named.AcceptsInput())
        target = WindowAt(named, screenPoint);
    return target != nullptr && desktop.IsReachable(*target) ? target : nullptr;
}

void ReportMouse(MemoryWindow& target, UINT message) {
    Report(target.Record(), message, MouseKeys(),
           MakePointParam(target.ScreenToClient(TheDesktop().PointerPosition())));
}

void PressButton(CWnd& window, CPoint point, UINT keys, UINT message) {
    const HeldKeys held(keys);
    TheDesktop().HoldKey(VK_LBUTTON, nullptr);
    MemoryWindow* const target = MouseTarget(window, point);
    if (target == nullptr)
        return;
    window::WindowRecord* const record = &target->Record();
    if (target->TakesFocusByClick())
        window::ReportFocus(target->FocusPlace());
    if (!IsWindow(record))
        return;
    TheDesktop().SetPressedWindow(target);
    ReportMouse(*target, message);
}

// The character that a key types; 0 for none.
UINT CharacterOf(UINT key) {
    const bool isControl = TheDesktop().IsKeyDown(VK_CONTROL);
    const bool isShift = TheDesktop().IsKeyDown(VK_SHIFT);
    if (key >= 'A' && key <= 'Z')
        return isControl ? key - 'A' + 1 : isShift ? key : key + 'a' - 'A';
    const bool isCharacter = (key >= '0' && key <= '9') || key == VK_SPACE || key == VK_RETURN ||
                             key == VK_TAB || key == VK_BACK || key == VK_ESCAPE;
    return isCharacter ? key : 0;
}

// The character goes where its key went.
void ReportKey(UINT key, UINT character) {
    window::WindowRecord* const target = TheDesktop().KeyTarget();
    TheDesktop().HoldKey(key, nullptr);
    if (target == nullptr || HandleDialogKey(target, key) || !IsWindow(target))
        return;
    TheDesktop().HoldKey(key, target);
    Report(*target, WM_KEYDOWN, key, 1);
    if (character != 0 && IsWindow(target))
        Report(*target, TheDesktop().IsKeyDown(VK_MENU) ? WM_SYSCHAR : WM_CHAR, character, 1);
}

// By an input method where it is a double-byte one: the composition goes on where the focus is then.
void ReportComposed(UINT character) {
    window::WindowRecord* target = TheDesktop().KeyTarget();
    if (target != nullptr && character > 0xFF) {
        Report(*target, WM_IME_STARTCOMPOSITION);
        target = TheDesktop().KeyTarget();
    }
    if (target != nullptr)
        Report(*target, WM_CHAR, character, 1);
}

UINT CharacterCode(std::string_view bytes) {
    UINT code = 0;
    for (const char byte : bytes)
        code = code << 8 | static_cast<BYTE>(byte);
    return code;
}

// The key that types a character without others; 0 for none.
UINT KeyOf(UINT character) {
    const bool isKey =
        character <= VK_SPACE || (character < 0x80 && std::isalnum(static_cast<int>(character)) != 0);
    return isKey ? static_cast<UINT>(std::toupper(static_cast<int>(character))) : 0;
}

MemoryCombo& NativeCombo(CComboBox& combo) {
    return dynamic_cast<MemoryCombo&>(NativeOf(combo));
}

}  // namespace

void Press(CWnd& window, CPoint point, UINT keys) {
    PressButton(window, point, keys, WM_LBUTTONDOWN);
}

void Release(CWnd& window, CPoint point, UINT keys) {
    const HeldKeys held(keys);
    TheDesktop().LiftKey(VK_LBUTTON);
    if (window.m_hWnd == nullptr)
        return;  // the press took it away
    MemoryWindow* const target = MouseTarget(window, point);
    TheDesktop().SetPressedWindow(nullptr);
    if (target != nullptr)
        ReportMouse(*target, WM_LBUTTONUP);
}

void Click(CWnd& window, CPoint point, UINT keys) {
    window::WindowRecord* const record = window::RecordOf(window.m_hWnd);
    Press(window, point, keys);
    if (IsWindow(record))
        Release(window, point, keys);
    TheDesktop().LiftKey(VK_LBUTTON);
}

void DoubleClick(CWnd& window, CPoint point, UINT keys) {
    Click(window, point, keys);
    if (window.m_hWnd != nullptr)
        PressButton(window, point, keys, WM_LBUTTONDBLCLK);
    Release(window, point, keys);
}

void MoveTo(CWnd& window, CPoint point, UINT keys) {
    const HeldKeys held(keys);
    MemoryWindow* const target = MouseTarget(window, point);
    if (target == nullptr)
        return;
    window::WindowRecord* const record = &target->Record();
    if (TheDesktop().Captor() == nullptr)
        Report(*record, WM_SETCURSOR, reinterpret_cast<WPARAM>(record),
               static_cast<LPARAM>(MakeWParam(HTCLIENT, WM_MOUSEMOVE)));
    if (IsWindow(record))
        ReportMouse(*target, WM_MOUSEMOVE);
}

void Wheel(CWnd& window, int delta, UINT keys) {
    const HeldKeys held(keys);
    const MemoryWindow& named = NativeOf(window);
    const CSize size = named.GetClientSize();
    const CPoint middle = TheDesktop().MovePointer(named.ClientToScreen({size.cx / 2, size.cy / 2}));
    if (!named.AcceptsInput() || !TheDesktop().IsReachable(named))
        return;
    const WPARAM wParam = MakeWParam(static_cast<WORD>(MouseKeys()), static_cast<WORD>(delta));
    window::WindowRecord* target = window::RecordOf(window.m_hWnd);
    while (IsWindow(target) && Report(*target, WM_MOUSEWHEEL, wParam, MakePointParam(middle)) == 0)
        target = IsWindow(target) ? target->Parent() : nullptr;
}

void KeyDown(UINT virtualKey, UINT keys) {
    const HeldKeys held(keys);
    ReportKey(virtualKey, CharacterOf(virtualKey));
}

void KeyUp(UINT virtualKey, UINT keys) {
    const HeldKeys held(keys);
    window::WindowRecord* const receiver = TheDesktop().LiftKey(virtualKey);
    if (receiver != nullptr && TheDesktop().IsReachable(static_cast<MemoryWindow&>(receiver->Native())))
        Report(*receiver, WM_KEYUP, virtualKey, 1);
}

void Key(UINT virtualKey, UINT keys) {
    KeyDown(virtualKey, keys);
    KeyUp(virtualKey, keys);
}

void Type(std::string_view gbkText) {
    while (!gbkText.empty()) {
        const auto length = base::CharacterLength(gbkText);
        const UINT character = CharacterCode(gbkText.substr(0, length));
        gbkText.remove_prefix(length);
        if (const UINT key = KeyOf(character); key != 0) {
            ReportKey(key, character);
            KeyUp(key);
        } else {
            ReportComposed(character);
        }
    }
}

void MoveFocusTo(CWnd* window) {
    window::ReportFocus(window != nullptr ? NativeOf(*window).FocusPlace() : nullptr);
}

void LoseCapture() {
    TheDesktop().EndCapture();
}

void CloseByUser(CWnd& window) {
    if (TheDesktop().IsReachable(NativeOf(window)))
        Report(*window::RecordOf(window.m_hWnd), WM_CLOSE);
}

void ScrollBy(CWnd& window, int bar, UINT request, int position) {
    MemoryWindow& native = NativeOf(window);
    if (!native.IsScrollBarShown(bar) || !native.AcceptsInput() || !TheDesktop().IsReachable(native))
        return;
    const bool isThumb = request == SB_THUMBTRACK || request == SB_THUMBPOSITION;
    native.SetTrackPosition(bar, isThumb ? std::optional(position) : std::nullopt);
    window::WindowRecord* const record = window::RecordOf(window.m_hWnd);
    Report(*record, bar == SB_HORZ ? WM_HSCROLL : WM_VSCROLL,
           MakeWParam(static_cast<WORD>(request), static_cast<WORD>(position)));
    if (request != SB_THUMBTRACK && IsWindow(record))
        native.SetTrackPosition(bar, std::nullopt);
}

bool FireTimer(CWnd& window, UINT_PTR id) {
    if (!TheDesktop().TimerPeriod(NativeOf(window), id))
        return false;
    Report(*window::RecordOf(window.m_hWnd), WM_TIMER, id);
    return true;
}

void PickItem(CComboBox& combo, int index) {
    window::WindowRecord* const record = window::RecordOf(combo.m_hWnd);
    if (!combo.GetDroppedState())
        Press(combo, {NativeOf(combo).GetClientSize().cx - 1, 1});
    TheDesktop().LiftKey(VK_LBUTTON);
    if (IsWindow(record) && combo.GetDroppedState())
        NativeCombo(combo).Pick(index);
}

void DrawListItem(CComboBox& combo, int index, PixelSurface& surface, const CRect& rect) {
    NativeCombo(combo).DrawItem(index, 0, std::make_unique<SurfacePainter>(surface), rect);
}

void Loop() {
    TheDesktop().Loop();
}

}  // namespace kortavin::testing
