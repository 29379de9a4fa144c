#include "kortavin/base/geometry.h"

#include <gtest/gtest.h>

TEST(MulDiv, RoundsHalvesAwayFromZeroAndRefusesWhatDoesNotFit) {
    EXPECT_EQ(MulDiv(5, 1, 2), 3);
    EXPECT_EQ(MulDiv(5, 1, -2), -3);
    EXPECT_EQ(MulDiv(INT32_MAX, INT32_MAX, INT32_MAX), INT32_MAX);
    EXPECT_EQ(MulDiv(INT32_MIN, 1, -1), -1);
    EXPECT_EQ(MulDiv(1, 1, 0), -1);
}

TEST(Rect, EdgesCountAsHalfOpenAndMoveTheRightWay) {
    CRect rect(CPoint(10, 20), CSize(20, 20));
    EXPECT_TRUE(rect.PtInRect({10, 20}) && rect.PtInRect({29, 39}));
    EXPECT_FALSE(rect.PtInRect({30, 39}) || rect.PtInRect({29, 40}));
    EXPECT_FALSE(rect.IntersectRect({0, 0, 10, 10}, {10, 0, 20, 10}));
    EXPECT_EQ(rect, CRect());
    rect.IntersectRect({0, 0, 10, 10}, {5, -5, 20, 6});
    EXPECT_EQ(rect, CRect(5, 0, 10, 6));
    rect.UnionRect({5, 5, 8, 8}, {100, 100, 100, 200});  // the second is empty
    rect.UnionRect(rect, {0, 6, 6, 20});
    EXPECT_EQ(rect, CRect(0, 5, 8, 20));
    rect.DeflateRect(1, 2, 3, 4);
    EXPECT_EQ(rect, CRect(1, 7, 5, 16));
    rect.SetRect(9, 8, 1, 2);
    rect.NormalizeRect();
    EXPECT_EQ(rect, CRect(1, 2, 9, 8));
}
