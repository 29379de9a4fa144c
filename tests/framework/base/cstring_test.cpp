#include "framework/base/cstring.h"

#include <gtest/gtest.h>

#include <climits>
#include <stdexcept>

TEST(String, NullIsEmptyEverywhere) {
    const char* const null = nullptr;
    CString text(null);
    text = null;
    text += null;
    EXPECT_EQ(text, null);
    EXPECT_EQ(CString(null, 5).GetLength(), 0);
    EXPECT_EQ(text + null + CString("a"), "a");
    EXPECT_EQ(text.Compare(null), 0);
    EXPECT_EQ(text.Find(null), 0);
    EXPECT_EQ(CString("a").FindOneOf(null), -1);
}

TEST(String, CountsAndIndicesAreClamped) {
    const CString text("abcdef");
    EXPECT_EQ(text.Mid(-3, 2), "ab");
    EXPECT_EQ(text.Mid(4, INT_MAX), "ef");
    EXPECT_EQ(text.Mid(7), "");
    EXPECT_EQ(text.Mid(2, -1), "");
    EXPECT_EQ(text.Left(-1) + text.Left(99), "abcdef");
    EXPECT_EQ(text.Right(2) + text.Right(INT_MIN) + text.Right(99), "efabcdef");
    EXPECT_EQ(text.GetAt(-1), '\0');
    EXPECT_EQ(text[6], '\0');
    EXPECT_EQ(CString('x', -2).GetLength(), 0);
    EXPECT_EQ(text.Find('c', -5), 2);
    EXPECT_EQ(text.Find('c', 99), -1);
    EXPECT_EQ(text.Find("", 99), 6);
}

TEST(String, TakesPartsOfItself) {
    CString text("abcdefghijklmnopqrstuvwxyz");
    text += text;
    EXPECT_EQ(text.GetLength(), 52);
    text += text.GetString() + 50;
    EXPECT_EQ(text.Right(4), "yzyz");
    text = text.GetString() + 52;
    EXPECT_EQ(text, "yz");
    text.Format("%s-%s", text.GetString(), text.GetString());
    EXPECT_EQ(text, "yz-yz");
}

TEST(String, ZeroBytesCountAsContent) {
    const CString text("a\0b", 3);
    EXPECT_EQ(text.GetLength(), 3);
    EXPECT_FALSE(text == "a");
    EXPECT_GT(text, CString("a"));
    EXPECT_EQ(text.Find('b'), 2);
    EXPECT_EQ((text + text).GetLength(), 6);
}

TEST(String, ComparesBytesWithoutSign) {
    EXPECT_LT(CString("z"), CString("\xB0\xA1"));
    EXPECT_LT(CString("z").Compare("\xB0\xA1"), 0);
    EXPECT_LT(CString("z"), "\xB0\xA1");
    EXPECT_EQ(CString("ABC").CompareNoCase("abc"), 0);
}

// 7C is the trail byte of 82 7C; 39 stands inside the four-byte code.
TEST(String, FindsNothingInsideCharacters) {
    const CString text(
        "\x82\x7C|\x81\x39\x81\x39"
        "9|\x82\x7C");
    EXPECT_EQ(text.Find('|'), 2);
    EXPECT_EQ(text.Find('|', 3), 8);
    EXPECT_EQ(text.Find("|\x81"), 2);
    EXPECT_EQ(text.Find("|\x82"), 8);
    EXPECT_EQ(text.Find('9'), 7);
    EXPECT_EQ(text.ReverseFind('|'), 8);
    EXPECT_EQ(text.ReverseFind('9'), 7);
    EXPECT_EQ(text.FindOneOf("9|"), 2);
    EXPECT_EQ(text.FindOneOf("\x82\x7C"), 0);
    EXPECT_EQ(CString("\xB0\xA1\xA2\xB0").Find("\xA1\xA2"), -1);
    EXPECT_EQ(CString("aXbX").ReverseFind('X'), 3);
    EXPECT_EQ(CString("\x82\x7C").ReverseFind('|'), -1);
}

TEST(String, FoldsLettersButNoTrailBytes) {
    EXPECT_EQ(CString("aZ\x81\x61z\x81\x41").MakeUpper(), "AZ\x81\x61Z\x81\x41");
    EXPECT_EQ(CString("aZ\x81\x41Z\x81").MakeLower(), "az\x81\x41z\x81");
}

TEST(String, TrimsBlanksTabsAndLineBreaks) {
    EXPECT_EQ(CString(" \t\r\n a b \n").TrimLeft().TrimRight(), "a b");
    EXPECT_EQ(CString(" \t ").TrimLeft(), "");
    EXPECT_EQ(CString(" \t ").TrimRight(), "");
}

TEST(String, BufferKeepsTheContentAndIsReleasedByLength) {
    CString text("abc");
    char* buffer = text.GetBuffer(10);
    EXPECT_STREQ(buffer, "abc");
    buffer[3] = 'd';
    text.ReleaseBuffer();
    EXPECT_EQ(text, "abcd");
    text.GetBufferSetLength(2);
    text.ReleaseBuffer(99);
    EXPECT_EQ(text, "ab");
}

TEST(String, FormatsTextsOfAnyLength) {
    const std::string length511(511, 'x');
    for (const std::string& word : {length511, length511 + "y", length511 + "yz", std::string(100000, 'w')}) {
        CString text;
        text.Format("%s", word.c_str());
        EXPECT_EQ(text.View(), word);
    }
    CString text;
    text.Format("%d\xB0\xA1%%%5.1f", -7, 2.25);
    EXPECT_EQ(text, "-7\xB0\xA1%  2.2");
}

TEST(String, RefusesLengthsThatAnIntCannotTell) {
    const std::string_view huge("", std::size_t{INT_MAX} + 1);  // never read
    EXPECT_THROW(CString{huge}, std::length_error);
    CString text("a");
    EXPECT_THROW(text.Append({huge.data(), INT_MAX}), std::length_error);
    EXPECT_EQ(text, "a");
}

TEST(String, ConvertsFromAndToUtf8) {
    EXPECT_EQ(CString::FromUtf8("啊"), CString("\xB0\xA1"));
    EXPECT_EQ(CString("\xB0\xA1").ToUtf8(), "啊");
    EXPECT_EQ(CString::FromUtf8("\xFF"), std::nullopt);
    EXPECT_EQ(CString("\xFF").ToUtf8(), std::nullopt);
}
