#pragma once

#include <utility>
#include <vector>

#include "kortavin/window/wnd.h"
#include "tests/support/memory/input.h"

// A plain window that keeps a record of what comes to it.
class TestWindow : public CWnd {
  public:
    TestWindow() { kortavin::window::RegisterWindowClass("TestWindow"); }

    BOOL Open(const CRect& rect = {0, 0, 100, 60}, CWnd* parent = nullptr, UINT id = 1, DWORD style = 0) {
        const DWORD kind = parent != nullptr ? WS_CHILD : WS_POPUP;
        return Create("TestWindow", "", style | kind | WS_VISIBLE, rect, parent, id);
    }

    // The messages of interest that came, with their first parameter.
    using Record = std::vector<std::pair<UINT, WPARAM>>;
    Record record;
    std::vector<UINT> interest;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (std::ranges::find(interest, message) != interest.end())
            record.emplace_back(message, wParam);
        return CWnd::WindowProc(message, wParam, lParam);
    }
};

inline WPARAM ParamOf(const CWnd& window) {
    return reinterpret_cast<WPARAM>(window.m_hWnd);
}
