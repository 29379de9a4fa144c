#include "kortavin/window/windowrecord.h"
#include "kortavin/window/wnd.h"

namespace kortavin {

using window::ScrollState;

namespace {

ScrollState StateOf(HWND window, int bar) {
    return window != nullptr ? window::RecordOf(window)->Native().GetScroll(bar) : ScrollState();
}

// The page, range or position changed alone.
template <class Change>
void ChangeState(HWND window, int bar, Change change) {
    if (window == nullptr)
        return;
    window::NativeWindow& native = window::RecordOf(window)->Native();
    ScrollState state = native.GetScroll(bar);
    change(state);
    native.SetScroll(bar, state);
}

}  // namespace

int CWnd::GetScrollPos(int bar) const {
    return StateOf(m_hWnd, bar).position;
}

int CWnd::GetScrollTrackPos(int bar) const {
    return StateOf(m_hWnd, bar).trackPosition;
}

// Bars show their state at once, whatever `redraw` says.
int CWnd::SetScrollPos(int bar, int position, BOOL /*redraw*/) {
    const int former = GetScrollPos(bar);
    ChangeState(m_hWnd, bar, [position](ScrollState& state) { state.position = position; });
    return former;
}

void CWnd::SetScrollRange(int bar, int minimum, int maximum, BOOL /*redraw*/) {
    ChangeState(m_hWnd, bar, [=](ScrollState& state) {
        state.minimum = minimum;
        state.maximum = maximum;
    });
}

void CWnd::GetScrollRange(int bar, int* minimum, int* maximum) const {
    const ScrollState state = StateOf(m_hWnd, bar);
    *minimum = state.minimum;
    *maximum = state.maximum;
}

void CWnd::SetScrollPage(int bar, int page, BOOL /*redraw*/) {
    ChangeState(m_hWnd, bar, [page](ScrollState& state) { state.page = page; });
}

int CWnd::GetScrollPage(int bar) const {
    return StateOf(m_hWnd, bar).page;
}

}  // namespace kortavin
