#include <QFrame>
#include <QScreen>
#include <QScrollBar>

#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr UINT kFirst = WM_USER + 1, kSecond = WM_USER + 2, kThird = WM_USER + 3;

// A widget of a host that notes the presses which reach its own handler.
struct PressedFrame : QFrame {
    std::vector<QPoint> presses;
    void mousePressEvent(QMouseEvent* event) override { presses.push_back(event->pos()); }
};

// Asks for the default handling of a press twice.
struct DefaultingWindow : TestWindow {
    PressedFrame* frame = nullptr;

    LRESULT OnPress(WPARAM, LPARAM) {
        EXPECT_THAT(frame->presses, IsEmpty());
        Default();
        EXPECT_EQ(frame->presses.size(), 1U) << "at once";
        return Default();
    }
    const window::MessageMap* GetMessageMap() const override {
        static constexpr window::MessageEntry kEntries[] = {
            window::OnMessage<WM_LBUTTONDOWN, &DefaultingWindow::OnPress>()};
        static const window::MessageMap map{TestWindow::GetMessageMap(), kEntries};
        return &map;
    }
};

class QtWindows : public QtTest {
  protected:
    QtWindows() { m_window.Create("TestWindow", "", WS_POPUP, {0, 0, 200, 100}, nullptr, 1); }
    CRect Client() const {
        CRect client;
        m_window.GetClientRect(&client);
        return client;
    }

    EventWindow m_window;
};

}  // namespace

TEST_F(QtWindows, PostedMessagesComeAfterTheHandlerAndInLoopsWithinIt) {
    EventWindow gone;
    gone.Open();
    m_window.interest = gone.interest = {kFirst, kSecond, kThird};
    m_window.script = [&](UINT message) -> std::optional<LRESULT> {
        if (message != kFirst)
            return std::nullopt;
        m_window.PostMessage(kThird);
        gone.DestroyWindow();
        EXPECT_EQ(m_window.record.size(), 1U);
        QCoreApplication::processEvents();
        EXPECT_EQ(m_window.record.size(), 3U);
        return 0;
    };
    m_window.PostMessage(kFirst);
    m_window.PostMessage(kSecond);
    gone.PostMessage(kFirst);
    EXPECT_THAT(m_window.record, IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(m_window.record, (Record{{kFirst, 0}, {kSecond, 0}, {kThird, 0}}));
    EXPECT_THAT(gone.record, IsEmpty());
}

TEST_F(QtWindows, DefaultHandlingIsTheWidgetsOwnOnceAndAtOnce) {
    PressedFrame frame;
    DefaultingWindow defaulting;
    EventWindow sender;
    defaulting.frame = &frame;
    frame.setFrameStyle(QFrame::Box);  // one pixel
    ASSERT_TRUE(qt::AttachTo(defaulting, frame));
    QTest::mousePress(&frame, Qt::LeftButton, {}, {7, 8});
    defaulting.UnsubclassWindow();
    QTest::mousePress(&frame, Qt::LeftButton, {}, {1, 2});
    ASSERT_TRUE(qt::AttachTo(sender, frame));
    sender.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam({3, 4}));
    EXPECT_EQ(frame.presses, (std::vector{QPoint(7, 8), QPoint(1, 2), QPoint(4, 5)}));
}

TEST_F(QtWindows, SizeIsToldWhenItChangesAndPaintingIsAtOnceUnlessHidden) {
    EventWindow child;
    child.Open({10, 10, 50, 50}, &m_window);
    m_window.interest = child.interest = {WM_SIZE, WM_PAINT};
    const auto redraw = [&] { m_window.RedrawWindow(nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); };
    redraw();
    EXPECT_THAT(m_window.record, IsEmpty()) << "it is hidden";
    Activate(WidgetOf(m_window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !child.record.empty(); }));
    EXPECT_EQ(m_window.TakeRecord().front().first, WM_PAINT) << "the first show is no change of size";
    child.record.clear();
    redraw();
    m_window.UpdateWindow();  // nothing is left to paint
    EXPECT_EQ(m_window.TakeRecord(), (Record{{WM_PAINT, 0}}));
    EXPECT_EQ(child.TakeRecord(), (Record{{WM_PAINT, 0}}));
    child.ShowWindow(FALSE);
    redraw();
    EXPECT_THAT(child.record, IsEmpty());
    m_window.MoveWindow({0, 0, 220, 80}, FALSE);
    m_window.MoveWindow({9, 9, 229, 89}, FALSE);
    QCoreApplication::processEvents();
    EXPECT_EQ(std::ranges::count(m_window.record, std::pair(WM_SIZE, WPARAM{0})), 1);
}

TEST_F(QtWindows, TimerRunsUntilItIsStopped) {
    m_window.interest = {WM_TIMER};
    const auto count = [&](WPARAM id) {
        return std::ranges::count(m_window.record, std::pair(WM_TIMER, id));
    };
    m_window.SetTimer(7, 10);
    ASSERT_TRUE(QTest::qWaitFor([&] { return count(7) >= 2; }));
    m_window.KillTimer(7);
    m_window.record.clear();
    m_window.SetTimer(8, 10);
    ASSERT_TRUE(QTest::qWaitFor([&] { return count(8) >= 3; }));
    EXPECT_EQ(count(7), 0);
}

TEST_F(QtWindows, ScrollBarsAskAndTheWindowDecides) {
    m_window.interest = {WM_VSCROLL, WM_SIZE};
    Activate(WidgetOf(m_window));
    const CRect whole = Client();
    m_window.SetScrollRange(SB_VERT, 0, 99);
    m_window.SetScrollPage(SB_VERT, 10);
    EXPECT_LT(Client().right, whole.right);
    EXPECT_EQ(m_window.TakeRecord(), (Record{{WM_SIZE, 0}}));
    m_window.SetScrollPos(SB_VERT, 95);
    EXPECT_EQ(m_window.GetScrollPos(SB_VERT), 90);
    m_window.SetScrollPos(SB_VERT, 20);

    auto bars = WidgetOf(m_window).findChildren<QScrollBar*>();
    bars.removeIf([](const QScrollBar* each) { return each->isHidden(); });
    ASSERT_EQ(bars.size(), 1);
    QScrollBar& bar = *bars.front();
    bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
    bar.triggerAction(QAbstractSlider::SliderPageStepSub);
    EXPECT_EQ(bar.value(), 20) << "the window did not follow";
    bar.setSliderDown(true);
    bar.setSliderPosition(50);
    EXPECT_EQ(m_window.GetScrollTrackPos(SB_VERT), 50);
    EXPECT_EQ(m_window.GetScrollPos(SB_VERT), 20);
    m_window.SetScrollPos(SB_VERT, 50);
    bar.setSliderDown(false);
    Record requests;
    for (const auto& [request, position] : {std::pair(SB_LINEDOWN, 20),
                                            {SB_PAGEUP, 20},
                                            {SB_THUMBTRACK, 50},
                                            {SB_THUMBPOSITION, 50},
                                            {SB_ENDSCROLL, 50}})
        requests.emplace_back(WM_VSCROLL,
                              MakeWParam(static_cast<WORD>(request), static_cast<WORD>(position)));
    EXPECT_EQ(m_window.record, requests);
    m_window.SetScrollRange(SB_VERT, 0, 0);
    EXPECT_EQ(Client(), whole);
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(QtWindows, ScrollingMovesPixelsButNoChildrenAndInvalidatesTheRest) {
    COLORREF color = RGB(255, 0, 0);
    CRect clip;
    m_window.script = [&](UINT message) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        CPaintDC dc(&m_window);
        dc.GetClipBox(&clip);
        return dc.FillSolidRect(clip, color), 0;
    };
    EventWindow child;
    child.Open({90, 40, 100, 60}, &m_window);
    Activate(WidgetOf(m_window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !clip.IsRectEmpty(); }));
    color = RGB(0, 0, 255);
    const CRect part(10, 10, 80, 90);
    m_window.ScrollWindow(0, -30, &part);
    m_window.UpdateWindow();
    EXPECT_EQ(clip, CRect(10, 60, 80, 90));
    const QImage shown = WidgetOf(m_window).screen()->grabWindow(WidgetOf(m_window).winId()).toImage();
    EXPECT_EQ(shown.pixelColor(50, 59), Qt::red);
    EXPECT_EQ(shown.pixelColor(50, 60), Qt::blue);
    m_window.ScrollWindow(0, -30);
    EXPECT_EQ(WidgetOf(child).pos(), QPoint(90, 40));
}

}  // namespace kortavin::testing
