#include "framework/base/arrays.h"

#include <gtest/gtest.h>

TEST(ListArray, AnswersEmptyElementsOutsideItself) {
    CStringArray list;
    list.Add("a");
    EXPECT_EQ(list.GetAt(-1), "");
    EXPECT_EQ(list[1], "");
    list.SetAt(1, "ignored");
    list.RemoveAt(1);
    EXPECT_EQ(list.GetSize(), 1);
}

TEST(ListArray, GrowsOverGapsWithEmptyElements) {
    CStringArray list;
    list.SetAtGrow(1, "b");
    list.InsertAt(3, "d", 2);
    list.InsertAt(-1, "ignored");
    EXPECT_EQ(std::vector<CString>(list.begin(), list.end()), (std::vector<CString>{"", "b", "", "d", "d"}));
}

TEST(ListArray, RemovesNoMoreThanThereIs) {
    CWordArray list;
    for (const WORD value : {1, 2, 3, 4})
        list.Add(value);
    list.RemoveAt(2, 100);
    list.RemoveAt(0, 0);
    EXPECT_EQ(std::vector<WORD>(list.begin(), list.end()), (std::vector<WORD>{1, 2}));
}
