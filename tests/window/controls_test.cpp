#include "kortavin/window/button.h"
#include "kortavin/window/combobox.h"
#include "kortavin/window/metrics.h"
#include "kortavin/window/windowrecord.h"
#include "tests/window/testwindow.h"

using kortavin::window::MessageEntry;
using kortavin::window::MessageMap;
using kortavin::window::OnMessage;
using namespace kortavin::testing;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

namespace {

constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);

// Fills what is invalid with its colour.
class PaintingWindow : public TestWindow {
  public:
    COLORREF color = kBlue;

    void OnPaint() {
        CPaintDC dc(this);
        dc.FillSolidRect({0, 0, 1000, 1000}, color);
    }
    const MessageMap* GetMessageMap() const override {
        static constexpr MessageEntry kEntries[] = {OnMessage<WM_PAINT, &PaintingWindow::OnPaint>()};
        static const MessageMap map{TestWindow::GetMessageMap(), kEntries};
        return &map;
    }
};

class PictureCombo : public CComboBox {
  public:
    std::vector<DRAWITEMSTRUCT> requests;

    void MeasureItem(LPMEASUREITEMSTRUCT request) override {
        EXPECT_EQ(request->itemHeight, 16U);
        request->itemHeight = 20;
        SetItemHeight(-1, 24);
    }
    void DrawItem(LPDRAWITEMSTRUCT request) override {
        EXPECT_EQ(request->hDC->GetBkColor(), GetSysColor(COLOR_WINDOW));
        request->hDC->FillSolidRect(request->rcItem, kRed);
        requests.push_back(*request);
    }
};

class Controls : public ::testing::Test {
  protected:
    Controls() {
        parent.interest = {WM_COMMAND};
        parent.Open({10, 10, 210, 110});
    }
    void OpenCombo(CComboBox& combo, DWORD style) {
        combo.Create(style | WS_CHILD | WS_VISIBLE, {0, 0, 97, 150}, &parent, 4);
    }

    MemoryDesktop desktop;
    TestWindow parent;
};

}  // namespace

TEST_F(Controls, WindowsThatCannotBeMadeAreRefused) {
    CWnd window;
    EXPECT_FALSE(window.Create("NoSuchClass", "", WS_POPUP, {}, nullptr, 1));
    EXPECT_FALSE(window.Create("Static", "", WS_CHILD, {}, nullptr, 1));
    EXPECT_TRUE(window.Create("static", "", WS_CHILD, {}, &parent, 1));
    EXPECT_FALSE(window.Create("Static", "", WS_CHILD, {}, &parent, 1));
    CWnd second;
    EXPECT_FALSE(second.SubclassWindow(window.GetSafeHwnd()));
    EXPECT_EQ(desktop->Windows().size(), 2U);
}

TEST_F(Controls, ObjectLeavesAWindowThatItWasAttachedTo) {
    CButton maker;
    maker.Create("text", WS_CHILD, {}, &parent, 3);
    const HWND window = maker.UnsubclassWindow();
    {
        CButton guest;
        EXPECT_TRUE(guest.SubclassDlgItem(3, &parent));
        guest.SetCheck(1);
    }
    ASSERT_TRUE(kortavin::window::IsWindow(window));
    EXPECT_EQ(CWnd::FromHandle(window)->GetWindowText(), "text");
}

TEST_F(Controls, ItemsAreFoundByTheirBeginningWithAsciiLettersFolded) {
    CComboBox combo;
    OpenCombo(combo, CBS_DROPDOWNLIST);
    for (const char* const text : {"Rivers", "roads", "\xB0\x41", "\xB0\x61", ""})
        combo.AddString(text);
    EXPECT_EQ(combo.FindString(-1, "R"), 0);
    EXPECT_EQ(combo.FindString(0, "R"), 1);
    EXPECT_EQ(combo.FindString(1, "R"), 0);
    EXPECT_EQ(combo.FindString(99, "ROADS"), 1);
    EXPECT_EQ(combo.FindString(-1, "\xB0\x61"), 3);
    EXPECT_EQ(combo.FindString(-1, ""), CB_ERR);
    EXPECT_EQ(combo.FindString(-1, "roads "), CB_ERR);
    EXPECT_EQ(combo.FindStringExact(-1, "road"), CB_ERR);
    EXPECT_EQ(combo.FindStringExact(-1, "ROADS"), 1);
    EXPECT_EQ(combo.SelectString(-1, "RO"), 1);
    EXPECT_EQ(combo.SelectString(-1, "x"), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), 1);
}

TEST_F(Controls, OnlyTheUsersSelectionIsNotified) {
    CComboBox combo;
    OpenCombo(combo, CBS_DROPDOWNLIST);
    for (const char* const text : {"a", "b", "c"})
        combo.AddString(text);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.SetCurSel(2), 2);
    EXPECT_EQ(combo.InsertString(0, "new"), 0);
    EXPECT_EQ(combo.GetCurSel(), 3);
    EXPECT_EQ(combo.DeleteString(0), 3);
    EXPECT_EQ(combo.SetCurSel(3), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.DeleteString(3), CB_ERR);
    EXPECT_EQ(combo.InsertString(5, "x"), CB_ERR);
    EXPECT_THAT(parent.record, IsEmpty());

    combo.SetFocus();
    parent.record.clear();
    Key(VK_DOWN);
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_THAT(parent.record, ElementsAre(Pair(WM_COMMAND, MakeWParam(4, CBN_SELCHANGE))));
    parent.record.clear();
    PickItem(combo, 2);
    EXPECT_EQ(combo.GetWindowText(), "c");
    EXPECT_THAT(parent.record, ElementsAre(Pair(WM_COMMAND, MakeWParam(4, CBN_DROPDOWN)),
                                           Pair(WM_COMMAND, MakeWParam(4, CBN_CLOSEUP)),
                                           Pair(WM_COMMAND, MakeWParam(4, CBN_SELCHANGE))));
}

TEST_F(Controls, OwnerDrawnComboDrawsItsFieldAndItsItems) {
    PictureCombo combo;
    OpenCombo(combo, CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED);
    combo.AddString(" ");
    Loop();
    ASSERT_EQ(combo.requests.size(), 1U);
    EXPECT_EQ(combo.requests[0].itemID, static_cast<UINT>(-1));
    EXPECT_EQ(combo.requests[0].itemState, ODS_COMBOBOXEDIT);
    EXPECT_EQ(combo.requests[0].rcItem, CRect(0, 0, 80, 24));
    EXPECT_EQ(SurfaceOf(combo).CountOf(kRed), 80 * 24);

    PixelSurface list(50, 50);
    DrawListItem(combo, 0, list, {10, 10, 30, 10 + combo.GetItemHeight(0)});
    EXPECT_EQ(list.CountOf(kRed), 20 * 20);
    EXPECT_EQ(combo.requests.back().itemState & ODS_COMBOBOXEDIT, 0U);
    combo.SetCurSel(0);
    Loop();
    EXPECT_EQ(combo.requests.back().itemID, 0U);
}

TEST_F(Controls, ScrollBarsStopBeforeTheLastPageAndHideWhenThatIsAll) {
    TestWindow window;
    window.interest = {WM_SIZE, WM_VSCROLL};
    window.Open({0, 0, 100, 60}, &parent, 2, WS_BORDER | WS_VSCROLL | WS_HSCROLL);
    CRect client;
    window.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 98, 58));
    window.SetScrollRange(SB_VERT, 0, 99);
    window.SetScrollPage(SB_VERT, 10);
    window.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 81, 58));
    EXPECT_EQ(window.record.size(), 1U);

    EXPECT_EQ(window.SetScrollPos(SB_VERT, 95), 0);
    EXPECT_EQ(window.GetScrollPos(SB_VERT), 90);
    EXPECT_EQ(window.SetScrollPos(SB_VERT, -5), 90);
    EXPECT_EQ(window.GetScrollPos(SB_VERT), 0);
    EXPECT_EQ(window.GetScrollPos(SB_HORZ), 0);
    ScrollBy(window, SB_VERT, SB_THUMBTRACK, 42);
    EXPECT_EQ(window.GetScrollTrackPos(SB_VERT), 42);
    EXPECT_EQ(window.record.back(), std::pair(WM_VSCROLL, MakeWParam(SB_THUMBTRACK, 42)));

    window.SetScrollPage(SB_VERT, 100);
    window.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 98, 58));
}

TEST_F(Controls, RedrawPaintsChildrenAtOnceButNothingHidden) {
    PaintingWindow window, child;
    window.Open({0, 0, 100, 60}, &parent);
    child.Open({10, 10, 20, 20}, &window, 2, WS_BORDER);
    Loop();
    const auto paintsBy = [&](UINT flags) {
        const int before = NativeOf(child).PaintCount();
        window.RedrawWindow(nullptr, flags);
        return NativeOf(child).PaintCount() - before;
    };
    EXPECT_EQ(paintsBy(RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW), 1);
    EXPECT_EQ(paintsBy(RDW_UPDATENOW), 0);
    EXPECT_EQ(paintsBy(RDW_INVALIDATE), 0);
    EXPECT_EQ(paintsBy(RDW_UPDATENOW), 1);
    parent.ShowWindow(FALSE);
    EXPECT_EQ(paintsBy(RDW_INVALIDATE | RDW_UPDATENOW), 0);
    child.color = kRed;
    parent.ShowWindow(TRUE);
    Loop();
    EXPECT_EQ(SurfaceOf(child).CountOf(kRed), 8 * 8);
    const CRect part(0, 0, 12, 60);
    child.color = kBlue;
    window.RedrawWindow(&part);
    EXPECT_EQ(SurfaceOf(child).CountOf(kBlue), 1 * 8);
}

TEST_F(Controls, ScrollingMovesPixelsAndUncoversTheRest) {
    PaintingWindow window;
    window.Open({0, 0, 100, 60}, &parent);
    EXPECT_THROW(CPaintDC{&window}, CResourceException);
    window.UpdateWindow();
    CClientDC(&window).FillSolidRect({0, 30, 100, 31}, kRed);
    const CRect area(0, 20, 100, 60);
    window.ScrollWindow(0, -8, &area);
    EXPECT_EQ(SurfaceOf(window).CountOf(kRed, {0, 22, 100, 23}), 100);
    EXPECT_EQ(NativeOf(window).InvalidRect(), CRect(0, 52, 100, 60));
    window.ScrollWindow(0, -500, &area);
    EXPECT_EQ(NativeOf(window).InvalidRect(), area);
}

TEST_F(Controls, EnablingIsToldWhenItChanges) {
    TestWindow window;
    window.interest = {WM_SIZE, WM_ENABLE};
    window.Open({0, 0, 50, 50}, &parent);
    EXPECT_FALSE(window.EnableWindow(TRUE));
    EXPECT_FALSE(window.EnableWindow(FALSE));
    EXPECT_TRUE(window.EnableWindow(FALSE));
    EXPECT_THAT(window.record, ElementsAre(Pair(WM_ENABLE, 0)));
    CRect place;
    window.GetWindowRect(&place);
    EXPECT_EQ(place, CRect(10, 10, 60, 60));
}
