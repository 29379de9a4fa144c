#include "framework/base/codepage.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/utf8.h>

#include <thread>
#include <vector>

using namespace kortavin::base;

namespace {

std::string AsGbk(std::string_view utf8) {
    std::string gbk;
    EXPECT_TRUE(AppendUtf8AsGbk(gbk, utf8)) << utf8;
    return gbk;
}

std::string AsUtf8(std::string_view gbk) {
    std::string utf8;
    EXPECT_TRUE(AppendGbkAsUtf8(utf8, gbk));
    return utf8;
}

std::string Utf8Of(char32_t character) {
    std::string utf8(4, '\0');
    std::size_t length = 0;
    U8_APPEND_UNSAFE(utf8, length, character);
    utf8.resize(length);
    return utf8;
}

std::string AllCharacters(char32_t last) {
    std::string utf8;
    for (char32_t character = 0; character <= last; ++character)
        if (character < 0xD800 || character > 0xDFFF)
            utf8 += Utf8Of(character);
    return utf8;
}

std::string ByIcu(const std::string& utf8) {
    std::string gbk(utf8.size() * 2, '\0');
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length = ucnv_convert("gb18030", "UTF-8", gbk.data(), static_cast<int32_t>(gbk.size()),
                                        utf8.data(), static_cast<int32_t>(utf8.size()), &error);
    EXPECT_TRUE(U_SUCCESS(error));
    gbk.resize(static_cast<std::size_t>(length));
    return gbk;
}

}  // namespace

TEST(CodePage, CarriesEveryCharacterThereAndBack) {
    const std::string utf8 = AllCharacters(0x10FFFF);
    const std::string gbk = AsGbk(utf8);
    EXPECT_TRUE(gbk == ByIcu(utf8));
    EXPECT_TRUE(AsUtf8(gbk) == utf8);
}

TEST(CodePage, ConvertsEveryCharacterAlone) {
    for (char32_t character = 0; character <= 0x2FFFF; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF)
            continue;
        const std::string utf8 = Utf8Of(character);
        const std::string gbk = AsGbk(utf8);
        ASSERT_EQ(CharacterLength(gbk), gbk.size()) << static_cast<unsigned>(character);
        ASSERT_EQ(AsUtf8(gbk), utf8) << static_cast<unsigned>(character);
    }
}

TEST(CodePage, ConvertsMixedTextOfAnyLength) {
    const std::vector<std::pair<std::string, std::string>> parts{{"中国", "\xD6\xD0\xB9\xFA"},
                                                                 {"a", "a"},
                                                                 {"é", "\xA8\xA6"},
                                                                 {"ü", "\xA8\xB9"},
                                                                 {"ä", "\x81\x30\x8A\x31"},
                                                                 {"0123456789", "0123456789"},
                                                                 {"한", "\x83\x36\x84\x33"},
                                                                 {"😀", "\x94\x39\xFC\x36"}};
    std::string utf8;
    std::string gbk;
    for (std::size_t i = 0; utf8.size() < 5000; ++i) {
        const auto& [partUtf8, partGbk] = parts[(i * i + i / 7) % parts.size()];
        utf8 += partUtf8;
        gbk += partGbk;
        ASSERT_EQ(AsGbk(utf8), gbk);
        ASSERT_EQ(AsUtf8(gbk), utf8);
    }
}

TEST(CodePage, ThreadsShareTheTables) {
    const std::string utf8 = AllCharacters(0xFFFF);
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    for (std::string& result : results)
        threads.emplace_back([&] { result = AsUtf8(AsGbk(utf8)); });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& result : results)
        EXPECT_TRUE(result == utf8);
}

TEST(CodePage, RejectsWhatIsNotUtf8WithoutATrace) {
    const std::string padding = "一二三四五六七八九十";
    for (const char* invalid :
         {"\x80", "\xC3", "\xC0\x80", "\xC1\xBF", "\xE4\xB8", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xED\xA0\x80",
          "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xFF", "\xF0\x9F\x98", "\xE4\x41\x42"}) {
        for (const std::string& before : {std::string(), padding, std::string(1023, 'x')}) {
            std::string out = "kept";
            EXPECT_FALSE(AppendUtf8AsGbk(out, before + invalid));
            EXPECT_FALSE(AppendUtf8AsGbk(out, before + invalid + padding));
            EXPECT_EQ(out, "kept");
        }
    }
    // Overlong forms of characters whose table entries exist by now.
    EXPECT_EQ(AsGbk("Я·"), "\xA7\xC1\xA1\xA4");
    std::string out;
    EXPECT_FALSE(AppendUtf8AsGbk(out, "\xE0\x90\xAF"));
}

TEST(CodePage, RejectsWhatIsNotGbkWithoutATrace) {
    for (const char* invalid :
         {"\xFF", "\x81", "\xB0\x7F", "\xB0\xFF", "\xB0 ", "\x81\x30", "\x81\x30\x81", "\x81\x30\x81x",
          "\x84\x31\xA5\x30", "\xE3\x32\x9A\x36", "\xFE\x39\xFE\x39"}) {
        std::string out = "kept";
        EXPECT_FALSE(AppendGbkAsUtf8(out, invalid));
        EXPECT_FALSE(AppendGbkAsUtf8(out, std::string("\xB0\xA1\xB0\xA1") + invalid));
        EXPECT_EQ(out, "kept");
    }
}

TEST(CodePage, ReadsTheSingleByteEuro) {
    EXPECT_EQ(AsUtf8("5\x80\xB0\xA1\x80"), "5€啊€");
    EXPECT_EQ(AsGbk("€"), "\xA2\xE3");
    EXPECT_EQ(AsUtf8(std::string(2000, '\x80')).size(), 6000U);
}

TEST(CodePage, ShowsInvalidBytesAndKeepsTheRest) {
    EXPECT_EQ(GbkForDisplay("a\xFF\xB0\xA1\xB0"), "a\\xFF啊\\xB0");
    EXPECT_EQ(Utf8ForMessage("啊\xE4\xB8!\xFE"), "\xB0\xA1\\xE4\\xB8!\\xFE");
    EXPECT_EQ(GbkForDisplay(std::string_view("\0x", 2)), std::string("\0x", 2));
}

TEST(CodePage, KnowsTheStructureOfCharacters) {
    EXPECT_EQ(CharacterLength(""), 0U);
    EXPECT_EQ(CharacterLength("\xB0\xA1x"), 2U);
    EXPECT_EQ(CharacterLength("\x81\x40"), 2U);
    EXPECT_EQ(CharacterLength("\x81\x30\x81\x30"), 4U);
    EXPECT_EQ(CharacterLength("\x81\x30\x81"), 1U);
    EXPECT_EQ(CharacterLength("\xB0\x7F"), 1U);
    EXPECT_EQ(CharacterLength("\xB0\xFF"), 1U);
    EXPECT_EQ(CharacterLength("\x80\xA1"), 1U);
    EXPECT_EQ(CharacterLength("\xFF\xA1"), 1U);
}

TEST(CodePage, CutsBetweenCharacters) {
    const std::string_view text = "ab\xB0\xA1\x81\x30\x81\x30z";
    const std::vector<std::size_t> expected{0, 1, 2, 2, 4, 4, 4, 4, 8, 9, 9};
    for (std::size_t limit = 0; limit < expected.size(); ++limit)
        EXPECT_EQ(CutAtCharacter(text, limit).size(), expected[limit]) << limit;
}

TEST(CodePage, FoldsOnlySingleByteLetters) {
    EXPECT_EQ(CompareNoCase("SQLite\xB0\x41", "sqlITE\xB0\x41"), 0);
    EXPECT_NE(CompareNoCase("\xB0\x41", "\xB0\x61"), 0);
    EXPECT_LT(CompareNoCase("\xB0\x41", "\xB0\x61"), 0);
    EXPECT_LT(CompareNoCase("[", "a"), 0);
    EXPECT_LT(CompareNoCase("Z", "["), 32);
    EXPECT_GT(CompareNoCase("Z", "["), 0);
    EXPECT_GT(CompareNoCase("\x81", "z"), 0);
    EXPECT_LT(CompareNoCase("ab", "ABC"), 0);
    // A lead byte without trail is one byte, and the letter behind it folds where it is not its trail.
    EXPECT_LT(CompareNoCase("\x81", "\x81\x41"), 0);
}
