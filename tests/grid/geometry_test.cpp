#include <random>

#include "tests/grid/gridwindow.h"

using namespace kortavin::testing;

TEST(GridAxis, AnswersAsAPlainSumWould) {
    std::mt19937 random(7);
    const auto below = [&](int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); };
    kortavin::grid::Axis axis;
    std::vector<int> sizes;
    for (int step = 0; step < 3000; ++step) {
        const int count = axis.Count();
        switch (count < 2 ? 0 : below(5)) {
            case 0:
            case 1:
                axis.Insert(step % 3 == 0 ? count : below(count + 1), 0);
                sizes.push_back(0);
                for (int i = 0; i < axis.Count(); ++i)
                    sizes[static_cast<std::size_t>(i)] = axis.SizeAt(i);
                break;
            case 2: {
                const int at = step % 3 == 0 ? count - 1 : below(count);
                axis.Erase(at);
                sizes.erase(sizes.begin() + at);
                break;
            }
            default: {
                const int at = below(count);
                axis.SetSize(at, below(40));
                sizes[static_cast<std::size_t>(at)] = axis.SizeAt(at);
            }
        }
        const int from = below(axis.Count() + 1);
        const LONGLONG offset = below(500);
        LONGLONG sum = 0;
        for (int i = 0; i < from; ++i)
            sum += sizes[static_cast<std::size_t>(i)];
        ASSERT_EQ(axis.OffsetOf(from), sum);
        int reached = from;
        int holding = from;
        for (LONGLONG at = 0; reached < axis.Count() && at < offset; ++reached)
            at += sizes[static_cast<std::size_t>(reached)];
        for (LONGLONG end = 0; holding < axis.Count(); ++holding)
            if ((end += sizes[static_cast<std::size_t>(holding)]) > offset)
                break;
        ASSERT_EQ(axis.FirstAtOrAfter(from, offset), reached);
        ASSERT_EQ(axis.IndexAt(from, offset), holding);
    }
}

class GridGeometry : public GridWindow {};

TEST_F(GridGeometry, PointsBelongToTheCellThatBeginsThere) {
    Open(3, 3, 0, 0);
    EXPECT_EQ(grid->HitTestCell({49, 5}).col, 0);
    EXPECT_EQ(grid->HitTestCell({50, 5}).col, 1);
    EXPECT_EQ(grid->HitTestCell({150, 5}), CGridPos(0, -1));
    EXPECT_EQ(grid->HitTestCell({-1, 70}), CGridPos(-1, -1));

    grid->SetFixedRowCount(1);
    EXPECT_EQ(grid->HitTestCell({10, 5}).row, 0);
    EXPECT_EQ(grid->HitTestCell({10, 5}, FALSE).row, -1);
}

TEST_F(GridGeometry, ScrolledRowsBeginAtOrBehindThePosition) {
    Open(40, 3);
    grid->SetScrollPosition(SB_VERT, 25);
    EXPECT_EQ(grid->GetFirstScrollCell(), CGridPos(3, 1));
    CPoint corner;
    EXPECT_FALSE(grid->GetCellTopLeft(2, 1, &corner));
    EXPECT_TRUE(grid->GetCellTopLeft(3, 1, &corner));
    EXPECT_EQ(corner, CPoint(50, 20));
    EXPECT_TRUE(grid->GetCellTopLeft(0, 2, &corner));
    EXPECT_EQ(corner, CPoint(100, 0)) << "fixed rows stay";
    CRect rect;
    EXPECT_TRUE(grid->GetCellRect(4, 1, &rect));
    EXPECT_EQ(rect, CRect(50, 40, 99, 59));
    EXPECT_FALSE(grid->IsCellVisible(2, 1));
    EXPECT_TRUE(grid->IsCellVisible(6, 1));
    EXPECT_FALSE(grid->IsCellVisible(7, 1)) << "it begins at the client area's end";
}

TEST_F(GridGeometry, VisibleRangesCountCutCellsOrDropThem) {
    Open(40, 3, 1, 1, {200, 95});
    CRect extent;
    EXPECT_EQ(grid->GetVisibleScrollRange(&extent), CGridRange(1, 1, 4, 2));
    EXPECT_EQ(extent, CRect(0, 0, 150, 95));
    EXPECT_EQ(grid->GetFullyVisibleScrollRange(), CGridRange(1, 1, 3, 2));
    grid->SetRowCount(3);
    EXPECT_EQ(grid->GetVisibleScrollRange(&extent), CGridRange(1, 1, 2, 2));
    EXPECT_EQ(extent.bottom, 60);
    grid->SetRowCount(1);
    EXPECT_FALSE(grid->IsValid(grid->GetFullyVisibleScrollRange()));
}

TEST_F(GridGeometry, BarsReachToTheContentsEndAndVanishWhenAllFits) {
    Open(40, 3);
    int minimum = 0;
    int maximum = 0;
    grid->GetScrollRange(SB_VERT, &minimum, &maximum);
    EXPECT_EQ(maximum, 39 * 20 - 1);
    EXPECT_EQ(grid->GetScrollPage(SB_VERT), 80);
    EXPECT_TRUE(NativeOf(*grid).IsScrollBarShown(SB_VERT));
    EXPECT_FALSE(NativeOf(*grid).IsScrollBarShown(SB_HORZ));
    grid->SetRowCount(4);
    grid->GetScrollRange(SB_VERT, &minimum, &maximum);
    EXPECT_EQ(maximum, 0);
    EXPECT_FALSE(NativeOf(*grid).IsScrollBarShown(SB_VERT));
}

TEST_F(GridGeometry, ScrollRequestsMoveByRowsPagesAndToTheEnds) {
    Open(40, 3);
    const auto after = [&](UINT request) {
        grid->SendMessage(WM_VSCROLL, request);
        return grid->GetScrollPosition(SB_VERT);
    };
    EXPECT_EQ(after(SB_LINEDOWN), 20);
    EXPECT_EQ(after(SB_LINEDOWN), 40);
    EXPECT_EQ(after(SB_LINEUP), 20);
    EXPECT_EQ(after(SB_PAGEDOWN), 100);
    EXPECT_EQ(after(SB_PAGEUP), 20);
    EXPECT_EQ(after(SB_BOTTOM), 700) << "a bar stops a page before its end";
    EXPECT_EQ(after(SB_LINEDOWN), 700);
    EXPECT_EQ(after(SB_TOP), 0);
    EXPECT_EQ(after(SB_ENDSCROLL), 0);
    ScrollBy(*grid, SB_VERT, SB_THUMBTRACK, 130);
    EXPECT_EQ(grid->GetScrollPosition(SB_VERT), 130);
    EXPECT_EQ(CWnd::GetFocus(), grid.get());
}

TEST_F(GridGeometry, ScrollingByALinePaintsWhatAFullPaintWould) {
    Open(40, 6);
    for (int row = 0; row < 40; ++row) {
        grid->SetItemText(row, 1, std::string(static_cast<std::size_t>(row % 5), 'x').c_str());
        grid->SetRowHeight(row, 15 + row % 7);
    }
    grid->Invalidate();
    Loop();
    const auto compare = [&](UINT message, UINT request) {
        grid->SendMessage(message, request);
        Loop();
        const std::string scrolled = SurfaceOf(*grid).Dump();
        grid->Invalidate();
        Loop();
        EXPECT_TRUE(SurfaceOf(*grid).Dump() == scrolled)
            << "request " << request << " of " << message << " to row " << grid->GetFirstScrollCell().row
            << ", column " << grid->GetFirstScrollCell().col;
    };
    for (const UINT request : {SB_LINEDOWN, SB_LINEDOWN, SB_LINEDOWN, SB_LINEUP, SB_PAGEDOWN, SB_LINEUP,
                               SB_BOTTOM, SB_LINEUP, SB_LINEUP, SB_LINEDOWN, SB_LINEDOWN}) {
        compare(WM_VSCROLL, request);
        compare(WM_HSCROLL, request);
    }
}
