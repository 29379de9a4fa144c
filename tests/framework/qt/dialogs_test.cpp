#include <QDialog>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <stdexcept>

#include "framework/window/button.h"
#include "framework/window/dialog.h"
#include "framework/window/metrics.h"
#include "resources/texts.h"
#include "tests/framework/qt/qttest.h"

namespace kortavin::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kGo = 11, kCanvas = 12;
constexpr DWORD kShown = WS_VISIBLE | WS_TABSTOP;
constexpr window::ControlTemplate kControls[] = {
    {"Button", kGo, 1, 50, 8, 40, 14, kShown},
    {"TestWindow", kCanvas, 0, 7, 40, 100, 50, kShown},
    {"Button", IDOK, 0, 0, 100, 40, 14, kShown | BS_DEFPUSHBUTTON},
    {"Button", IDCANCEL, 0, 50, 100, 40, 14, kShown}};
constexpr window::DialogTemplate kDialog{1,       1,  150,      120, WS_POPUP | WS_CAPTION | WS_SYSMENU,
                                         "Arial", 10, kControls};
const window::ResourceModule kModule{
    "test.dll", {}, [](unsigned number) { return number == 1 ? "\xB2\xE2 & go" : nullptr; }, {}};

class TestDialog : public CDialog {
  public:
    explicit TestDialog(CWnd* parent = nullptr) { InitModalIndirect(kDialog, parent, &kModule); }

    EventWindow canvas;
    std::function<void()> onGo;

    // Runs it while the user does `script` in it.
    int Run(const std::function<void()>& script) {
        QTimer::singleShot(0, [this, script] {
            Activate(WidgetOf(*this));
            script();
            if (IsWindowVisible()) {
                ADD_FAILURE() << "the dialog stays open";
                EndDialog(-1);
            }
        });
        return DoModal();
    }
    QWidget& Item(int id) { return WidgetOf(*GetDlgItem(id)); }
    void Click(int id) { QTest::mouseClick(&Item(id), Qt::LeftButton); }
    void PressKey(Qt::Key key) { QTest::keyClick(WidgetOf(*this).focusWidget(), key); }
    void OnGo() { onGo(); }
    const window::MessageMap* GetMessageMap() const override {
        static constexpr window::MessageEntry kEntries[] = {window::OnCommand<kGo, &TestDialog::OnGo>()};
        static const window::MessageMap map{CDialog::GetMessageMap(), kEntries};
        return &map;
    }

  protected:
    void DoDataExchange(CDataExchange* exchange) override { DDX_Control(exchange, kCanvas, canvas); }
};

class QtDialogs : public QtTest {
  protected:
    TestDialog m_dialog;
};

}  // namespace

TEST_F(QtDialogs, ControlsLieWhereTheTemplateSaysInItsFont) {
    m_dialog.Run([&] {
        QWidget& widget = WidgetOf(m_dialog);
        EXPECT_EQ(widget.windowTitle(), QString::fromUtf8("测 & go"));
        CRect all(0, 0, 150, 120), go(50, 8, 90, 22);
        m_dialog.MapDialogRect(&all);
        m_dialog.MapDialogRect(&go);
        EXPECT_EQ(widget.size(), QSize(all.right, all.bottom));
        EXPECT_EQ(m_dialog.Item(kGo).geometry(), QRect(go.left, go.top, go.Width(), go.Height()));
        // "Arial" in 10 points at 96 pixels an inch: 13 pixels to the em.
        EXPECT_EQ(m_dialog.Item(kGo).font().pixelSize(), 13);
        EXPECT_EQ(m_dialog.canvas.GetFont()->GetLogFont(), window::MessageBoxFont());
        EXPECT_EQ(all.bottom, 120 * QFontMetrics(m_dialog.Item(kGo).font()).height() / 8);
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(kGo));
        EXPECT_EQ(widget.focusWidget(), &m_dialog.Item(kGo));
        m_dialog.EndDialog(0);
    });
}

TEST_F(QtDialogs, EnterAcceptsAndEscOrTheCloseBoxCancels) {
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.Click(IDOK); }), IDOK);
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.canvas.SetFocus(), m_dialog.PressKey(Qt::Key_Return); }), IDOK);
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.Click(IDCANCEL); }), IDCANCEL);
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.PressKey(Qt::Key_Escape); }), IDCANCEL);
    EXPECT_EQ(m_dialog.Run([&] { WidgetOf(m_dialog).close(); }), IDCANCEL);
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.DestroyWindow(); }), IDCANCEL);
    m_dialog.onGo = [&] { m_dialog.EndDialog(77); };
    EXPECT_EQ(m_dialog.Run([&] { m_dialog.PressKey(Qt::Key_Return); }), 77) << "the button with the focus";
    EXPECT_EQ(m_dialog.canvas.GetSafeHwnd(), nullptr);
}

TEST_F(QtDialogs, KeysAreTheDialogsUnlessAControlAsksForThem) {
    m_dialog.canvas.interest = {WM_KEYDOWN};
    const auto staysAfter = [&](UINT code, Qt::Key key) {
        m_dialog.canvas.SetFocus();
        m_dialog.canvas.dialogCode = code;
        m_dialog.PressKey(key);
        return m_dialog.m_hWnd != nullptr && CWnd::GetFocus() == &m_dialog.canvas;
    };
    const int result = m_dialog.Run([&] {
        EXPECT_FALSE(staysAfter(0, Qt::Key_Tab));
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(IDOK));
        EXPECT_FALSE(staysAfter(DLGC_WANTARROWS, Qt::Key_Tab));
        EXPECT_TRUE(staysAfter(DLGC_WANTTAB, Qt::Key_Tab));
        EXPECT_TRUE(staysAfter(DLGC_WANTARROWS, Qt::Key_Down));
        EXPECT_TRUE(staysAfter(DLGC_WANTALLKEYS, Qt::Key_Return));
        EXPECT_TRUE(m_dialog.canvas.record.size() >= 3);
        m_dialog.canvas.SetFocus();
        QTest::keyClick(&m_dialog.Item(kCanvas), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(IDOK)) << "Ctrl+Tab moves on from every control";
        EXPECT_TRUE(WidgetOf(m_dialog).isVisible());
        staysAfter(DLGC_WANTALLKEYS, Qt::Key_Escape);
    });
    EXPECT_EQ(result, IDCANCEL);
}

TEST_F(QtDialogs, NestedDialogGivesTheFocusBack) {
    int inner = 0;
    m_dialog.onGo = [&] {
        TestDialog nested(&m_dialog);
        inner = nested.Run([&] {
            EXPECT_EQ(WidgetOf(nested).parentWidget(), &WidgetOf(m_dialog));
            EXPECT_EQ(QApplication::activeModalWidget(), &WidgetOf(nested));
            nested.Click(IDOK);
        });
    };
    EXPECT_EQ(m_dialog.Run([&] {
        m_dialog.Click(kGo);
        EXPECT_EQ(inner, IDOK);
        EXPECT_EQ(CWnd::GetFocus(), m_dialog.GetDlgItem(kGo));
        m_dialog.PressKey(Qt::Key_Escape);
    }),
              IDCANCEL);
}

TEST_F(QtDialogs, HostsWidgetIsTheirParentAndMayTakeThemAlong) {
    auto host = std::make_unique<QWidget>();
    host->show();
    EXPECT_EQ(qt::WindowOf(nullptr), nullptr);
    CWnd* const parent = qt::WindowOf(host.get());
    EXPECT_EQ(qt::WindowOf(host.get()), parent);
    TestDialog dialog(parent);
    EXPECT_EQ(dialog.Run([&] {
        EXPECT_EQ(WidgetOf(dialog).parentWidget(), host.get());
        host.reset();
        EXPECT_EQ(dialog.m_hWnd, nullptr);
    }),
              IDCANCEL);
}

TEST_F(QtDialogs, FrameworkErrorIsShownOnceAndTheLoopGoesOn) {
    window::SetMessageBoxHandler({});
    m_dialog.onGo = [] { throw CResourceException("\xB4\xED\xCE\xF3 <b>"); };
    int shown = 0;
    EXPECT_EQ(m_dialog.Run([&] {
        InNextBox<QMessageBox>([&](QMessageBox& box) {
            ++shown;
            EXPECT_EQ(box.text(), QString::fromUtf8("错误 <b>"));
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.button(QMessageBox::Ok)->text(), QString::fromUtf8("确定"));
            QTest::keyClick(&box, Qt::Key_Return);
        });
        m_dialog.Click(kGo);
        EXPECT_EQ(shown, 1);
        EXPECT_EQ(QApplication::activeModalWidget(), &WidgetOf(m_dialog));
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
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtDialogs, OpeningAndClosingLeavesNothingBehind) {
    std::vector<HWND> windows;
    const auto countObjects = [] {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return std::tuple(QApplication::allWidgets().size(), QGuiApplication::allWindows().size(),
                          qApp->findChildren<QObject*>().size());
    };
    const auto openAndClose = [&](int id) {
        return m_dialog.Run([&] {
            windows.assign({m_dialog.m_hWnd, m_dialog.canvas.m_hWnd, m_dialog.GetDlgItem(kGo)->m_hWnd});
            m_dialog.Click(id);
        });
    };
    openAndClose(IDOK);
    const auto before = countObjects();
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(openAndClose(i % 2 == 0 ? IDOK : IDCANCEL), i % 2 == 0 ? IDOK : IDCANCEL);
        ASSERT_TRUE(std::ranges::none_of(windows, &window::IsWindow));
    }
    EXPECT_EQ(countObjects(), before);
}

}  // namespace kortavin::testing
