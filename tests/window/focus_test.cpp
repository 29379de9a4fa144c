#include <functional>

#include "kortavin/window/button.h"
#include "kortavin/window/windowrecord.h"
#include "tests/window/testwindow.h"

using namespace kortavin::testing;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

class FocusWindow : public TestWindow {
  public:
    std::function<void()> onKillFocus;

    FocusWindow() { interest = {WM_KILLFOCUS, WM_SETFOCUS, WM_CAPTURECHANGED, WM_DESTROY, WM_TIMER}; }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        const LRESULT result = TestWindow::WindowProc(message, wParam, lParam);
        if (message == WM_KILLFOCUS && onKillFocus)
            onKillFocus();
        return result;
    }
};

class Focus : public ::testing::Test {
  protected:
    Focus() {
        parent.Open();
        first.Open({0, 0, 20, 20}, &parent, 1);
        second.Open({20, 0, 40, 20}, &parent, 2);
    }

    MemoryDesktop desktop;
    FocusWindow parent, first, second;
};

}  // namespace

TEST_F(Focus, LoserAndGainerAreToldBeforeSetFocusReturns) {
    EXPECT_EQ(first.SetFocus(), nullptr);
    EXPECT_EQ(second.SetFocus(), &first);
    EXPECT_THAT(first.record, ElementsAre(Pair(WM_SETFOCUS, 0), Pair(WM_KILLFOCUS, ParamOf(second))));
    EXPECT_THAT(second.record, ElementsAre(Pair(WM_SETFOCUS, ParamOf(first))));
    second.SetFocus();
    MoveFocusTo(&second);
    EXPECT_EQ(second.record.size(), 1U);

    MoveFocusTo(nullptr);
    EXPECT_EQ(second.record.back(), std::pair(WM_KILLFOCUS, WPARAM{0}));
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

// An editor that refuses what was typed takes the focus back while it is losing it.
TEST_F(Focus, HandlerThatMovesTheFocusOnHasTheLastWord) {
    first.SetFocus();
    first.onKillFocus = [&] {
        first.onKillFocus = nullptr;
        first.SetFocus();
    };
    second.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &first);
    EXPECT_TRUE(second.record.empty() || second.record.back().first == WM_KILLFOCUS);
    EXPECT_EQ(first.record.back().first, WM_SETFOCUS);
}

TEST_F(Focus, GainerMayBeDestroyedByTheLoser) {
    first.SetFocus();
    first.onKillFocus = [&] { second.DestroyWindow(); };
    second.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST_F(Focus, DestroyedWindowLosesItFirst) {
    first.SetFocus();
    first.record.clear();
    first.onKillFocus = [&] { first.DestroyWindow(); };  // an editor closes itself then
    first.DestroyWindow();
    EXPECT_THAT(first.record, ElementsAre(Pair(WM_KILLFOCUS, 0), Pair(WM_DESTROY, 0)));
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    second.SetFocus();
    EXPECT_THAT(second.record, ElementsAre(Pair(WM_SETFOCUS, 0)));
}

TEST_F(Focus, CaptureLossIsToldOnce) {
    first.SetCapture();
    EXPECT_EQ(second.SetCapture(), &first);
    EXPECT_THAT(first.record, ElementsAre(Pair(WM_CAPTURECHANGED, 0)));
    LoseCapture();
    LoseCapture();
    CWnd::ReleaseCapture();
    EXPECT_THAT(second.record, ElementsAre(Pair(WM_CAPTURECHANGED, 0)));
    EXPECT_EQ(CWnd::GetCapture(), nullptr);

    first.record.clear();
    first.SetCapture();
    CWnd::ReleaseCapture();
    EXPECT_THAT(first.record, ElementsAre(Pair(WM_CAPTURECHANGED, 0)));
    first.SetCapture();
    parent.ShowWindow(FALSE);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    EXPECT_EQ(first.record.size(), 2U);
}

// A message box stands for every popup.
TEST_F(Focus, CaptureDrawsTheMouseUntilAPopupEndsIt) {
    second.interest = {WM_MOUSEMOVE};
    second.SetCapture();
    MoveTo(parent, {60, 10});
    EXPECT_THAT(second.record, ElementsAre(Pair(WM_MOUSEMOVE, 0)));
    CWnd::ReleaseCapture();
    MoveTo(parent, {60, 10});
    second.SetCapture();
    AfxMessageBox("text");
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    MoveTo(parent, {60, 10});
    EXPECT_EQ(second.record.size(), 1U);
}

TEST_F(Focus, ConfinementEndsWithItsWindow) {
    first.ConfinePointer({5, 0, 15, 20});
    second.ConfinePointer({0, 0, 10, 10});
    MoveTo(second, {-50, 400});
    CPoint point = desktop->PointerPosition();
    second.ScreenToClient(&point);
    EXPECT_EQ(point, CPoint(0, 9));
    second.DestroyWindow();
    EXPECT_FALSE(desktop->Confinement());
    CWnd::ReleasePointer();
}

TEST_F(Focus, TimersRunUntilTheyAreStopped) {
    EXPECT_EQ(first.SetTimer(513, 30), 513U);
    EXPECT_TRUE(FireTimer(first, 513));
    EXPECT_THAT(first.record, ElementsAre(Pair(WM_TIMER, 513)));
    EXPECT_TRUE(first.KillTimer(513));
    EXPECT_FALSE(FireTimer(first, 513));
}
