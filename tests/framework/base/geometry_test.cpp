#include "framework/base/geometry.h"

#include <gtest/gtest.h>

TEST(Rect, RightAndBottomEdgesAreOutside) {
    constexpr CRect kRect(10, 20, 30, 40);
    EXPECT_TRUE(kRect.PtInRect({10, 20}));
    EXPECT_TRUE(kRect.PtInRect({29, 39}));
    EXPECT_FALSE(kRect.PtInRect({30, 39}));
    EXPECT_FALSE(kRect.PtInRect({29, 40}));
    EXPECT_EQ(kRect.Size(), CSize(20, 20));
    EXPECT_TRUE(CRect(5, 0, 5, 9).IsRectEmpty());
}

TEST(Rect, IntersectionOfNeighboursIsEmpty) {
    CRect common(1, 2, 3, 4);
    EXPECT_FALSE(common.IntersectRect({0, 0, 10, 10}, {10, 0, 20, 10}));
    EXPECT_EQ(common, CRect());
    EXPECT_TRUE(common.IntersectRect({0, 0, 10, 10}, {5, -5, 20, 6}));
    EXPECT_EQ(common, CRect(5, 0, 10, 6));
}

TEST(Rect, UnionDoesNotCountEmptyRectangles) {
    CRect both;
    EXPECT_TRUE(both.UnionRect({5, 5, 8, 8}, {100, 100, 100, 200}));
    EXPECT_EQ(both, CRect(5, 5, 8, 8));
    EXPECT_TRUE(both.UnionRect({5, 5, 8, 8}, {0, 6, 6, 20}));
    EXPECT_EQ(both, CRect(0, 5, 8, 20));
    EXPECT_FALSE(both.UnionRect({3, 3, 3, 3}, {9, 9, 1, 1}));
    EXPECT_EQ(both, CRect());
}

TEST(Rect, EdgesMoveTheRightWay) {
    CRect rect(CPoint(10, 10), CSize(20, 30));
    rect.InflateRect(1, 2);
    EXPECT_EQ(rect, CRect(9, 8, 31, 42));
    rect.DeflateRect(1, 2, 3, 4);
    EXPECT_EQ(rect, CRect(10, 10, 28, 38));
    rect.OffsetRect(CSize(-10, 5));
    EXPECT_EQ(rect, CRect(0, 15, 18, 43));
    rect.SetRect(9, 8, 1, 2);
    rect.NormalizeRect();
    EXPECT_EQ(rect, CRect(1, 2, 9, 8));
}
