#include <QMessageBox>
#include <QPushButton>
#include <stdexcept>

#include "kortavin/window/dialog.h"
#include "kortavin/window/metrics.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr int kGo = 11, kCanvas = 12;
constexpr DWORD kShown = WS_VISIBLE | WS_TABSTOP;
constexpr window::ControlTemplate kControls[] = {
    {"Button", kGo, 1, 50, 8, 40, 14, kShown},
    {"TestWindow", kCanvas, 0, 7, 40, 100, 50, kShown},
    {"Button", IDOK, 0, 0, 100, 40, 14, kShown | BS_DEFPUSHBUTTON},
    {"Button", IDCANCEL, 0, 50, 100, 40, 14, kShown}};
constexpr window::DialogTemplate kDialog{1,       1,  150,      120, WS_POPUP | WS_CAPTION | WS_SYSMENU,
                                         "Arial", 10, kControls};
const window::ResourceModule kModule{"test.dll", {}, [](unsigned) { return "\xB2\xE2 & go"; }, {}};

class TestDialog : public CDialog {
  public:
    explicit TestDialog(CWnd* parent = nullptr) { InitModalIndirect(kDialog, parent, &kModule); }

    EventWindow canvas;
    std::function<void()> onGo;

    // Runs it while the user does `script` in it.
    int Run(const std::function<void()>& script) {
        InNextBox<QDialog>([this, script](QDialog& box) {
            EXPECT_EQ(&box, &WidgetOf(*this));
            script();
        });
        return DoModal();
    }
    QWidget& Item(int id) { return WidgetOf(*GetDlgItem(id)); }
    void Click(int id) { QTest::mouseClick(&Item(id), Qt::LeftButton); }
    // In the canvas, which asks for the keys of the code: whether it has the focus still.
    bool KeepsFocus(UINT code, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        canvas.SetFocus();
        canvas.dialogCode = code;
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        return CWnd::GetFocus() == &canvas;
    }

  protected:
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, kCanvas, canvas); }
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (LOWORD(wParam) == kGo)
            onGo();
        return CDialog::OnCommand(wParam, lParam);
    }
};

class QtDialogs : public QtTest {
  protected:
    TestDialog m_dialog;
};

}  // namespace

TEST_F(QtDialogs, ControlsLieWhereTheTemplateSaysInItsFont) {
    m_dialog.Run([&] {
        const QWidget &dialog = WidgetOf(m_dialog), &go = m_dialog.Item(kGo);
        EXPECT_EQ(dialog.windowTitle(), QString::fromUtf8("测 & go"));
        EXPECT_EQ(go.font().pixelSize(), 13) << "10 points";
        CRect units(50, 8, 150, 120);
        m_dialog.MapDialogRect(&units);
        EXPECT_EQ(units.bottom, 120 * QFontMetrics(go.font()).height() / 8);
        EXPECT_EQ(dialog.size(), QSize(units.right, units.bottom));
        EXPECT_EQ(go.pos(), QPoint(units.left, units.top));
        EXPECT_EQ(m_dialog.canvas.GetFont()->GetLogFont(), window::MessageBoxFont());
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(kGo));
        EXPECT_EQ(QApplication::focusWidget(), &go);
        m_dialog.EndDialog(0);
    });
}

TEST_F(QtDialogs, EnterAcceptsAndEscOrTheCloseBoxCancels) {
    m_dialog.onGo = [&] { m_dialog.EndDialog(77); };
    QTimer::singleShot(0, [&] { m_dialog.Click(IDOK); });
    EXPECT_EQ(m_dialog.DoModal(), IDOK);  // may count as active still when the next one opens
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.KeepsFocus(0, Qt::Key_Return); }), IDOK);
    EXPECT_EQ(m_dialog.Run([&] { QTest::keyClick(&m_dialog.Item(kGo), Qt::Key_Return); }), 77)
        << "the button that has the focus";
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.KeepsFocus(DLGC_WANTALLKEYS, Qt::Key_Escape); }), IDCANCEL);
    EXPECT_EQ(m_dialog.Run([&] { WidgetOf(m_dialog).close(); }), IDCANCEL);
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.DestroyWindow(); }), IDCANCEL);
    EXPECT_EQ(m_dialog.canvas.GetSafeHwnd(), nullptr);
}

TEST_F(QtDialogs, KeysMoveTheFocusUnlessAControlAsksForThem) {
    m_dialog.Run([&] {
        m_dialog.canvas.interest = {WM_KEYDOWN};
        EXPECT_FALSE(m_dialog.KeepsFocus(DLGC_WANTARROWS, Qt::Key_Tab));
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(IDOK));
        EXPECT_FALSE(m_dialog.KeepsFocus(DLGC_WANTALLKEYS, Qt::Key_Tab, Qt::ControlModifier));
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(IDOK));
        m_dialog.canvas.record.clear();
        EXPECT_TRUE(m_dialog.KeepsFocus(DLGC_WANTTAB, Qt::Key_Tab));
        EXPECT_TRUE(m_dialog.KeepsFocus(DLGC_WANTARROWS, Qt::Key_Down));
        EXPECT_TRUE(m_dialog.KeepsFocus(DLGC_WANTALLKEYS, Qt::Key_Return));
        EXPECT_EQ(m_dialog.canvas.record,
                  (Record{{WM_KEYDOWN, VK_TAB}, {WM_KEYDOWN, VK_DOWN}, {WM_KEYDOWN, VK_RETURN}}));
        EXPECT_TRUE(WidgetOf(m_dialog).isVisible());
        m_dialog.EndDialog(0);
    });
}

TEST_F(QtDialogs, NestedDialogLiesOverItsParentWhichMayTakeItAlong) {
    auto host = std::make_unique<QWidget>();
    host->show();
    EXPECT_EQ(qt::WindowOf(nullptr), nullptr);
    CWnd* const parent = qt::WindowOf(host.get());
    EXPECT_EQ(qt::WindowOf(host.get()), parent);
    TestDialog outer(parent), inner(&outer);
    outer.onGo = [&] {
        EXPECT_EQ(inner.Run([&] { inner.Click(IDOK); }), IDOK);
        EXPECT_EQ(CWnd::GetFocus(), outer.GetDlgItem(kGo));
        EXPECT_EQ(inner.Run([&] {
            EXPECT_EQ(WidgetOf(inner).parentWidget(), &WidgetOf(outer));
            EXPECT_EQ(WidgetOf(outer).parentWidget(), host.get());
            host.reset();
        }),
                  IDCANCEL);
        EXPECT_EQ(inner.m_hWnd, nullptr);
    };
    EXPECT_EQ(outer.Run([&] { outer.Click(kGo); }), IDCANCEL);
}

TEST_F(QtDialogs, FrameworkErrorIsShownOnceAndTheLoopGoesOn) {
    window::SetMessageBoxHandler({});
    m_dialog.onGo = [] { throw CResourceException("\xB4\xED\xCE\xF3 <b>"); };
    int shown = 0;
    const auto closeBox = [&](QMessageBox& box) {
        ++shown;
        EXPECT_EQ(box.text(), QString::fromUtf8("错误 <b>"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.button(QMessageBox::Ok)->text(), QString::fromUtf8("确定"));
        QTest::keyClick(&box, Qt::Key_Return);
    };
    EXPECT_EQ(m_dialog.Run([&] {
        InNextBox<QMessageBox>(closeBox);
        m_dialog.Click(kGo);
        EXPECT_EQ(shown, 1);
        m_dialog.Click(IDOK);
    }),
              IDOK);
}

TEST_F(QtDialogs, OtherErrorEndsTheInnermostRunAndIsThrownThere) {
    m_dialog.onGo = [&] {
        TestDialog nested(&m_dialog);
        nested.onGo = [] { throw std::runtime_error("unexpected"); };
        EXPECT_THROW(nested.Run([&] { nested.Click(kGo); }), std::runtime_error);
        EXPECT_TRUE(WidgetOf(m_dialog).isVisible());
        throw std::logic_error("another");
    };
    EXPECT_THROW(m_dialog.Run([&] { m_dialog.Click(kGo); }), std::logic_error);
}

TEST_F(QtDialogs, OpeningAndClosingLeavesNothingBehind) {
    const auto countObjects = [] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return std::tuple(QApplication::allWidgets().size(), QGuiApplication::allWindows().size(),
                          qApp->findChildren<QObject*>().size());
    };
    HWND control = nullptr;
    const auto openAndClose = [&](int id) {
        return m_dialog.Run([&] {
            control = m_dialog.canvas.m_hWnd;
            m_dialog.Click(id);
        });
    };
    openAndClose(IDOK);
    const auto before = countObjects();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(openAndClose(IDOK + i % 2), IDOK + i % 2);
        ASSERT_FALSE(window::IsWindow(control));
    }
    EXPECT_EQ(countObjects(), before);
}

}  // namespace kortavin::testing
