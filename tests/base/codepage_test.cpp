#include "kortavin/base/codepage.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/utf.h>

#include <array>
#include <future>
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

std::string AllCharacters() {
    std::string utf8(5'000'000, '\0');
    std::size_t length = 0;
    for (UChar32 character = 0; character <= 0x10FFFF; ++character)
        if (!U_IS_SURROGATE(character))
            U8_APPEND_UNSAFE(utf8, length, character);
    utf8.resize(length);
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

// In threads that fill the tables at the same time.
TEST(CodePage, CarriesEveryCharacterThereAndBackAsIcuDoes) {
    const std::string utf8 = AllCharacters();
    const std::string gbk = ByIcu(utf8);
    const auto agrees = [&] { return AsGbk(utf8) == gbk && AsUtf8(gbk) == utf8; };
    std::array<std::future<bool>, 3> results;
    for (auto& result : results)
        result = std::async(std::launch::async, agrees);
    for (auto& result : results)
        EXPECT_TRUE(result.get());

    int characters = 0;
    for (std::string_view rest = gbk; !rest.empty(); rest.remove_prefix(CharacterLength(rest)))
        ++characters;
    EXPECT_EQ(characters, 1'112'064);
}

TEST(CodePage, ConvertsMixedTextOfAnyLength) {
    const std::vector<std::string> parts{"中国", "a", "é", "ä", "0123456789", "€", "😀"};
    std::string utf8;
    for (std::size_t i = 0; utf8.size() < 3000; ++i) {
        utf8 += parts[(i * i + i / 7) % parts.size()];
        ASSERT_EQ(AsGbk(utf8), ByIcu(utf8));
        ASSERT_EQ(AsUtf8(AsGbk(utf8)), utf8);
    }
    EXPECT_EQ(AsUtf8("5\x80\xB0\xA1\x80"), "5€啊€");
    EXPECT_EQ(AsUtf8(std::string(2000, '\x80')).size(), 6000U);
}

TEST(CodePage, RejectsWhatIsNotUtf8WithoutATrace) {
    const std::string padding = "一二三四五六七八九十Я·";  // fills the entries that overlong forms would hit
    AsGbk(padding);
    for (const char* invalid :
         {"\x80", "\xC3", "\xC0\x80", "\xC1\xBF", "\xE4\xB8", "\xE0\x80\x80", "\xE0\x90\xAF", "\xED\xA0\x80",
          "\xF0\x80\x80\x80", "\xF4\x90\x80\x80", "\xFF", "\xF0\x9F\x98", "\xE4\x41\x42"}) {
        for (const std::string& before : {std::string(), padding, std::string(1023, 'x')}) {
            std::string out = "kept";
            EXPECT_FALSE(AppendUtf8AsGbk(out, before + invalid + (before.empty() ? "" : "x")));
            EXPECT_EQ(out, "kept");
        }
    }
    EXPECT_EQ(Utf8ForMessage("啊\xE4\xB8!\xFE"), "\xB0\xA1\\xE4\\xB8!\\xFE");
}

TEST(CodePage, RejectsWhatIsNotGbkWithoutATrace) {
    for (const char* invalid :
         {"\xFF", "\x81", "\xB0\x7F", "\xB0\xFF", "\xB0 ", "\x81\x30", "\x81\x30\x81", "\x81\x30\x81x",
          "\x84\x31\xA5\x30", "\xE3\x32\x9A\x36", "\xFE\x39\xFE\x39"}) {
        std::string out = "kept";
        EXPECT_FALSE(AppendGbkAsUtf8(out, std::string("\xB0\xA1\xB0\xA1") + invalid));
        EXPECT_EQ(out, "kept");
    }
    EXPECT_EQ(GbkForDisplay("a\xFF\xB0\xA1\xB0"), "a\\xFF啊\\xB0");
}

TEST(CodePage, CutsAndComparesWholeCharacters) {
    const std::string_view text = "ab\xB0\xA1\x81\x30\x81\x30z\x81\x30\x81";  // the last three are none
    const std::vector<std::size_t> expected{0, 1, 2, 2, 4, 4, 4, 4, 8, 9, 10, 11, 12, 12};
    for (std::size_t limit = 0; limit < expected.size(); ++limit)
        EXPECT_EQ(CutAtCharacter(text, limit).size(), expected[limit]) << limit;

    EXPECT_EQ(CompareNoCase("SQLite\xB0\x41", "sqlITE\xB0\x41"), 0);
    EXPECT_LT(CompareNoCase("\xB0\x41", "\xB0\x61"), 0);
    EXPECT_GT(CompareNoCase("\x81", "z"), 0);
}
