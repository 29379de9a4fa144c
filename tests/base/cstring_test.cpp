#include "kortavin/base/cstring.h"

#include <gtest/gtest.h>

#include <climits>

TEST(String, CountsAndIndicesAreClampedAndNullIsEmpty) {
    const char* const null = nullptr;
    EXPECT_EQ(CString(null) + null + CString(null, 5), null);
    const CString text("abcdef");
    EXPECT_EQ(text.Mid(-3, 2), "ab");
    EXPECT_EQ(text.Mid(4, INT_MAX), "ef");
    EXPECT_EQ(text.Mid(7) + text.Mid(2, -1), "");
    EXPECT_EQ(text.Left(-1) + text.Left(99), "abcdef");
    EXPECT_EQ(text.Right(INT_MIN) + text.Right(99), "abcdef");
    EXPECT_EQ(text.GetAt(-1) + text[6], '\0');
    EXPECT_EQ(text.Find("", 99), 6);
}

TEST(String, TakesPartsOfItself) {
    CString text("abcdefghijklmnopqrstuvwxyz");
    text += text;
    text += text.GetString() + 50;
    text = text.GetString() + 50;
    EXPECT_EQ(text, "yzyz");
    text.Format("%s-%s", text.GetString(), text.GetString());
    EXPECT_EQ(text, "yzyz-yzyz");
}

TEST(String, ComparesAllBytesWithoutSign) {
    const CString text("a\0b", 3);
    EXPECT_GT(text, CString("a"));
    EXPECT_EQ((text + text).Find('b'), 2);
    EXPECT_LT(CString("z").Compare("\xB0\xA1"), 0);
}

// 7C is the trail byte of 82 7C; 39 stands inside the four-byte code.
TEST(String, FindsNothingInsideCharacters) {
    const CString text(
        "\x82\x7C|\x81\x39\x81\x39"
        "9|\x82\x7C");
    EXPECT_EQ(text.Find('|'), 2);
    EXPECT_EQ(text.Find("|\x82", 3), 8);
    EXPECT_EQ(text.FindOneOf("9|"), 2);
    EXPECT_EQ(CString("\xB0\xA1\xA2\xB0").Find("\xA1\xA2"), -1);
    EXPECT_EQ(CString("\x82\x7C").ReverseFind('|'), -1);
}

TEST(String, FoldsLettersButNoTrailBytes) {
    EXPECT_EQ(CString("aZ\x81\x61z\x81\x41").MakeUpper(), "AZ\x81\x61Z\x81\x41");
    EXPECT_EQ(CString("aZ\x81\x41Z\x81").MakeLower(), "az\x81\x41z\x81");
    EXPECT_EQ(CString(" \t\r\n a b \n").TrimLeft().TrimRight(), "a b");
}

TEST(String, FormatsTextsOfAnyLength) {
    CString text;
    for (const std::size_t length : {511U, 512U, 513U, 100000U}) {
        const std::string word(length, 'x');
        text.Format("%s", word.c_str());
        EXPECT_EQ(text.View(), word);
    }
    text.Format("%d\xB0\xA1%%%5.1f", -7, 2.25);
    EXPECT_EQ(text, "-7\xB0\xA1%  2.2");
}
