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

TEST_F(GridInput, PagesMoveByWhatShows) {
    Open(40, 4);
    grid->SetFocus();
    KeyAt({3, 2}, VK_NEXT);
    EXPECT_EQ(Focus(), CGridPos(7, 2));
    EXPECT_EQ(Selected(), CGridRange(7, 2, 7, 2));
    KeyDown(VK_PRIOR);
    EXPECT_EQ(Focus(), CGridPos(3, 2));
    KeyDown(VK_PRIOR);
    EXPECT_EQ(Focus(), CGridPos(1, 2)) << "the view did not move";
    KeyDown(VK_END);
    EXPECT_EQ(Focus(), CGridPos(39, 2));
    EXPECT_TRUE(grid->IsCellVisible(39, 2));
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
    desktop->SetClipboardText("before");
    for (const auto& [key, keys] : {std::pair(VK_DOWN, 0U), {'A', MK_CONTROL}, {'C', MK_CONTROL}})
        KeyDown(key, keys);
    EXPECT_EQ(Focus(), CGridPos());
    EXPECT_EQ(grid->GetSelectedCount(), 0U);
    EXPECT_EQ(desktop->ClipboardText(), "before");
}

TEST_F(GridInput, CopiedCellsArePartedByTabsAndLines) {
    Open(4, 4);
    grid->SetFocus();
    const auto copied = [&](std::initializer_list<CGridRange> ranges) {
        grid->ClearSelection();
        grid->SetFocusCell(3, 3);
        for (const CGridRange& range : ranges)
            for (int row = range.minRow; row <= range.maxRow; ++row)
                for (int col = range.minCol; col <= range.maxCol; ++col)
                    grid->SetItemState(row, col, grid->GetItemState(row, col) | GridStateSelected);
        Key('C', MK_CONTROL);
        EXPECT_EQ(CWnd::GetFocus(), grid.get()) << "the character that goes with it opens no editor";
        return std::string(desktop->ClipboardText().View());
    };
    grid->SetItemText(1, 1, "a\r\nb\tc\n\rd");
    grid->SetItemText(1, 3, "\xD6\xD0");
    grid->SetItemText(3, 3, "end");
    EXPECT_EQ(copied({}), "end") << "the focus cell";
    EXPECT_EQ(copied({{1, 1, 1, 1}}), "a b c  d");
    EXPECT_EQ(copied({{1, 1, 2, 3}}), "a b c  d\t\t\xD6\xD0\r\n\t\t\r\n");
    EXPECT_EQ(copied({{1, 3, 1, 3}, {3, 1, 3, 1}}), "\t\xD6\xD0\r\n\t\r\n") << "only selected lines";
}

TEST_F(GridInput, ScreenReadersFindTheTableAndHearOfItsChanges) {
    using Cell = kortavin::window::AccessibleTable::Cell;
    using enum kortavin::window::TableChange;
    Open(40, 4);
    auto& table = *NativeOf(*grid).Table();
    const auto changes = [&] { return std::exchange(NativeOf(*grid).TableChanges(), {}); };
    changes();
    table.FocusTableCell({30, 2});
    EXPECT_EQ(CWnd::GetFocus(), grid.get());
    EXPECT_EQ(table.TableFocus(), (Cell{30, 2}));
    const CRect rect = table.TableRect({30, 2});
    EXPECT_EQ(rect.Size(), CSize(50, 20));
    EXPECT_EQ(table.TableCellAt({rect.right - 1, rect.bottom - 1}), (Cell{30, 2}));
    EXPECT_EQ(table.TableCellAt({-1, 5}), std::nullopt);
    EXPECT_TRUE(table.TableRect({1, 1}).IsRectEmpty()) << "scrolled out";
    EXPECT_FALSE(table.IsTableCellEditable({0, 1}));
    table.FocusTableCell({0, 1});
    EXPECT_THAT(changes(), ElementsAre(std::pair(Focus, Cell{30, 2})));
    Key(VK_DELETE);
    KeyDown(VK_DOWN);
    EXPECT_TRUE(table.IsTableCellSelected({31, 2}));
    grid->SelectRange(31, 2, 31, 2);
    grid->SetRowCount(35);
    grid->SortRowsByText(1, TRUE);
    EXPECT_THAT(changes(), ElementsAre(std::pair(Text, Cell{30, 2}), std::pair(Selection, Cell{31, 2}),
                                       std::pair(Focus, Cell{31, 2}), std::pair(Layout, Cell{}),
                                       std::pair(Layout, Cell{})));
    auto& native = NativeOf(*grid);
    grid->UnsubclassWindow();
    EXPECT_EQ(native.Table(), nullptr);
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
    for (int i = 0; i < 40; ++i)
        FireTimer(*grid, 513);
    EXPECT_EQ(Selected(), CGridRange(2, 1, 39, 1));
    EXPECT_EQ(Focus(), CGridPos(39, 1));
    MoveTo(*grid, {60, 30});
    MoveTo(*grid, {60, 150});
    EXPECT_TRUE(FireTimer(*grid, 513));
    MoveTo(*grid, {60, 30});
    EXPECT_EQ(Focus(), grid->HitTestCell({60, 30}));
    LoseCapture();
    EXPECT_FALSE(FireTimer(*grid, 513));
}

TEST_F(GridInput, BordersAreDraggedWithinTheirColumn) {
    Open(4, 4);
    MoveTo(*grid, {101, 5});
    EXPECT_EQ(NativeOf(*grid).Cursor(), kortavin::window::PointerShape::SizeHorizontal);
    Press(*grid, {102, 5});
    EXPECT_EQ(desktop->Confinement()->left, 10 + 50) << "from the start of the column that is resized";
    const std::string before = SurfaceOf(*grid).Dump();
    MoveTo(*grid, {80, 5});
    EXPECT_TRUE(SurfaceOf(*grid).Dump() != before) << "a line follows the pointer";
    Release(*grid, {80, 5});
    EXPECT_EQ(grid->GetColumnWidth(1), 30);
    EXPECT_FALSE(desktop->Confinement().has_value());
    Press(*grid, {20, 41});
    Release(*grid, {20, 41});
    EXPECT_EQ(grid->GetRowHeight(1), 20) << "nothing was dragged";
    grid->SetColumnResize(FALSE);
    MoveTo(*grid, {120, 5});
    EXPECT_EQ(NativeOf(*grid).Cursor(), kortavin::window::PointerShape::Arrow);
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
