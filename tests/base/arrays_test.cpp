#include "kortavin/base/arrays.h"

#include <gtest/gtest.h>

TEST(ListArray, TakesAnyIndexAndFillsGapsWithEmptyElements) {
    CStringArray list;
    list.SetAtGrow(1, "b");
    list.InsertAt(3, "d", 2);
    list.InsertAt(-1, "ignored");
    list.SetAt(5, "ignored");
    EXPECT_EQ(std::vector<CString>(list.begin(), list.end()), (std::vector<CString>{"", "b", "", "d", "d"}));
    EXPECT_EQ(list.GetAt(-1) + list[5], "");
    list.RemoveAt(2, 100);
    EXPECT_EQ(std::vector<CString>(list.begin(), list.end()), (std::vector<CString>{"", "b"}));
}
