#include "kortavin/grid/gridcellcombo.h"
#include "tests/grid/gridwindow.h"
#include "tests/support/memory/controls.h"

using namespace kortavin::testing;
using ::testing::ElementsAre;

namespace {

constexpr char kAscending[] = "\xC9\xFD\xD0\xF2";
constexpr char kDescending[] = "\xBD\xB5\xD0\xF2";

// Its cells are edited by a list if it has a style for that. A notification of an editor may destroy it.
class EditedGrid : public CGridCtrl {
  public:
    using CGridCtrl::CGridCtrl;
    DWORD listStyle = 0;
    WORD fatalCode = 0;

    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override {
        if (listStyle == 0)
            return CGridCtrl::CreateCellEditor(rect, dwStyle, nID, row, col, text, nChar);
        CStringArray items;
        for (const char* const item : {kAscending, kDescending, "Rivers"})
            items.Add(item);
        CGridCellCombo::Open(this, rect, listStyle, nID, row, col, items, text, static_cast<UINT>(nChar));
    }
    BOOL OnCommand(WPARAM wParam, LPARAM) override {
        if (HIWORD(wParam) == fatalCode)
            DestroyWindow();
        return TRUE;
    }
};

class GridEditing : public GridWindow {
  protected:
    // The focus is on a cell with this text; the others' is "old".
    void Start(CGridPos cell = {1, 1}, const char* text = "old", DWORD listStyle = 0) {
        if (!IsThere())
            Open<EditedGrid>(4, 8);
        grid->SetFocus();
        Loop();
        for (int row = 1; row < grid->GetRowCount(); ++row)
            for (int col = 1; col < grid->GetColumnCount(); ++col)
                grid->SetItemText(row, col, CGridPos(row, col) == cell ? text : "old");
        grid->SetModified(FALSE);
        grid->SetFocusCell(cell);
        dynamic_cast<EditedGrid&>(*grid).listStyle = listStyle;
        host.told.clear();
    }
    bool IsThere() const { return grid != nullptr && grid->m_hWnd != nullptr; }
    CString Text(int row, int col) const { return grid->GetItemText(row, col); }
    CWnd* Editor() const { return grid->GetDlgItem(GridEditorControlId); }
    CRect EditorRect() const { return NativeOf(*Editor()).GetRect(); }
    CComboBox& Combo() const { return dynamic_cast<CComboBox&>(*Editor()); }
    // The text of the editor that has the focus, its selection in brackets or its caret as a bar.
    std::string Shown() const {
        CWnd* const focus = CWnd::GetFocus();
        if (focus == nullptr || focus == grid.get())
            return {};
        const auto ends = static_cast<WPARAM>(focus->SendMessage(EM_GETSEL));
        std::string text(focus->GetWindowText().View());
        if (LOWORD(ends) == HIWORD(ends))
            return text.insert(LOWORD(ends), "|");
        return text.insert(HIWORD(ends), "]").insert(LOWORD(ends), "[");
    }
    std::string After(UINT key, UINT keys = 0) const {
        Key(key, keys);
        Loop();
        return Shown();
    }
};

TEST_F(GridEditing, AnEditorCoversItsCellInTheCellsFontAndAlignment) {
    for (const auto& [typed, shown] : {std::pair("x", "x|"), {" ", "[old]"}, {"\xD6\xD0", "\xD6\xD0|"}}) {
        Start();
        Type(typed);
        EXPECT_EQ(Shown(), shown);
        EXPECT_EQ(EditorRect(), CRect(50, 20, 100, 40));
    }
    Start();
    grid->SetItemFormat(1, 1, DT_RIGHT);
    LOGFONT font;
    font.lfHeight = -40;
    CFont large(font);
    grid->SetFont(&large);
    Type("a");
    EXPECT_EQ(Editor()->GetStyle() & (ES_RIGHT | ES_CENTER), ES_RIGHT);
    EXPECT_EQ(NativeOf(*Editor()).Font(), font);
}

TEST_F(GridEditing, ArrowsMoveTheCaretAfterTheMouseAndLeaveAfterTyping) {
    Start({1, 1}, "a\xD6\xD0");
    Press(*grid, MiddleOf(1, 1));
    EXPECT_EQ(Shown(), "");
    Release(*grid, MiddleOf(1, 1));
    EXPECT_EQ(Shown(), "a\xD6\xD0|");
    EXPECT_EQ(After(VK_LEFT), "a|\xD6\xD0");
    EXPECT_EQ(After(VK_UP), "a|\xD6\xD0");
    EXPECT_EQ(After(VK_RIGHT, MK_SHIFT), "a[\xD6\xD0]");
    EXPECT_EQ(After('B'), "ab|");
    EXPECT_EQ(After(VK_DOWN, MK_CONTROL), "[old]");
    EXPECT_EQ(Text(1, 1), "ab");
    Type("ne");
    EXPECT_EQ(After(VK_HOME), "|ne");
    EXPECT_EQ(After(VK_RIGHT), "[old]");
    EXPECT_EQ(Text(2, 1), "ne");
    EXPECT_EQ(EditorRect(), CRect(100, 40, 150, 60)) << "only the first one is closed";
    EXPECT_FALSE(grid->GetModified(2, 2));
    DoubleClick(*grid, MiddleOf(2, 0));
    EXPECT_EQ(Shown(), "") << "a heading";
    grid->SetListMode(TRUE);
    DoubleClick(*grid, MiddleOf(2, 0));
    EXPECT_EQ(host.told.back(), "-105 2,0");
}

TEST_F(GridEditing, WhatMayNotBeEditedOpensNothing) {
    Start();
    const auto opensNothing = [&](const char* typed = "x\r\xD6\xD0") {
        host.told.clear();
        Type(typed);
        return CWnd::GetFocus() == grid.get() && host.told.empty();
    };
    KeyDown(VK_CONTROL);
    EXPECT_TRUE(opensNothing("b"));
    KeyUp(VK_CONTROL);
    grid->SetItemState(1, 1, GridStateReadOnly);
    Click(1, 1);
    EXPECT_TRUE(opensNothing());
    grid->SetItemState(1, 1, 0);
    grid->SetEditable(FALSE);
    EXPECT_TRUE(opensNothing());
    grid->SetEditable(TRUE);
    grid->SetFocusCell({});
    EXPECT_TRUE(opensNothing());
    Press(*grid, MiddleOf(2, 2));
    EXPECT_TRUE(opensNothing()) << "the mouse is at work";
    Release(*grid, MiddleOf(2, 2));
    for (const DWORD listStyle : {DWORD{0}, CBS_DROPDOWN}) {
        Start({1, 1}, "old", listStyle);
        desktop->LetNextWindowFail();
        Type("x");
        EXPECT_EQ(CWnd::GetFocus(), grid.get());
        EXPECT_THAT(host.told, ElementsAre("-105 1,1")) << "there is no window for it";
    }
}

TEST_F(GridEditing, EnterAndALossOfTheFocusKeepTheTextAndEscDoesNot) {
    const std::function<void()> endings[] = {
        [] { Key(VK_RETURN); },
        [] { MoveFocusTo(nullptr); },
        [&] { Click(1, 0); },
        [&] { grid->MoveWindow(CRect(0, 0, 150, 90)); },
        [&] { ScrollBy(*grid, SB_HORZ, SB_LINERIGHT); },
        [] { Key(VK_ESCAPE); },
    };
    for (const auto& end : endings) {
        const bool isEsc = &end == std::end(endings) - 1;
        Start();
        Type("new");
        end();
        Loop();
        EXPECT_EQ(Editor(), nullptr);
        EXPECT_EQ(Text(1, 1), isEsc ? "old" : "new");
        EXPECT_EQ(grid->GetModified(1, 1), !isEsc);
        ASSERT_GE(host.told.size(), 3U);
        host.told.resize(3);
        EXPECT_THAT(host.told, ElementsAre("-105 1,1", "-102 1,1", "-106 1,1"));
    }
}

TEST_F(GridEditing, AnEditorGrowsWithItsTextUpToTheGridsEdge) {
    Start();
    const auto widthAfter = [&](const char* typed) {
        Type(typed);
        return EditorRect().Width();
    };
    EXPECT_EQ(widthAfter("1234"), 50);
    EXPECT_EQ(widthAfter("5"), (5 + 2) * 8);
    EXPECT_EQ(widthAfter("\xD6\xD0"), (7 + 2) * 8);
    EXPECT_EQ(widthAfter("\b"), (7 + 2) * 8);
    EXPECT_EQ(widthAfter("1234567890123"), 150);
}

TEST_F(GridEditing, AListEditorSelectsByTheBeginningUnlessACharacterReplacesThat) {
    for (const auto& [text, typed, shown] : {std::tuple("\xBD\xB5", "\r", "\xBD\xB5\xD0\xF2|"),
                                             {"ver", "x", "x|"},
                                             {"ver", " ", " |"},
                                             {"ver", "\b", "ve|"},
                                             {"ver", "\xD6\xD0", "\xD6\xD0|"}}) {
        Start({1, 1}, text, CBS_DROPDOWN);
        Type(typed);
        EXPECT_EQ(Shown(), shown);
        EXPECT_TRUE(CWnd::GetFocus()->SendMessage(WM_GETDLGCODE) & DLGC_WANTALLKEYS);
        Key(VK_RETURN);
        EXPECT_EQ(Text(1, 1) + "|", shown);
    }
    Start({1, 1}, kAscending, CBS_DROPDOWNLIST);
    Type("x");
    EXPECT_EQ(Combo().GetWindowText(), kAscending);
    EXPECT_EQ(dynamic_cast<MemoryCombo&>(NativeOf(Combo())).RectWithList().bottom, 40 + 4 * 20 + 17);
}

TEST_F(GridEditing, AListEditorEndsOnTheReleaseOfAKeyOrByCtrlWithAnArrow) {
    for (const DWORD style : {CBS_DROPDOWN, CBS_DROPDOWNLIST}) {
        Start({1, 1}, kAscending, style);
        Key(VK_RETURN);
        EXPECT_EQ(Combo().GetCurSel(), 0) << "the Enter that opened it does not end it";
        Key(VK_DOWN);
        EXPECT_EQ(Combo().GetWindowText(), kDescending);
        KeyDown(VK_TAB);
        EXPECT_EQ(Text(1, 1), kAscending);
        KeyUp(VK_TAB);
        EXPECT_EQ(Text(1, 1), kDescending);
        EXPECT_THAT(host.told,
                    ElementsAre("-105 1,1", "-102 1,1", "-106 1,1", "-100 1,1", "-101 1,2", "-105 1,2"));
        Loop();
        PickItem(Combo(), 0);
        EXPECT_NE(After(VK_DOWN, MK_CONTROL), "");
        EXPECT_EQ(Text(1, 2), kAscending);
        Key(VK_F4);
        Key(VK_DOWN);
        EXPECT_EQ(After(VK_RETURN), "");
        EXPECT_EQ(Text(2, 2), kAscending) << "of the open list";
        Key(VK_RETURN);
        Key(VK_DOWN);
        EXPECT_EQ(After(VK_ESCAPE), "");
        EXPECT_EQ(Text(2, 2), kAscending);
        EXPECT_EQ(Editor(), nullptr);
    }
}

TEST_F(GridEditing, TheGridMayGoInEveryNotification) {
    const auto edit = [&](DWORD listStyle) {
        Start({1, 1}, "old", listStyle);
        Type("x");
        if (listStyle != 0 && IsThere())
            PickItem(Combo(), 1);
        for (int i = 0; i < 2 && IsThere(); ++i)
            Key(VK_TAB);
        Loop();
    };
    for (const DWORD listStyle : {DWORD{0}, CBS_DROPDOWN, CBS_DROPDOWNLIST}) {
        for (const int code : {-100, -101, -102, -105, -106}) {
            Start();
            host.onNotify = [&](const GridNotify& notify) {
                if (notify.hdr.code == code && notify.row == 1)
                    listStyle != 0 ? grid.reset() : void(grid->DestroyWindow());
            };
            edit(listStyle);
            host.onNotify = nullptr;
            EXPECT_FALSE(IsThere()) << code;
        }
    }
    using Case = std::pair<WORD, DWORD>;
    for (const auto& [code, listStyle] :
         {Case(EN_SETFOCUS, 0), Case(EN_CHANGE, 0), Case(EN_KILLFOCUS, 0), Case(CBN_SETFOCUS, CBS_DROPDOWN),
          Case(CBN_EDITCHANGE, CBS_DROPDOWN), Case(CBN_KILLFOCUS, CBS_DROPDOWN),
          Case(CBN_KILLFOCUS, CBS_DROPDOWNLIST), Case(CBN_CLOSEUP, CBS_DROPDOWN)}) {
        Start();
        dynamic_cast<EditedGrid&>(*grid).fatalCode = code;
        edit(listStyle);
        EXPECT_FALSE(IsThere()) << code;
    }
}

TEST_F(GridEditing, AnOpenEditorOutlivesItsCellAndEndsWithItsGrid) {
    Start({3, 3});
    Type("x");
    grid->SetRowCount(2);
    host.told.clear();
    Key(VK_TAB);
    EXPECT_THAT(host.told, ElementsAre("-102 3,3", "-106 3,3"));
    Start();
    Type("x");
    grid.reset();
    EXPECT_EQ(host.told.back(), "-106 1,1");
}

}  // namespace
