#include "tests/grid/gridwindow.h"

using namespace kortavin::testing;

namespace {

constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kLine = RGB(0xC0, 0xC0, 0xC0);

class GridPainting : public GridWindow {
  protected:
    COLORREF At(int x, int y) const { return SurfaceOf(*grid).At(x, y); }
    void Paint() {
        grid->Invalidate();
        Loop();
    }
    // The weight in which a text was last written.
    LONG WeightOf(const char* text) const {
        LONG weight = 0;
        for (const auto& operation : NativeOf(*grid).LastPaint())
            if (operation.kind == DrawingOperation::Kind::Text && operation.text == text)
                weight = operation.font.lfWeight;
        return weight;
    }
};

TEST_F(GridPainting, CellsLinesAndTheGroundAroundThemHaveTheirColors) {
    Open(3, 3);
    grid->SetCellBackColor(1, 1, kRed);
    Paint();
    EXPECT_EQ(At(52, 22), kRed);
    EXPECT_EQ(At(102, 22), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(At(99, 30), kLine) << "a cell's last column of pixels";
    EXPECT_EQ(At(60, 39), kLine) << "and its last row";
    EXPECT_EQ(At(98, 38), kRed);
    EXPECT_EQ(At(49, 30), GetSysColor(COLOR_3DDKSHADOW)) << "fixed cells have no grid lines";
    EXPECT_EQ(At(170, 10), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(At(10, 80), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(At(149, 59), kLine);
    EXPECT_EQ(At(150, 59), GetSysColor(COLOR_BTNSHADOW));

    grid->SetGridLines(GridLinesNone);
    Paint();
    EXPECT_EQ(At(99, 39), kRed) << "without lines a cell covers their pixels";
    grid->SetGridLines(GridLinesHorz);
    Paint();
    EXPECT_EQ(At(99, 30), kRed);
    EXPECT_EQ(At(60, 39), kLine);
}

TEST_F(GridPainting, FocusCellHasAFrameAndItsOwnColorsEvenWhenSelected) {
    Open(4, 4);
    grid->SelectRange(1, 1, 2, 2);
    grid->SetFocusCell(1, 1);
    Paint();
    EXPECT_EQ(At(52, 22), GetSysColor(COLOR_WINDOW));
    EXPECT_EQ(At(50, 20), 0U);
    EXPECT_EQ(At(98, 20), 0U);
    EXPECT_EQ(At(50, 38), 0U);
    EXPECT_EQ(At(98, 38), 0U) << "the frame lies inside the grid lines";
    EXPECT_EQ(At(99, 38), kLine);
    EXPECT_EQ(At(102, 22), GetSysColor(COLOR_HIGHLIGHT));

    grid->SetItemState(3, 3, GridStateDropHilited);
    grid->SetCellBackColor(1, 1, kRed);
    Paint();
    EXPECT_EQ(At(150, 60), 0U);
    EXPECT_EQ(At(50, 20), 0U);

    desktop->SetSystemColor(COLOR_WINDOW, RGB(0x23, 0x24, 0x26));
    grid->SetTextColor(kRed);
    grid->SetCellBackColor(1, 1, kGridDefaultColor);
    Paint();
    EXPECT_EQ(At(50, 20), kRed) << "black does not show on a dark ground";
    EXPECT_LT(At(99, 38), kLine);
}

TEST_F(GridPainting, HeadingsOfTheFocusCellLookPressed) {
    Open(4, 4);
    for (int i = 0; i < 4; ++i) {
        grid->SetItemText(0, i, std::string("c").append(std::to_string(i)).c_str());
        grid->SetItemText(i, 0, std::string("r").append(std::to_string(i)).c_str());
    }
    grid->SetFocusCell(2, 1);
    Paint();
    const COLORREF light = GetSysColor(COLOR_3DHIGHLIGHT);
    const COLORREF dark = GetSysColor(COLOR_3DDKSHADOW);
    EXPECT_EQ(At(120, 0), light) << "raised";
    EXPECT_EQ(At(149, 10), dark);
    EXPECT_EQ(At(120, 19), dark);
    EXPECT_NE(At(70, 0), light) << "pressed";
    EXPECT_NE(At(10, 40), light);
    EXPECT_EQ(At(10, 20), light);
    EXPECT_EQ(WeightOf("c1"), FW_SEMIBOLD);
    EXPECT_EQ(WeightOf("r2"), FW_SEMIBOLD);
    EXPECT_NE(WeightOf("c2"), FW_SEMIBOLD);

    grid->SetFocusCell(2, 2);
    EXPECT_EQ(At(70, 0), light) << "headings follow at once";
    EXPECT_NE(At(120, 0), light);
}

TEST_F(GridPainting, OnlyWhatIsInvalidIsPainted) {
    Open(40, 3);
    for (int row = 0; row < 40; ++row)
        grid->SetItemText(row, 1, std::to_string(row).c_str());
    Loop();
    grid->InvalidateCell({2, 1});
    Loop();
    std::vector<std::string> texts;
    for (const auto& operation : NativeOf(*grid).LastPaint())
        if (operation.kind == DrawingOperation::Kind::Text)
            texts.push_back(operation.text);
    EXPECT_THAT(texts, ::testing::IsSubsetOf({"2", "3"}));
    EXPECT_THAT(texts, ::testing::Contains("2"));

    grid->SetRedraw(FALSE);
    EXPECT_FALSE(grid->RedrawCell(2, 1));
    EXPECT_FALSE(grid->InvalidateCell({2, 1}));
    grid->SetRedraw(TRUE);
    EXPECT_FALSE(NativeOf(*grid).InvalidRect().IsRectEmpty());
    EXPECT_TRUE(grid->RedrawRow(2));
    EXPECT_FALSE(grid->RedrawColumn(1)) << "most of its cells do not show";
}

TEST_F(GridPainting, TextStandsWithinMarginsAsTheFormatSays) {
    Open(3, 3);
    grid->SetItemText(1, 1, "ab");
    grid->SetItemFormat(1, 1, DT_RIGHT | DT_VCENTER | DT_SINGLELINE);
    grid->SetCellTextColor(1, 1, kRed);
    Paint();
    const auto inkColumns = [&] {
        int first = -1;
        int last = -1;
        for (int x = 50; x < 100; ++x)
            if (SurfaceOf(*grid).CountOf(kRed, {x, 20, x + 1, 40}) > 0) {
                first = first < 0 ? x : first;
                last = x;
            }
        return std::pair(first, last);
    };
    const int margin = grid->GetMargin();
    EXPECT_EQ(margin, 8);
    EXPECT_EQ(inkColumns(), std::pair(99 - margin - 16 + 1, 99 - margin - 2));
    grid->SetItemFormat(1, 1, DT_LEFT);
    Paint();
    EXPECT_EQ(inkColumns().first, 50 + margin + 1);
}

TEST_F(GridPainting, ColorsFollowTheSystemUnlessTheyWereChosen) {
    Open(3, 3);
    grid->SetTextColor(kRed);
    desktop->SetSystemColor(COLOR_WINDOW, RGB(10, 20, 30));
    desktop->SetSystemColor(COLOR_WINDOWTEXT, RGB(200, 200, 200));
    EXPECT_EQ(grid->GetTextBkColor(), RGB(10, 20, 30));
    EXPECT_EQ(grid->GetFixedCellTextColor(), RGB(200, 200, 200));
    EXPECT_EQ(grid->GetTextColor(), kRed);
}

TEST_F(GridPainting, FontSetsMarginsAndDefaultSizesButNoExistingOnes) {
    Open(3, 3);
    EXPECT_EQ(grid->GetDefaultRowHeight(), 16 + 2 * 8);
    EXPECT_EQ(grid->GetDefaultColumnWidth(), 12 * 8 + 2 * 8);
    LOGFONT own;
    own.lfHeight = -30;
    grid->SetItemFont(1, 1, &own);
    LOGFONT description;
    description.lfHeight = -20;
    CFont font(description);
    grid->SetFont(&font);
    EXPECT_EQ(grid->GetItemFont(1, 1)->lfHeight, -20);
    EXPECT_EQ(grid->GetFont()->GetLogFont().lfHeight, -20);
    EXPECT_EQ(grid->GetRowHeight(1), 20);
}

TEST_F(GridPainting, SizesFitTextsAndTheWindow) {
    Open(3, 3);
    EXPECT_TRUE(grid->FitRowToText(2));
    EXPECT_EQ(grid->GetRowHeight(2), 16 + 2 * 8);
    for (int col = 0; col < 3; ++col)
        grid->SetColumnWidth(col, 63);
    grid->StretchColumnsToFit();
    EXPECT_EQ(grid->GetColumnWidth(0), 67);
    EXPECT_EQ(grid->GetColumnWidth(1), 67);
    EXPECT_EQ(grid->GetColumnWidth(2), 66);
    CGridCtrl windowless(2, 2);
    EXPECT_FALSE(windowless.FitColumnToText(0));
    EXPECT_EQ(windowless.GetColumnWidth(0), 30);
}

}  // namespace
