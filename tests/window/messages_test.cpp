#include <functional>

#include "kortavin/window/button.h"
#include "kortavin/window/combobox.h"
#include "kortavin/window/windowrecord.h"
#include "tests/window/testwindow.h"

using kortavin::window::MessageEntry;
using kortavin::window::MessageMap;
using kortavin::window::OnMessage;
using kortavin::window::OnReflected;
using namespace kortavin::testing;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

constexpr UINT kFirst = WM_USER + 1;
constexpr UINT kSecond = WM_USER + 2;
constexpr UINT kThird = WM_USER + 3;

// A window that does what the test says.
class ScriptedWindow : public TestWindow {
  public:
    std::function<void(ScriptedWindow&)> script;

    void OnPress(UINT, CPoint) { script(*this); }
    LRESULT OnFirst(WPARAM, LPARAM) { return script(*this), 0; }
    void OnNotification(NMHDR* head, LRESULT* result) { *result = head->code == -5 ? 7 : 8; }
    using CWnd::Default;
    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {
            OnMessage<WM_LBUTTONDOWN, &ScriptedWindow::OnPress>(),
            OnMessage<kFirst, &ScriptedWindow::OnFirst>(),
            kortavin::window::OnNotify<-5, 3, &ScriptedWindow::OnNotification>()};
        static const MessageMap map{TestWindow::GetMessageMap(), kEntries};
        return &map;
    }
};

// Keeps what its handlers were given.
class DerivedWindow : public ScriptedWindow {
  public:
    UINT keys = 0;
    CPoint point;
    int delta = 0;
    UINT position = 0;
    CWnd* other = nullptr;

    LRESULT OnFirstDerived(WPARAM, LPARAM) { return 10; }
    void OnMouseMove(UINT flags, CPoint at) { keys = flags, point = at; }
    BOOL OnMouseWheel(UINT flags, SHORT turned, CPoint at) {
        keys = flags, delta = turned, point = at;
        return TRUE;
    }
    void OnVScroll(UINT, UINT at, CWnd* bar) { position = at, other = bar; }
    void OnCaptureChanged(CWnd* gainer) { other = gainer; }
    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {
            OnMessage<kFirst, &DerivedWindow::OnFirstDerived>(),
            OnMessage<WM_MOUSEMOVE, &DerivedWindow::OnMouseMove>(),
            OnMessage<WM_MOUSEWHEEL, &DerivedWindow::OnMouseWheel>(),
            OnMessage<WM_VSCROLL, &DerivedWindow::OnVScroll>(),
            OnMessage<WM_CAPTURECHANGED, &DerivedWindow::OnCaptureChanged>()};
        static const MessageMap map{ScriptedWindow::GetMessageMap(), kEntries};
        return &map;
    }
};

class PressedCombo : public CComboBox {
  public:
    bool asksForDefault = true;

    void OnPress(UINT, CPoint) {
        SendMessage(kFirst);  // another message meanwhile
        if (asksForDefault)
            Default();
    }
    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {OnMessage<WM_LBUTTONDOWN, &PressedCombo::OnPress>()};
        static const MessageMap map{CComboBox::GetMessageMap(), kEntries};
        return &map;
    }
};

class SelfHandlingButton : public CButton {
  public:
    int clicks = 0;

    void OnClicked() { ++clicks; }
    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {
            OnReflected<BN_CLICKED, &SelfHandlingButton::OnClicked>()};
        static const MessageMap map{CButton::GetMessageMap(), kEntries};
        return &map;
    }
};

class SelfDeletingWindow : public TestWindow {
  public:
    explicit SelfDeletingWindow(bool& isDeleted) : m_isDeleted(isDeleted) {}
    ~SelfDeletingWindow() override { m_isDeleted = true; }

  protected:
    void PostNcDestroy() override { delete this; }

  private:
    bool& m_isDeleted;
};

}  // namespace

TEST(Messages, DerivedClassIsAskedBeforeItsBase) {
    const MemoryDesktop desktop;
    DerivedWindow window;
    int presses = 0;
    window.script = [&](ScriptedWindow&) { ++presses; };
    window.Open();
    EXPECT_EQ(window.SendMessage(kFirst), 10);
    EXPECT_EQ(presses, 0);
    Press(window, {1, 1});
    EXPECT_EQ(presses, 1);
}

TEST(Messages, ParametersKeepTheirSigns) {
    const MemoryDesktop desktop;
    DerivedWindow window;
    TestWindow other;
    window.Open({50, 40, 150, 100});
    other.Open();

    window.SetCapture();
    MoveTo(window, {-7, -30}, MK_CONTROL);
    EXPECT_EQ(window.point, CPoint(-7, -30));
    EXPECT_EQ(window.keys, MK_CONTROL);
    other.SetCapture();
    EXPECT_EQ(window.other, &other);

    Wheel(window, -240, MK_SHIFT);
    EXPECT_EQ(window.delta, -240);
    EXPECT_EQ(window.keys, MK_SHIFT);
    EXPECT_EQ(window.point, CPoint(100, 70));  // of the screen

    window.SendMessage(WM_VSCROLL, MakeWParam(SB_THUMBTRACK, 40000), static_cast<LPARAM>(ParamOf(window)));
    EXPECT_EQ(window.position, 40000U);
    EXPECT_EQ(window.other, &window);
}

TEST(Messages, DefaultHandlingIsThatOfTheHandlersOwnMessage) {
    const MemoryDesktop desktop;
    TestWindow parent;
    parent.interest = {WM_COMMAND};
    parent.Open();
    PressedCombo combo;
    combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, {0, 0, 80, 100}, &parent, 4);
    parent.record.clear();

    Press(combo, {5, 5});
    EXPECT_TRUE(combo.GetDroppedState());
    EXPECT_THAT(parent.record, ElementsAre(Pair(WM_COMMAND, MakeWParam(4, CBN_SETFOCUS)),
                                           Pair(WM_COMMAND, MakeWParam(4, CBN_DROPDOWN))));
    combo.asksForDefault = false;
    Press(combo, {5, 5});
    EXPECT_TRUE(combo.GetDroppedState());
}

TEST(Messages, ReflectedNotificationStopsAtItsHandlerElseReachesOwnerOrParent) {
    const MemoryDesktop desktop;
    TestWindow parent, owner;
    parent.interest = owner.interest = {WM_COMMAND};
    parent.Open();
    owner.Open();
    SelfHandlingButton handling;
    CButton plain;
    handling.Create("", WS_CHILD | WS_VISIBLE, {0, 0, 20, 20}, &parent, 5);
    plain.Create("", WS_CHILD | WS_VISIBLE, {20, 0, 40, 20}, &parent, 6);

    Click(parent, {10, 10});
    EXPECT_EQ(handling.clicks, 1);
    EXPECT_TRUE(parent.record.empty());
    Click(parent, {30, 10});
    EXPECT_THAT(parent.record, ElementsAre(Pair(WM_COMMAND, MakeWParam(6, BN_CLICKED))));
    plain.SetOwner(&owner);
    Click(parent, {30, 10});
    EXPECT_EQ(parent.record.size(), 1U);
    EXPECT_THAT(owner.record, ElementsAre(Pair(WM_COMMAND, MakeWParam(6, BN_CLICKED))));
}

TEST(Messages, NotifyIsAnsweredByTheHandlerOfItsCodeAndSender) {
    const MemoryDesktop desktop;
    ScriptedWindow window;
    window.Open();
    const auto answerTo = [&](int code, UINT_PTR id) {
        NMHDR head{nullptr, id, code};
        return window.SendMessage(WM_NOTIFY, id, reinterpret_cast<LPARAM>(&head));
    };
    EXPECT_EQ(answerTo(-5, 3), 7);
    EXPECT_EQ(answerTo(-5, 4), 0);
    EXPECT_EQ(answerTo(-6, 3), 0);
}

TEST(Messages, PostedOnesComeInOrderAfterTheCurrentHandler) {
    const MemoryDesktop desktop;
    ScriptedWindow window;
    window.interest = {kFirst, kSecond, kThird, WM_USER};
    window.script = [](ScriptedWindow& self) {
        self.PostMessage(kSecond, 20);
        self.SendMessage(WM_USER, 15);
    };
    window.Open();
    window.PostMessage(kFirst, 10);
    window.PostMessage(kThird, 11);
    EXPECT_TRUE(window.record.empty());
    Loop();
    EXPECT_THAT(window.record,
                ElementsAre(Pair(kFirst, 10), Pair(WM_USER, 15), Pair(kThird, 11), Pair(kSecond, 20)));
}

TEST(Messages, PostedOnesToWindowsThatAreGoneAreDropped) {
    const MemoryDesktop desktop;
    ScriptedWindow first;
    TestWindow second;
    second.interest = {kFirst};
    first.script = [&](ScriptedWindow&) { second.DestroyWindow(); };
    first.Open();
    second.Open();
    first.PostMessage(kFirst);
    second.PostMessage(kFirst);
    Loop();
    EXPECT_FALSE(second.PostMessage(kFirst));

    second.Open();
    second.PostMessage(kFirst);
    second.DestroyWindow();
    second.Open();  // may well lie where the former record lay
    Loop();
    EXPECT_TRUE(second.record.empty());
}

TEST(Messages, HandlerMayDestroyItsOwnWindow) {
    const MemoryDesktop desktop;
    ScriptedWindow window;
    TestWindow child;
    window.script = [](ScriptedWindow& self) {
        self.DestroyWindow();
        self.Default();
        EXPECT_EQ(self.GetSafeHwnd(), nullptr);
    };
    window.interest = child.interest = {WM_DESTROY, WM_NCDESTROY, WM_CAPTURECHANGED};
    window.Open();
    child.Open({0, 0, 10, 10}, &window);
    child.SetFocus();
    window.SetCapture();
    Press(window, {50, 50});
    EXPECT_THAT(window.record,
                ElementsAre(Pair(WM_CAPTURECHANGED, 0), Pair(WM_DESTROY, 0), Pair(WM_NCDESTROY, 0)));
    EXPECT_THAT(child.record, ElementsAre(Pair(WM_DESTROY, 0), Pair(WM_NCDESTROY, 0)));
    EXPECT_EQ(child.GetSafeHwnd(), nullptr);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST(Messages, ObjectMayDeleteItselfWhenItsWindowIsGone) {
    const MemoryDesktop desktop;
    bool isDeleted = false;
    TestWindow parent;
    parent.Open();
    auto* const window = new SelfDeletingWindow(isDeleted);
    window->Open({0, 0, 10, 10}, &parent);
    window->PostMessage(WM_CLOSE);
    EXPECT_FALSE(isDeleted);
    Loop();
    EXPECT_TRUE(isDeleted);

    isDeleted = false;
    (new SelfDeletingWindow(isDeleted))->Open({0, 0, 10, 10}, &parent);
    parent.DestroyWindow();
    EXPECT_TRUE(isDeleted);
}
