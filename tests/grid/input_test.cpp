#include "tests/grid/gridwindow.h"

using namespace kortavin::testing;
using ::testing::ElementsAre;

namespace {

class GridInput : public GridWindow {
  protected:
    CGridRange Selected() const { return grid->GetSelectionBounds(); }
    CGridPos Focus() const { return grid->GetFocusCell(); }
    void KeyAt(CGridPos cell, UINT key, UINT keys = 0) {
        grid->SetFocusCell(cell);
        KeyDown(key, keys);
    }
};

TEST_F(GridInput, ArrowsMoveTheFocusCellAndItsSelectionButNotIntoHeadings) {
    Open(4, 4);
    grid->SetFocus();
    const auto after = [&](CGridPos from, UINT key) {
        KeyAt(from, key);
        return Focus();
    };
    EXPECT_EQ(after({1, 1}, VK_LEFT), CGridPos(1, 1));
    EXPECT_EQ(after({1, 1}, VK_UP), CGridPos(1, 1));
    EXPECT_EQ(after({1, 1}, VK_DOWN), CGridPos(2, 1));
    EXPECT_EQ(Selected(), CGridRange(2, 1, 2, 1));
    EXPECT_EQ(after({3, 3}, VK_DOWN), CGridPos(3, 3));
    EXPECT_EQ(after({3, 2}, VK_RIGHT), CGridPos(3, 3));
    EXPECT_EQ(after({1, 2}, VK_END), CGridPos(3, 2));
    EXPECT_EQ(after({3, 2}, VK_HOME), CGridPos(1, 2));
}

TEST_F(GridInput, TabGoesFromLineToLine) {
    Open(4, 4);
    grid->SetFocus();
    KeyAt({1, 3}, VK_TAB);
    EXPECT_EQ(Focus(), CGridPos(2, 1));
    KeyDown(VK_TAB, MK_SHIFT);
    EXPECT_EQ(Focus(), CGridPos(1, 3));
    KeyAt({3, 3}, VK_TAB);
    EXPECT_EQ(Focus(), CGridPos(3, 3));
    KeyAt({1, 1}, VK_TAB, MK_SHIFT);
    EXPECT_EQ(Focus(), CGridPos(1, 1));
}

TEST_F(GridInput, ShiftExtendsFromTheAnchorAndPagesMoveByWhatShows) {
    Open(40, 4);
    grid->SetFocus();
    KeyAt({1, 1}, VK_DOWN);
    KeyDown(VK_DOWN, MK_SHIFT);
    KeyDown(VK_RIGHT, MK_SHIFT);
    EXPECT_EQ(Selected(), CGridRange(2, 1, 3, 2));
    KeyDown(VK_NEXT);
    EXPECT_EQ(Focus(), CGridPos(7, 2));
    EXPECT_EQ(Selected(), CGridRange(7, 2, 7, 2));
    KeyDown(VK_PRIOR);
    EXPECT_EQ(Focus(), CGridPos(3, 2));
    KeyDown(VK_PRIOR);
    EXPECT_EQ(Focus(), CGridPos(1, 2)) << "the view did not move";
    KeyDown(VK_END);
    EXPECT_EQ(Focus(), CGridPos(39, 2));
    EXPECT_TRUE(grid->IsCellVisible(39, 2));
    KeyDown('A', MK_CONTROL);
    EXPECT_EQ(Selected(), CGridRange(1, 1, 39, 3));
}

TEST_F(GridInput, AFocusCellOutOfViewComesIntoView) {
    Open(40, 12);
    grid->SetFocus();
    for (int i = 0; i < 10; ++i) {
        KeyAt(Focus() == CGridPos() ? CGridPos(1, 1) : Focus(), VK_DOWN);
        KeyDown(VK_RIGHT);
        EXPECT_TRUE(grid->IsCellVisible(Focus().row, Focus().col));
    }
    grid->EnsureVisible(1, 1);
    EXPECT_EQ(grid->GetFirstScrollCell(), CGridPos(1, 1));
    grid->EnsureVisible(39, 11);
    EXPECT_TRUE(grid->IsCellVisible(39, 11));
    const int position = grid->GetScrollPosition(SB_VERT);
    grid->EnsureVisible(-1, -1);
    EXPECT_EQ(grid->GetScrollPosition(SB_VERT), position);
}

TEST_F(GridInput, KeysWithoutAFocusCellDoNothing) {
    Open(4, 4);
    grid->SetFocus();
    KeyDown(VK_DOWN);
    KeyDown('A', MK_CONTROL);
    EXPECT_EQ(Focus(), CGridPos());
    EXPECT_EQ(grid->GetSelectedCount(), 0U);
}

TEST_F(GridInput, FocusChangesAreToldInOrder) {
    Open(4, 4);
    Click(2, 2);
    EXPECT_THAT(host.told, ElementsAre("-101 2,2"));
    Loop();
    EXPECT_THAT(host.told, ElementsAre("-101 2,2", "command 7"));
    host.told.clear();
    KeyDown(VK_LEFT);
    EXPECT_THAT(host.told, ElementsAre("-100 2,2", "-101 2,1"));
}

TEST_F(GridInput, ClicksOnHeadingsSelectColumnsRowsAndAll) {
    Open(4, 4);
    Click(0, 2);
    EXPECT_EQ(Selected(), CGridRange(1, 2, 3, 2));
    EXPECT_EQ(Focus(), CGridPos(1, 2));
    Click(0, 3, MK_SHIFT);
    EXPECT_EQ(Selected(), CGridRange(1, 2, 3, 3));
    Click(2, 0);
    EXPECT_EQ(Selected(), CGridRange(2, 1, 2, 3));
    Click(0, 0);
    EXPECT_EQ(Selected(), CGridRange(1, 1, 3, 3));
}

TEST_F(GridInput, CtrlAddsToTheSelectionAndDraggingExtendsIt) {
    Open(5, 4);
    Click(1, 1);
    Click(3, 3, MK_CONTROL);
    EXPECT_EQ(grid->GetSelectedCount(), 2U);
    Press(*grid, MiddleOf(2, 1));
    MoveTo(*grid, MiddleOf(3, 2));
    EXPECT_EQ(Selected(), CGridRange(2, 1, 3, 2));
    EXPECT_EQ(Focus(), CGridPos(3, 2));
    EXPECT_EQ(CWnd::GetCapture(), grid.get());
    Release(*grid, MiddleOf(3, 2));
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
    MoveTo(*grid, MiddleOf(4, 3));
    EXPECT_EQ(Selected(), CGridRange(2, 1, 3, 2));
}

TEST_F(GridInput, DraggingBelowTheWindowGoesOnSelecting) {
    Open(40, 4);
    Press(*grid, MiddleOf(2, 1));
    EXPECT_EQ(desktop->TimerPeriod(NativeOf(*grid), 513), 25U);
    MoveTo(*grid, MiddleOf(3, 1));
    MoveTo(*grid, {60, 150});
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(FireTimer(*grid, 513));
    EXPECT_EQ(Focus(), CGridPos(8, 1));
    EXPECT_EQ(Selected().minRow, 2);
    EXPECT_GE(Selected().maxRow, 7);
    LoseCapture();
    EXPECT_FALSE(FireTimer(*grid, 513));
}

TEST_F(GridInput, BordersAreDraggedWithinTheirColumn) {
    Open(4, 4);
    MoveTo(*grid, {101, 5});
    EXPECT_EQ(NativeOf(*grid).Cursor(), kortavin::window::CursorShape::SizeHorizontal);
    Press(*grid, {102, 5});
    EXPECT_EQ(desktop->Confinement()->left, 10 + 50) << "from the start of the column that is resized";
    const std::string before = SurfaceOf(*grid).Dump();
    MoveTo(*grid, {80, 5});
    EXPECT_TRUE(SurfaceOf(*grid).Dump() != before) << "a line follows the pointer";
    Release(*grid, {80, 5});
    EXPECT_EQ(grid->GetColumnWidth(1), 30);
    EXPECT_FALSE(desktop->Confinement().has_value());
    EXPECT_EQ(grid->GetSelectedCount(), 0U);

    Press(*grid, {20, 41});
    Release(*grid, {20, 55});
    EXPECT_EQ(grid->GetRowHeight(1), 35) << "the row above";
    Press(*grid, {20, 54});
    Release(*grid, {20, 54});
    EXPECT_EQ(grid->GetRowHeight(1), 35) << "nothing was dragged";
    Press(*grid, {79, 5});
    MoveTo(*grid, {10, 5});
    Release(*grid, {10, 5});
    EXPECT_EQ(grid->GetColumnWidth(1), 0) << "the pointer is kept at the column's start";
    grid->SetColumnResize(FALSE);
    MoveTo(*grid, {120, 5});
    EXPECT_EQ(NativeOf(*grid).Cursor(), kortavin::window::CursorShape::Arrow);
}

TEST_F(GridInput, DoubleClickOnABorderFitsTheColumn) {
    Open(4, 4);
    grid->SetItemText(0, 1, "abc");
    MoveTo(*grid, {101, 5});
    DoubleClick(*grid, {101, 5});
    EXPECT_EQ(grid->GetColumnWidth(1), 3 * 8 + 4 * 8);
}

TEST_F(GridInput, HeadingsSortInListMode) {
    Open(5, 3);
    const char* const texts[] = {"b", "d", "a", "c"};
    for (int row = 1; row < 5; ++row)
        grid->SetItemText(row, 1, texts[row - 1]);
    grid->SetRowHeight(3, 33);
    grid->SetListMode(TRUE);
    Click(0, 1);
    EXPECT_EQ(grid->GetItemText(1, 1), CString("a"));
    EXPECT_EQ(grid->GetItemText(4, 1), CString("d"));
    EXPECT_EQ(grid->GetRowHeight(1), 33) << "heights go with their rows";
    EXPECT_EQ(Focus(), CGridPos());
    Click(0, 1);
    EXPECT_EQ(grid->GetItemText(1, 1), CString("d"));
    Click(2, 2);
    EXPECT_EQ(Selected(), CGridRange(2, 1, 2, 2));
    grid->SetSingleRowSelection(TRUE);
    Press(*grid, MiddleOf(1, 1));
    MoveTo(*grid, MiddleOf(3, 1));
    EXPECT_EQ(Selected(), CGridRange(3, 1, 3, 2));
    Release(*grid, MiddleOf(3, 1));
    EXPECT_FALSE(grid->SortRowsByText(3, TRUE));
}

TEST_F(GridInput, WheelScrollsAfterItsMessage) {
    Open(40, 3);
    Wheel(*grid, -2 * WHEEL_DELTA);
    EXPECT_EQ(grid->GetScrollPosition(SB_VERT), 0);
    Loop();
    EXPECT_EQ(grid->GetScrollPosition(SB_VERT), 6 * 20);
    Wheel(*grid, WHEEL_DELTA);
    Loop();
    EXPECT_EQ(grid->GetScrollPosition(SB_VERT), 3 * 20);
}

TEST_F(GridInput, DeleteClearsOnlyWhatMayBeEdited) {
    Open(4, 4);
    grid->SetFocus();
    grid->SetItemText(1, 1, "x");
    grid->SetItemText(2, 1, "y");
    grid->SetItemState(2, 1, GridStateReadOnly);
    KeyAt({1, 1}, VK_DELETE);
    EXPECT_EQ(grid->GetItemText(1, 1), CString());
    EXPECT_TRUE(grid->GetModified(1, 1));
    EXPECT_THAT(host.told, ElementsAre("-101 1,1", "-105 1,1", "-106 1,1"));
    KeyAt({2, 1}, VK_DELETE);
    EXPECT_EQ(grid->GetItemText(2, 1), CString("y"));
}

TEST_F(GridInput, AnOwnerMayDestroyTheGridInANotification) {
    Open(4, 4);
    host.onNotify = [&](const GridNotify& notify) {
        if (notify.hdr.code == GridNotifyFocusChanged)
            grid.reset();
    };
    Press(*grid, MiddleOf(2, 2));
    EXPECT_EQ(grid, nullptr);

    Open(4, 4);
    host.onNotify = [&](const GridNotify&) { grid->DestroyWindow(); };
    grid->SetFocusCell(1, 1);
    EXPECT_EQ(grid->m_hWnd, nullptr);
}

}  // namespace
