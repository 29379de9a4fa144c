#include "kortavin/window/dialog.h"

#include <functional>
#include <stdexcept>

#include "kortavin/window/button.h"
#include "kortavin/window/windowrecord.h"
#include "tests/window/testwindow.h"

using kortavin::window::ControlTemplate;
using kortavin::window::DialogTemplate;
using kortavin::window::MessageEntry;
using kortavin::window::MessageMap;
using kortavin::window::ResourceModule;
using namespace kortavin::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr int kLabel = 10, kGo = 11, kCanvas = 12;
constexpr DWORD kShown = WS_VISIBLE;

const char* TextOf(unsigned number) {
    return number == 1 ? "caption" : number == 2 ? "go" : nullptr;
}

constexpr ControlTemplate kControls[] = {
    {"Static", kLabel, 2, 4, 8, 40, 12, kShown},
    {"Button", kGo, 2, 50, 8, 40, 14, kShown | WS_TABSTOP},
    {"TestWindow", kCanvas, 0, 7, 40, 100, 50, kShown | WS_TABSTOP | WS_BORDER},
    {"Button", IDOK, 0, 0, 100, 40, 14, kShown | WS_TABSTOP | BS_DEFPUSHBUTTON},
    {"Button", IDCANCEL, 0, 50, 100, 40, 14, kShown | WS_TABSTOP}};
constexpr ControlTemplate kUnknownClass[] = {{"Static", kLabel, 0, 0, 0, 9, 9, kShown},
                                             {"Spinner", kGo, 0, 0, 0, 9, 9, kShown}};
constexpr DialogTemplate kDialogs[] = {{100, 1, 150, 120, WS_POPUP | WS_CAPTION, "Fixed", 9, kControls},
                                       {101, 0, 50, 50, WS_POPUP, "Fixed", 9, kUnknownClass}};
const ResourceModule kModule{"test.dll", kDialogs, &TextOf, {}};

class TestDialog : public CDialog {
  public:
    using CDialog::CDialog;
    TestWindow canvas;
    CButton go;
    int canvasId = kCanvas;
    std::vector<BOOL> exchanges;
    int cancels = 0;
    std::function<void(TestDialog&)> onInit = [](TestDialog&) {};
    std::function<void(TestDialog&)> onGo = [](TestDialog&) {};

    void OnGo() { onGo(*this); }
    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {kortavin::window::OnCommand<kGo, &TestDialog::OnGo>()};
        static const MessageMap map{CDialog::GetMessageMap(), kEntries};
        return &map;
    }

  protected:
    void DoDataExchange(CDataExchange* exchange) override {
        exchanges.push_back(exchange->m_bSaveAndValidate);
        DDX_Control(exchange, canvasId, canvas);
    }
    void OnCancel() override {
        ++cancels;
        CDialog::OnCancel();
    }
    BOOL OnInitDialog() override {
        const BOOL result = CDialog::OnInitDialog();
        onInit(*this);
        return result;
    }
};

class Dialogs : public ::testing::Test {
  protected:
    Dialogs() {
        kortavin::window::RegisterWindowClass("TestWindow");
        kortavin::window::AddModule(&kModule);
    }
    ~Dialogs() override { kortavin::window::RemoveModule(&kModule); }

    // Runs the dialog while the user does `script` in it.
    int Run(TestDialog& dialog, const std::function<void()>& script) {
        desktop->NextModal(script);
        return dialog.DoModal();
    }
    static void ClickOn(CDialog& dialog, int id) { Click(*dialog.GetDlgItem(id), {2, 2}); }

    MemoryDesktop desktop;
    TestDialog dialog{100};
};

}  // namespace

// A dialog unit is 2 pixels in both directions: the font's cells are 8 by 16.
TEST_F(Dialogs, ControlsStandAsTheTemplateSays) {
    Run(dialog, [&] {
        EXPECT_EQ(dialog.GetWindowText(), "caption");
        CRect client;
        dialog.GetClientRect(&client);
        EXPECT_EQ(client, CRect(0, 0, 300, 240));
        CWnd* const label = dialog.GetDlgItem(kLabel);
        EXPECT_EQ(NativeOf(*label).GetRect(), CRect(8, 16, 88, 40));
        EXPECT_EQ(label->GetWindowText(), "go");
        EXPECT_EQ(label->GetFont()->GetLogFont().lfHeight, -12);
        EXPECT_EQ(dialog.canvas.GetFont()->GetLogFont(), desktop->MessageBoxFont());  // not the template's
        dialog.canvas.GetClientRect(&client);
        EXPECT_EQ(client.Size(), CSize(198, 98));
        EXPECT_EQ(dialog.canvas.GetParent(), &dialog);
        EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(kGo));
        CRect mapped(4, 8, 8, 16);
        dialog.MapDialogRect(&mapped);
        EXPECT_EQ(mapped, CRect(8, 16, 16, 32));
    });
    EXPECT_EQ(dialog.canvas.GetSafeHwnd(), nullptr);
}

TEST_F(Dialogs, TemplateIsThatOfTheCurrentSourceThenOfTheChain) {
    static constexpr DialogTemplate kOther[] = {{100, 9, 10, 10, WS_POPUP, "Fixed", 9, {}}};
    static const ResourceModule other{"other.dll", kOther, [](unsigned) { return "other"; }, {}};
    const kortavin::window::SourceScope scope(&other);
    const auto captionOf = [&](unsigned id) {
        CDialog bare(id);
        CString caption;
        desktop->NextModal([&] { caption = bare.GetWindowText(); });
        bare.DoModal();
        return caption;
    };
    EXPECT_EQ(captionOf(100), "other");
    kortavin::window::SetCurrentSource(nullptr);
    EXPECT_EQ(captionOf(100), "caption");
    TestDialog inMemory;
    inMemory.InitModalIndirect(kDialogs[0], nullptr, &kModule);
    EXPECT_EQ(Run(inMemory, [&] { EXPECT_EQ(inMemory.GetWindowText(), "caption"); }), IDCANCEL);
}

TEST_F(Dialogs, OkKeepsTheDataAndAllElseCancels) {
    EXPECT_EQ(Run(dialog, [&] { ClickOn(dialog, IDOK); }), IDOK);
    EXPECT_THAT(std::exchange(dialog.exchanges, {}), ElementsAre(FALSE, TRUE));
    EXPECT_EQ(Run(dialog, [&] { dialog.canvas.SetFocus(), Key(VK_RETURN); }), IDOK);
    dialog.exchanges.clear();
    EXPECT_EQ(Run(dialog, [&] { ClickOn(dialog, IDCANCEL); }), IDCANCEL);
    EXPECT_EQ(Run(dialog, [] { Key(VK_ESCAPE); }), IDCANCEL);
    EXPECT_EQ(Run(dialog, [&] { CloseByUser(dialog); }), IDCANCEL);
    EXPECT_EQ(dialog.cancels, 3);
    EXPECT_EQ(Run(dialog, [&] { dialog.DestroyWindow(); }), IDCANCEL);
    EXPECT_THAT(dialog.exchanges, ElementsAre(FALSE, FALSE, FALSE, FALSE));
    EXPECT_EQ(Run(dialog, [&] { dialog.EndDialog(77); }), 77);
    EXPECT_THAT(desktop->Windows(), IsEmpty());
}

TEST_F(Dialogs, SetUpMayChooseTheFocusOrEndTheDialog) {
    dialog.onInit = [](TestDialog& self) { self.GetDlgItem(kGo)->EnableWindow(FALSE); };
    Run(dialog, [&] { EXPECT_EQ(CWnd::GetFocus(), &dialog.canvas); });
    dialog.onInit = [](TestDialog& self) { self.EndDialog(5); };
    EXPECT_EQ(Run(dialog, [] { ADD_FAILURE() << "shown"; }), 5);
}

TEST_F(Dialogs, WhatDoesNotExistIsAnErrorAndLeavesNoWindow) {
    TestDialog missing(999), unknownClass(101);
    EXPECT_THROW(missing.DoModal(), CResourceException);
    EXPECT_THROW(unknownClass.DoModal(), CResourceException);
    EXPECT_THAT(desktop->Windows(), IsEmpty());

    dialog.canvasId = 55;
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(desktop->MessageBoxes().size(), 1U);
    EXPECT_THAT(desktop->Windows(), IsEmpty());
}

TEST_F(Dialogs, ControlIsAttachedToOneObjectOnly) {
    dialog.onInit = [](TestDialog& self) {
        CDataExchange exchange(&self, FALSE);
        TestWindow second;
        EXPECT_NO_THROW(DDX_Control(&exchange, kCanvas, self.canvas));  // again
        EXPECT_THROW(DDX_Control(&exchange, kCanvas, second), CNotSupportedException);
        EXPECT_THROW(DDX_Control(&exchange, 55, second), CNotSupportedException);
    };
    Run(dialog, [] {});
}

TEST_F(Dialogs, FrameworkErrorIsShownOnceAndTheLoopGoesOn) {
    dialog.onGo = [](TestDialog&) { throw CResourceException("told"); };
    EXPECT_EQ(Run(dialog, [&] { ClickOn(dialog, kGo), ClickOn(dialog, IDOK); }), IDOK);
    EXPECT_THAT(desktop->MessageBoxes(), ElementsAre(CString("told")));
}

TEST_F(Dialogs, OtherErrorEndsTheInnermostRunAndIsThrownThere) {
    dialog.onGo = [&](TestDialog&) {
        TestDialog inner(100);
        inner.onGo = [](TestDialog&) { throw std::runtime_error("unexpected"); };
        EXPECT_THROW(Run(inner,
                         [&] {
                             ClickOn(inner, kGo);
                             ClickOn(inner, IDOK);  // comes too late
                         }),
                     std::runtime_error);
        EXPECT_THAT(inner.exchanges, ElementsAre(FALSE));
        throw std::logic_error("another");
    };
    EXPECT_THROW(Run(dialog, [&] { ClickOn(dialog, kGo); }), std::logic_error);
    EXPECT_THAT(desktop->Windows(), IsEmpty());
    EXPECT_THAT(desktop->MessageBoxes(), IsEmpty());
}

TEST_F(Dialogs, ErrorInSetUpLeavesNoWindow) {
    dialog.onInit = [](TestDialog&) { throw std::runtime_error("unexpected"); };
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_THAT(desktop->Windows(), IsEmpty());
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
}

TEST_F(Dialogs, ErrorOutsideOfAnyRunIsShown) {
    class Throwing : public TestWindow {
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            if (message == WM_LBUTTONDOWN)
                throw std::runtime_error("unexpected");
            return TestWindow::WindowProc(message, wParam, lParam);
        }
    } window;
    window.Open();
    Press(window, {1, 1});
    ASSERT_EQ(desktop->MessageBoxes().size(), 1U);
    EXPECT_GE(desktop->MessageBoxes()[0].Find("unexpected"), 0);
}

TEST_F(Dialogs, NestedDialogKeepsItsOwnerFromInputAndGivesTheFocusBack) {
    int inner = 0;
    dialog.onGo = [&](TestDialog& self) {
        TestDialog nested(100, &self);
        inner = Run(nested, [&] {
            ClickOn(self, IDOK);
            Loop();
            EXPECT_EQ(self.canvas.record.size(), 1U);  // was posted to the outer one, behind this
            EXPECT_EQ(CWnd::GetFocus(), nested.GetDlgItem(kGo));
            Key(VK_ESCAPE);
        });
    };
    EXPECT_EQ(Run(dialog,
                  [&] {
                      dialog.canvas.interest = {WM_USER};
                      dialog.PostMessage(WM_COMMAND, kGo);
                      dialog.canvas.PostMessage(WM_USER);
                      Loop();
                      EXPECT_EQ(inner, IDCANCEL);
                      EXPECT_EQ(CWnd::GetFocus(), dialog.GetDlgItem(kGo));
                      dialog.PostMessage(WM_COMMAND, IDOK);
                  }),
              IDOK);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST_F(Dialogs, OpeningAndClosingLeavesNothingBehind) {
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(Run(dialog, [&] { ClickOn(dialog, i % 2 == 0 ? IDOK : IDCANCEL); }),
                  i % 2 == 0 ? IDOK : IDCANCEL);
    EXPECT_THAT(desktop->Windows(), IsEmpty());
}
