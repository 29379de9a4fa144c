#include <QInputMethodEvent>
#include <QMenu>

#include "kortavin/window/combobox.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {

// An active window with two children that take all keys.
class QtInput : public QtTest {
  protected:
    QtInput() {
        m_top.Open({0, 0, 300, 200});
        m_first.Open({10, 20, 110, 120}, &m_top, 1, WS_BORDER | WS_TABSTOP);
        m_second.Open({150, 20, 250, 120}, &m_top, 2, WS_TABSTOP);
        m_first.dialogCode = m_second.dialogCode = DLGC_WANTALLKEYS;
        Activate(WidgetOf(m_top));
        m_first.SetFocus();
    }

    // A place of the client area in the widget, which has a border.
    QPoint InFirst(int x, int y) const {
        CPoint point(x, y);
        m_first.ClientToScreen(&point);
        return WidgetOf(m_first).mapFromGlobal(QPoint(point.x, point.y));
    }
    static void SendKey(QEvent::Type type, Qt::Key key, bool isRepeat = false, const QString& text = {}) {
        QKeyEvent event(type, key, {}, text, isRepeat);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    }
    static void Commit(const char* utf8) {
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromUtf8(utf8));
        QCoreApplication::sendEvent(QApplication::focusWidget(), &commit);
    }

    EventWindow m_top, m_first, m_second;
};

TEST_F(QtInput, MouseMessagesTellTheClientAreasPointAndWhatIsHeld) {
    QWidget& widget = WidgetOf(m_first);
    m_first.interest = {WM_MOUSEMOVE,   WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK,
                        WM_RBUTTONDOWN, WM_RBUTTONUP,   WM_MOUSEWHEEL};
    m_first.script = [](UINT message) { return std::optional<LRESULT>(message == WM_MOUSEWHEEL); };
    ASSERT_NE(InFirst(0, 0), QPoint());
    QTest::mousePress(&widget, Qt::LeftButton, Qt::ShiftModifier, InFirst(10, 7));
    EXPECT_EQ(m_first.point, CPoint(10, 7));
    MoveMouse(widget, InFirst(12, 9), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(m_first.point, CPoint(12, 9));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, InFirst(12, 9));
    QTest::mouseDClick(&widget, Qt::LeftButton, {}, InFirst(3, 4));
    QTest::mouseClick(&widget, Qt::RightButton, {}, InFirst(3, 4));
    QTest::mouseClick(&widget, Qt::MiddleButton, {}, InFirst(3, 4));
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {1, 0});  // on the border
    EXPECT_EQ(m_first.TakeRecord(), (Record{{WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT},
                                            {WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL},
                                            {WM_LBUTTONUP, 0},
                                            {WM_LBUTTONDBLCLK, MK_LBUTTON},
                                            {WM_RBUTTONDOWN, MK_RBUTTON | MK_LBUTTON},
                                            {WM_RBUTTONUP, MK_LBUTTON}}));

    TurnWheel(widget, -240, Qt::ControlModifier);
    const QPoint middle = widget.mapToGlobal(widget.rect().center());
    EXPECT_EQ(m_first.point, CPoint(middle.x(), middle.y())) << "on the screen";
    for (const int part : {60, 45, 15})
        TurnWheel(widget, part);
    EXPECT_EQ(m_first.record, (Record{{WM_MOUSEWHEEL, MakeWParam(MK_CONTROL, static_cast<WORD>(-240))},
                                      {WM_MOUSEWHEEL, MakeWParam(0, 120)}}));
}

TEST_F(QtInput, CharacterFollowsItsKeyWhateverBecomesOfIt) {
    m_first.interest = {WM_KEYDOWN, WM_KEYUP, WM_CHAR};
    m_first.script = [](UINT message) {
        return message == WM_KEYDOWN ? std::optional<LRESULT>(0) : std::nullopt;
    };
    QTest::keyClick(QApplication::focusWidget(), 'a');
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(m_first.TakeRecord(), (Record{{WM_KEYDOWN, 'A'},
                                            {WM_CHAR, 'a'},
                                            {WM_KEYUP, 'A'},
                                            {WM_KEYDOWN, VK_RETURN},
                                            {WM_CHAR, '\r'},
                                            {WM_KEYUP, VK_RETURN}}));
    SendKey(QEvent::KeyPress, Qt::Key_Delete, false, "\x7F");
    SendKey(QEvent::KeyPress, Qt::Key_Left);
    SendKey(QEvent::KeyRelease, Qt::Key_Left, true);
    SendKey(QEvent::KeyPress, Qt::Key_Left, true);
    SendKey(QEvent::KeyRelease, Qt::Key_Left);
    EXPECT_EQ(
        m_first.TakeRecord(),
        (Record{{WM_KEYDOWN, VK_DELETE}, {WM_KEYDOWN, VK_LEFT}, {WM_KEYDOWN, VK_LEFT}, {WM_KEYUP, VK_LEFT}}));
    Commit("中€𠀀");
    EXPECT_EQ(m_first.record, (Record{{WM_CHAR, 0xD6D0}, {WM_CHAR, 0xA2E3}, {WM_CHAR, 0x95328236}}));
}

TEST_F(QtInput, KeyOrCompositionThatOpensAnEditorGoesOnThere) {
    m_first.interest = m_second.interest = {WM_KEYUP, WM_IME_STARTCOMPOSITION, WM_CHAR};
    m_first.script = [&](UINT message) -> std::optional<LRESULT> {
        if (message == WM_KEYDOWN || message == WM_IME_STARTCOMPOSITION)
            m_second.SetFocus();
        return std::nullopt;
    };
    SendKey(QEvent::KeyPress, Qt::Key_Return);
    SendKey(QEvent::KeyRelease, Qt::Key_Return);
    EXPECT_THAT(m_second.record, IsEmpty()) << "the release of a key that another window got";
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(m_second.TakeRecord(), (Record{{WM_KEYUP, VK_UP}}));

    m_first.SetFocus();
    m_first.record.clear();
    QInputMethodEvent start("zhong", {});
    QCoreApplication::sendEvent(QApplication::focusWidget(), &start);
    Commit("中");
    EXPECT_EQ(m_first.record, (Record{{WM_IME_STARTCOMPOSITION, 0}}));
    EXPECT_EQ(m_second.record, (Record{{WM_IME_STARTCOMPOSITION, 0}, {WM_CHAR, 0xD6D0}}));
}

TEST_F(QtInput, BothWindowsHearOfTheFocusAtOnceThoughNoneIsActive) {
    m_top.ShowWindow(FALSE);
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeWindow() == nullptr; }));
    m_first.interest = m_second.interest = {WM_SETFOCUS, WM_KILLFOCUS};
    m_first.SetFocus();
    m_first.record.clear();
    m_second.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_second);
    EXPECT_EQ(m_first.record, (Record{{WM_KILLFOCUS, ParamOf(m_second)}}));
    EXPECT_EQ(m_second.TakeRecord(), (Record{{WM_SETFOCUS, ParamOf(m_first)}}));
    EXPECT_EQ(WidgetOf(m_top).focusWidget(), &WidgetOf(m_second)) << "when it becomes active";
}

TEST_F(QtInput, PopupIsNoLossOfTheFocusButAnotherWindowIs) {
    CComboBox combo;
    combo.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST, {10, 140, 110, 190}, &m_top, 3);
    combo.AddString("item");
    m_top.interest = m_first.interest = {WM_SETFOCUS, WM_KILLFOCUS, WM_COMMAND};
    QMenu menu;
    menu.addAction("action");
    menu.popup({50, 50});
    ASSERT_EQ(QApplication::activePopupWidget(), &menu);
    menu.close();
    EXPECT_THAT(m_first.record, IsEmpty());
    combo.SetFocus();
    m_top.record.clear();
    combo.ShowDropDown();
    ASSERT_TRUE(combo.GetDroppedState());
    EXPECT_EQ(CWnd::GetFocus(), &combo);
    combo.ShowDropDown(FALSE);
    EXPECT_EQ(m_top.record,
              (Record{{WM_COMMAND, MakeWParam(3, CBN_DROPDOWN)}, {WM_COMMAND, MakeWParam(3, CBN_CLOSEUP)}}));
    m_first.SetFocus();
    m_first.record.clear();
    QWidget other;
    Activate(other);
    Activate(WidgetOf(m_top));
    EXPECT_EQ(m_first.record, (Record{{WM_KILLFOCUS, 0}, {WM_SETFOCUS, 0}}));
}

TEST_F(QtInput, CaptureLeadsTheMouseUntilItsEndIsTold) {
    m_first.interest = {WM_MOUSEMOVE, WM_CAPTURECHANGED};
    m_first.SetCapture();
    MoveMouse(WidgetOf(m_second), {5, 6});
    CPoint expected(5, 6);
    m_second.ClientToScreen(&expected);
    m_first.ScreenToClient(&expected);
    EXPECT_EQ(m_first.point, expected);
    m_first.ConfinePointer({2, 3, 40, 50});
    MoveMouse(WidgetOf(m_second), {5, 90});
    EXPECT_EQ(m_first.point, CPoint(39, 49));
    MoveMouse(WidgetOf(m_top), {0, 0});
    EXPECT_EQ(m_first.point, CPoint(2, 3));
    CWnd::ReleasePointer();
    MoveMouse(WidgetOf(m_first), InFirst(60, 70));
    EXPECT_EQ(m_first.point, CPoint(60, 70));

    QMenu menu;
    QWidget other;
    menu.addAction("action");
    const std::function<void()> ends[] = {[&] { m_first.ShowWindow(FALSE); },
                                          [&] {
                                              menu.popup({50, 50});
                                          },
                                          [&] { Activate(other); }};
    for (const auto& end : ends) {
        menu.close();
        m_first.ShowWindow(TRUE);
        m_first.SetCapture();
        m_first.record.clear();
        end();
        MoveMouse(WidgetOf(m_second), {5, 6});
        EXPECT_EQ(m_first.record, (Record{{WM_CAPTURECHANGED, 0}}));
        EXPECT_EQ(CWnd::GetCapture(), nullptr);
    }
}

}  // namespace kortavin::testing
