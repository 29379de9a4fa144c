#include <QScreen>
#include <QScrollBar>
#include <QStyleOptionSlider>

#include "tests/framework/qt/qttest.h"

namespace kortavin::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr UINT kFirst = WM_USER + 1, kSecond = WM_USER + 2, kThird = WM_USER + 3;
constexpr UINT kRepaint = RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW;

class QtWindows : public QtTest {
  protected:
    EventWindow m_window;
};

// A widget of a host that notes what reaches its own handlers.
struct HandlingFrame : QFrame {
    std::vector<QPoint> presses;
    QString keys;

    void mousePressEvent(QMouseEvent* event) override { presses.push_back(event->pos()); }
    void keyPressEvent(QKeyEvent* event) override { keys += event->text(); }
};

// Asks for the default handling of presses and characters, twice.
class DefaultingWindow : public TestWindow {
  public:
    HandlingFrame* frame = nullptr;

    LRESULT OnPress(WPARAM, LPARAM) {
        EXPECT_THAT(frame->presses, IsEmpty());
        Default();
        EXPECT_EQ(frame->presses.size(), 1U) << "handled before the default handling returns";
        return Default();
    }
    LRESULT OnChar(WPARAM character, LPARAM) { return character == 'a' ? Default(), Default() : 0; }
    const window::MessageMap* GetMessageMap() const override {
        static constexpr window::MessageEntry kEntries[] = {
            window::OnMessage<WM_LBUTTONDOWN, &DefaultingWindow::OnPress>(),
            window::OnMessage<WM_CHAR, &DefaultingWindow::OnChar>()};
        static const window::MessageMap map{TestWindow::GetMessageMap(), kEntries};
        return &map;
    }
};

}  // namespace

TEST_F(QtWindows, PostedMessagesComeAfterTheHandlerAndInLoopsWithinIt) {
    EventWindow gone;
    gone.Open();
    gone.interest = {kFirst};
    m_window.Open();
    m_window.interest = {kFirst, kSecond, kThird};
    m_window.script = [&](UINT message, WPARAM, LPARAM) {
        if (message == kFirst) {
            m_window.PostMessage(kThird);
            gone.DestroyWindow();
            EXPECT_EQ(m_window.record.size(), 1U);
            QCoreApplication::processEvents();
            EXPECT_EQ(m_window.record.size(), 3U);
        }
        return std::nullopt;
    };
    m_window.PostMessage(kFirst);
    m_window.PostMessage(kSecond);
    gone.PostMessage(kFirst);
    EXPECT_THAT(m_window.record, IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_THAT(m_window.record, ElementsAre(Pair(kFirst, 0), Pair(kSecond, 0), Pair(kThird, 0)));
    EXPECT_THAT(gone.record, IsEmpty());
}

TEST_F(QtWindows, DefaultHandlingIsTheWidgetsOwnOnceAndAtOnce) {
    HandlingFrame frame;
    DefaultingWindow window;
    window.frame = &frame;
    ASSERT_TRUE(qt::AttachTo(window, frame));
    frame.resize(50, 50);
    QTest::mousePress(&frame, Qt::LeftButton, {}, {7, 8});
    EXPECT_THAT(frame.presses, ElementsAre(QPoint(7, 8)));
    QTest::keyClicks(&frame, "aba");
    EXPECT_EQ(frame.keys, "aa");
    window.UnsubclassWindow();
    QTest::mousePress(&frame, Qt::LeftButton, {}, {1, 2});
    EventWindow sender;
    ASSERT_TRUE(qt::AttachTo(sender, frame));
    sender.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MakePointParam({3, 4}));
    EXPECT_THAT(frame.presses, ElementsAre(QPoint(7, 8), QPoint(1, 2), QPoint(3, 4)));
}

TEST_F(QtWindows, FirstShowIsNoChangeOfSize) {
    m_window.interest = {WM_SIZE};
    m_window.Create("TestWindow", "", WS_POPUP, {0, 0, 200, 100}, nullptr, 1);
    Activate(WidgetOf(m_window));
    EXPECT_THAT(m_window.record, IsEmpty());
    m_window.script = [&](UINT message, WPARAM, LPARAM size) {
        CRect client;
        m_window.GetClientRect(&client);
        if (message == WM_SIZE) {
            EXPECT_EQ(client, CRect({0, 0}, CSize(PointOfParam(size).x, PointOfParam(size).y)));
        }
        return std::nullopt;
    };
    m_window.MoveWindow({0, 0, 220, 80});
    m_window.MoveWindow({10, 10, 230, 90});
    QCoreApplication::processEvents();
    EXPECT_EQ(m_window.record.size(), 1U);
}

TEST_F(QtWindows, RedrawingPaintsBeforeItReturnsUnlessHidden) {
    EventWindow child;
    m_window.Create("TestWindow", "", WS_POPUP, {0, 0, 200, 100}, nullptr, 1);
    child.Open({10, 10, 50, 50}, &m_window);
    m_window.interest = child.interest = {WM_PAINT};
    m_window.RedrawWindow(nullptr, kRepaint);
    EXPECT_THAT(m_window.record, IsEmpty());
    Activate(WidgetOf(m_window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !m_window.record.empty() && !child.record.empty(); }));
    m_window.record.clear(), child.record.clear();
    m_window.RedrawWindow(nullptr, kRepaint);
    EXPECT_EQ(m_window.TakeRecord().size(), 1U);
    EXPECT_EQ(child.TakeRecord().size(), 1U);
    m_window.UpdateWindow();
    child.ShowWindow(FALSE);
    child.RedrawWindow(nullptr, kRepaint);
    EXPECT_THAT(m_window.record, IsEmpty()) << "nothing is invalid";
    EXPECT_THAT(child.record, IsEmpty()) << "it is hidden";
}

TEST_F(QtWindows, TimerRunsUntilItIsStopped) {
    m_window.Open();
    m_window.interest = {WM_TIMER};
    const auto count = [&](UINT_PTR id) {
        return std::ranges::count(m_window.record, std::pair(WM_TIMER, WPARAM{id}));
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
    m_window.interest = {WM_VSCROLL, WM_HSCROLL, WM_SIZE};
    m_window.Open({0, 0, 200, 150});
    Activate(WidgetOf(m_window));
    const auto bars = WidgetOf(m_window).findChildren<QScrollBar*>();
    EXPECT_TRUE(bars.isEmpty() || bars.front()->isHidden());
    m_window.SetScrollRange(SB_VERT, 0, 99);
    m_window.SetScrollPage(SB_VERT, 10);
    CRect client;
    m_window.GetClientRect(&client);
    EXPECT_LT(client.right, 200);
    EXPECT_EQ(client.bottom, 150);
    ASSERT_FALSE(m_window.record.empty());
    EXPECT_EQ(m_window.TakeRecord().front().first, WM_SIZE);
    m_window.SetScrollPos(SB_VERT, 95);
    EXPECT_EQ(m_window.GetScrollPos(SB_VERT), 90);
    m_window.SetScrollPos(SB_VERT, 20);

    QScrollBar* bar = nullptr;
    for (auto* const each : WidgetOf(m_window).findChildren<QScrollBar*>())
        bar = each->isVisible() ? each : bar;
    ASSERT_NE(bar, nullptr);
    const auto part = [bar](QStyle::SubControl which) {
        QStyleOptionSlider option;
        option.initFrom(bar);
        option.orientation = Qt::Vertical;
        option.maximum = bar->maximum();
        option.pageStep = bar->pageStep();
        option.sliderPosition = option.sliderValue = bar->sliderPosition();
        return bar->style()->subControlRect(QStyle::CC_ScrollBar, &option, which, bar).center();
    };
    QTest::mouseClick(bar, Qt::LeftButton, {}, part(QStyle::SC_ScrollBarAddLine));
    QTest::mouseClick(bar, Qt::LeftButton, {}, part(QStyle::SC_ScrollBarSubPage));
    EXPECT_THAT(m_window.TakeRecord(), ElementsAre(Pair(WM_VSCROLL, MakeWParam(SB_LINEDOWN, 20)),
                                                   Pair(WM_VSCROLL, MakeWParam(SB_PAGEUP, 20))));
    EXPECT_EQ(bar->value(), 20) << "the window did not follow";

    const QPoint thumb = part(QStyle::SC_ScrollBarSlider);
    QTest::mousePress(bar, Qt::LeftButton, {}, thumb);
    MoveMouse(*bar, thumb + QPoint(0, 30), Qt::LeftButton);
    ASSERT_EQ(m_window.record.size(), 1U);
    const int tracked = m_window.GetScrollTrackPos(SB_VERT);
    EXPECT_GT(tracked, 30);
    EXPECT_EQ(m_window.GetScrollPos(SB_VERT), 20);
    m_window.SetScrollPos(SB_VERT, tracked);
    QTest::mouseRelease(bar, Qt::LeftButton, {}, thumb + QPoint(0, 30));
    const auto position = static_cast<WORD>(tracked);
    EXPECT_THAT(m_window.TakeRecord(), ElementsAre(Pair(WM_VSCROLL, MakeWParam(SB_THUMBTRACK, position)),
                                                   Pair(WM_VSCROLL, MakeWParam(SB_THUMBPOSITION, position)),
                                                   Pair(WM_VSCROLL, MakeWParam(SB_ENDSCROLL, position))));
    EXPECT_EQ(bar->value(), tracked);
    m_window.SetScrollRange(SB_VERT, 0, 0);
    m_window.GetClientRect(&client);
    EXPECT_EQ(client.right, 200);
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(QtWindows, ScrollingMovesPixelsButNoChildrenAndInvalidatesTheRest) {
    COLORREF color = RGB(255, 0, 0);
    CRect clip;
    m_window.script = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        CPaintDC dc(&m_window);
        dc.GetClipBox(&clip);
        dc.FillSolidRect(clip, color);
        return 0;
    };
    EventWindow child;
    m_window.Open({0, 0, 200, 100});
    child.Open({150, 40, 170, 60}, &m_window);
    Activate(WidgetOf(m_window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !clip.IsRectEmpty(); }));
    QCoreApplication::processEvents();
    color = RGB(0, 0, 255);
    const CRect scrolled(10, 10, 110, 90);
    m_window.ScrollWindow(0, -30, &scrolled);
    m_window.UpdateWindow();
    EXPECT_EQ(clip, CRect(10, 60, 110, 90));
    QCoreApplication::processEvents();
    EXPECT_EQ(clip, CRect(10, 60, 110, 90));
    const QImage picture = WidgetOf(m_window).screen()->grabWindow(WidgetOf(m_window).winId()).toImage();
    EXPECT_EQ(picture.pixelColor(60, 59), Qt::red);
    EXPECT_EQ(picture.pixelColor(60, 60), Qt::blue);
    EXPECT_EQ(WidgetOf(child).pos(), QPoint(150, 40));
}

}  // namespace kortavin::testing
