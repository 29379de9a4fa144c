#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/dc.h"

namespace {

void FillWithNumbers(CGridCtrl& grid) {
    for (int row = 0; row < grid.GetRowCount(); ++row)
        for (int col = 0; col < grid.GetColumnCount(); ++col) {
            CString text;
            text.Format("%d,%d", row, col);
            grid.SetItemText(row, col, text);
        }
}

TEST(GridModel, CountsGrowAndShrinkWithTheFixedOnes) {
    CGridCtrl grid;
    EXPECT_TRUE(grid.SetRowCount(2) && grid.SetFixedRowCount(1) && grid.SetColumnCount(4));
    EXPECT_EQ(grid.GetRowHeight(1), grid.GetDefaultRowHeight());
    EXPECT_EQ(grid.GetColumnWidth(3), grid.GetDefaultColumnWidth());
    EXPECT_EQ(grid.GetTotalWidth(), 4 * 30);

    EXPECT_TRUE(grid.SetFixedRowCount(3));
    EXPECT_EQ(grid.GetRowCount(), 3);
    EXPECT_TRUE(grid.SetRowCount(1));
    EXPECT_EQ(grid.GetFixedRowCount(), 1);
    EXPECT_FALSE(grid.SetRowCount(-1) || grid.SetFixedColumnCount(-1));
    EXPECT_EQ(grid.CheckConsistency(), CString());
}

TEST(GridModel, InsertedRowsAndColumnsKeepTheOthersTogether) {
    CGridCtrl grid(2, 2, 1, 1);
    FillWithNumbers(grid);
    EXPECT_EQ(grid.InsertColumn("new", DT_CENTER, 1), 1);
    EXPECT_EQ(grid.GetItemText(0, 1), CString("new"));
    EXPECT_EQ(grid.GetItemText(1, 2), CString("1,1"));
    EXPECT_EQ(grid.GetItemFormat(1, 1), DT_CENTER);
    EXPECT_EQ(grid.InsertRow("below"), 2);
    EXPECT_EQ(grid.GetItemText(2, 0), CString("below"));
    EXPECT_EQ(grid.GetItemFormat(2, 1), DT_CENTER) << "a new cell takes the format of the one above";
    EXPECT_EQ(grid.InsertRow(nullptr, 3), -1);
    EXPECT_EQ(grid.InsertColumn("x", 0, 3), -1);

    CGridCtrl empty;
    EXPECT_EQ(empty.InsertRow(nullptr), 0);
    EXPECT_EQ(empty.GetColumnCount(), 1);
    EXPECT_EQ(empty.GetItemText(0, 0), CString());
}

TEST(GridModel, DeletingLowersTheFixedCountsAndClearsTheSelection) {
    CGridCtrl grid(5, 3, 2, 1);
    FillWithNumbers(grid);
    grid.SelectRange(2, 1, 3, 2);
    grid.SetFocusCell(3, 1);
    EXPECT_TRUE(grid.DeleteRow(1));
    EXPECT_EQ(grid.GetFixedRowCount(), 1);
    EXPECT_EQ(grid.GetItemText(1, 0), CString("2,0"));
    EXPECT_EQ(grid.GetSelectedCount(), 0U);
    EXPECT_EQ(grid.GetFocusCell(), CGridPos());
    EXPECT_TRUE(grid.DeleteColumn(0));
    EXPECT_EQ(grid.GetFixedColumnCount(), 0);
    EXPECT_FALSE(grid.DeleteRow(4) || grid.DeleteColumn(-1));
    EXPECT_TRUE(grid.DeleteBodyRows());
    EXPECT_EQ(grid.GetRowCount(), 1);
    EXPECT_TRUE(grid.DeleteAllItems());
    EXPECT_EQ(grid.GetColumnCount(), 0);
}

TEST(GridModel, CellsOutsideAnswerNothingAndChangeNothing) {
    CGridCtrl grid(2, 2);
    LOGFONT font;
    EXPECT_FALSE(grid.SetItemText(2, 0, "x") || grid.SetItemData(0, -1, 1) ||
                 grid.SetItemFont(-1, 0, &font) || grid.SetItemState(0, 2, GridStateSelected) ||
                 grid.SetItem(nullptr) || grid.GetItem(nullptr) || grid.SetRowHeight(2, 5) ||
                 grid.SetColumnWidth(0, -1) || grid.SetItemFont(0, 0, nullptr));
    EXPECT_EQ(grid.GetItemText(-1, 0), CString());
    EXPECT_EQ(grid.GetItemImage(5, 5), -1);
    EXPECT_EQ(grid.GetItemData(5, 5), 0);
    EXPECT_EQ(grid.GetCellBackColor(5, 5), 0U);
    EXPECT_EQ(grid.GetColumnWidth(2), -1);
    EXPECT_EQ(*grid.GetItemFont(9, 9), grid.GetLogFont());
}

TEST(GridModel, ItemsCarryWhatTheirMaskNames) {
    CGridCtrl grid(2, 2);
    GridItem item;
    item.row = 1;
    item.col = 1;
    item.mask = GridItemText | GridItemFormat;
    item.text = "text";
    item.nFormat = 21;
    item.bkColour = RGB(1, 2, 3);
    EXPECT_TRUE(grid.SetItem(&item));
    EXPECT_EQ(grid.GetCellBackColor(1, 1), kGridDefaultColor);
    item.mask = GridItemBkColour | GridItemFont | GridItemState;
    item.font.lfHeight = -40;
    item.state = GridStateSelected;
    EXPECT_TRUE(grid.SetItem(&item));
    EXPECT_EQ(grid.GetItemFont(1, 1)->lfHeight, -40);
    EXPECT_EQ(grid.GetItemFont(0, 0)->lfHeight, grid.GetLogFont().lfHeight);
    EXPECT_EQ(grid.GetSelectedCount(), 0U) << "a state that is set as it is leaves the selection alone";

    GridItem read;
    read.row = read.col = 1;
    read.mask = GridItemText;
    EXPECT_TRUE(grid.GetItem(&read));
    EXPECT_EQ(read.text, CString("text"));
    EXPECT_EQ(read.nFormat, 0U);
}

TEST(GridModel, ModifiedFlagsBelongToCellsAndToTheGrid) {
    CGridCtrl grid(4, 4);
    grid.SetModified(TRUE, 0, 3);
    EXPECT_TRUE(grid.GetModified());
    EXPECT_FALSE(grid.GetItemState(0, 3) & GridStateModified);
    grid.SetModified(TRUE, 2, 3);
    EXPECT_TRUE(grid.GetModified(2, 3));
    grid.SetModified(FALSE);
    EXPECT_FALSE(grid.GetModified() || grid.GetModified(2, 3));
}

TEST(GridModel, SelectionFollowsTheStates) {
    CGridCtrl grid(70000, 2);
    grid.SetItemState(0, 1, GridStateSelected);
    grid.SetItemState(65536, 1, GridStateSelected);
    EXPECT_EQ(grid.GetSelectedCount(), 2U);
    EXPECT_EQ(grid.GetSelectionBounds(), CGridRange(0, 1, 65536, 1));
    grid.SetRowCount(100);
    EXPECT_EQ(grid.GetSelectionBounds(), CGridRange(0, 1, 0, 1));
    grid.EnableSelection(FALSE);
    grid.SelectAll();
    EXPECT_EQ(grid.GetSelectedCount(), 1U);
}

// A grid of texts as plain as can be, to compare with.
struct PlainTable {
    std::vector<std::vector<std::string>> rows;
    std::size_t columns = 0;
};

class RandomGrid : public ::testing::TestWithParam<unsigned> {
  protected:
    int Below(int limit) {
        return limit < 1 ? 0 : std::uniform_int_distribution<int>(0, limit - 1)(m_random);
    }
    void Step();
    void Compare();

    std::mt19937 m_random{GetParam()};
    CGridCtrl m_grid;
    PlainTable m_plain;
};

void RandomGrid::Step() {
    const int rows = m_grid.GetRowCount();
    const int cols = m_grid.GetColumnCount();
    const std::string text = std::to_string(Below(1000));
    switch (Below(9)) {
        case 0:
            m_grid.SetRowCount(Below(12));
            m_plain.rows.resize(static_cast<std::size_t>(m_grid.GetRowCount()),
                                std::vector<std::string>(m_plain.columns));
            break;
        case 1:
            m_grid.SetColumnCount(Below(6));
            m_plain.columns = static_cast<std::size_t>(m_grid.GetColumnCount());
            for (auto& row : m_plain.rows)
                row.resize(m_plain.columns);
            break;
        case 2:
            if (cols > 0 && rows > 0) {
                const int at = Below(rows);
                m_grid.InsertRow(text.c_str(), at);
                m_plain.rows.insert(m_plain.rows.begin() + at, std::vector<std::string>(m_plain.columns));
                m_plain.rows[static_cast<std::size_t>(at)][0] = text;
            }
            break;
        case 3:
            if (const int at = Below(rows + 1); m_grid.DeleteRow(at))
                m_plain.rows.erase(m_plain.rows.begin() + at);
            break;
        case 4:
            if (const int at = Below(cols + 1); m_grid.DeleteColumn(at)) {
                --m_plain.columns;
                for (auto& row : m_plain.rows)
                    row.erase(row.begin() + at);
            }
            break;
        case 5:
            m_grid.SetFocusCell(Below(rows + 1) < rows ? CGridPos(Below(rows), Below(cols)) : CGridPos());
            if (!m_grid.IsValid(m_grid.GetFocusCell()))
                m_grid.SetFocusCell(-1, -1);
            break;
        case 6:
            m_grid.SelectRange(Below(rows), Below(cols), Below(rows), Below(cols));
            break;
        case 7:
            if (cols > 0 && m_grid.SortRowsByText(Below(cols), TRUE)) {
                m_plain.rows.clear();
                for (int row = 0; row < rows; ++row) {
                    auto& texts = m_plain.rows.emplace_back();
                    for (int col = 0; col < cols; ++col)
                        texts.emplace_back(m_grid.GetItemText(row, col).GetString());
                }
            }
            break;
        default:
            if (const int row = Below(rows), col = Below(cols); m_grid.SetItemText(row, col, text.c_str()))
                m_plain.rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = text;
            break;
    }
}

void RandomGrid::Compare() {
    ASSERT_EQ(m_grid.CheckConsistency(), CString());
    ASSERT_EQ(m_plain.rows.size(), static_cast<std::size_t>(m_grid.GetRowCount()));
    for (std::size_t row = 0; row < m_plain.rows.size(); ++row)
        for (std::size_t col = 0; col < m_plain.columns; ++col)
            ASSERT_EQ(m_grid.GetItemText(static_cast<int>(row), static_cast<int>(col)).View(),
                      m_plain.rows[row][col]);
}

TEST_P(RandomGrid, StaysWholeWhateverIsDone) {
    for (int step = 0; step < 2000; ++step) {
        Step();
        Compare();
        if (HasFatalFailure())
            FAIL() << "step " << step;
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomGrid, ::testing::Range(1U, 6U));

}  // namespace
