#include <gtest/gtest.h>

#include <cstdlib>
#include <vector>

#include "kortavin/base/codepage.h"

using kortavin::base::NarrowCharset;

namespace {

std::string FromGbk(const std::string& charset, std::string_view gbk) {
    std::string narrow = "kept";
    return NarrowCharset::ByName(charset)->FromGbk(narrow, gbk) ? narrow : "refused, " + narrow;
}

std::string ToGbk(const std::string& charset, std::string_view narrow) {
    std::string gbk = "kept";
    return NarrowCharset::ByName(charset)->ToGbk(gbk, narrow) ? gbk : "refused, " + gbk;
}

std::string NameIn(const char* locale) {
    setenv("LC_ALL", locale, 1);
    return NarrowCharset::OfEnvironment().GetName();
}

}  // namespace

TEST(NarrowCharset, ConvertsThereAndBack) {
    struct Case {
        std::string charset, narrow, gbk;
    };
    const std::string filler(3000, 'x');
    const std::vector<Case> cases{
        {"utf-8", "中国", "\xD6\xD0\xB9\xFA"},
        {"GB2312", "\xA1\xA4\xA1\xAA", "\xA1\xA4\xA1\xAA"},
        {"Big5", "\xA4\xA4\xB0\xEA", "\xD6\xD0\x87\xF8"},
        {"windows-1252", filler + "\xE9\x80", filler + "\xA8\xA6\xA2\xE3"},
        // What is GBK already passes, valid or not; GB2312's marks are those of GBK.
        {"GBK", "\x80\x81\x30\x81\x30\xFF\x81", "\x80\x81\x30\x81\x30\xFF\x81"},
    };
    for (const auto& [charset, narrow, gbk] : cases) {
        EXPECT_EQ(ToGbk(charset, narrow), gbk) << charset;
        EXPECT_EQ(FromGbk(charset, gbk), narrow) << charset;
    }
}

TEST(NarrowCharset, RefusesWhatIsInvalidOrMissing) {
    // A fullwidth letter has a best fit, but no code.
    EXPECT_EQ(FromGbk("windows-1252", "\xA3\xE1"), "refused, kept");
    // A zero-width space: characters that do not show must not vanish either.
    EXPECT_EQ(FromGbk("ISO-8859-1", "a\x81\x36\xA6\x31"), "refused, kept");
    EXPECT_EQ(FromGbk("GB2312", "\x81\x40"), "refused, kept");
    EXPECT_EQ(ToGbk("UTF-8", "\xED\xA0\x80"), "refused, kept");
    EXPECT_EQ(ToGbk("Big5", "\xA4 "), "refused, kept");
    EXPECT_EQ(NarrowCharset::ByName("Big5")->ToGbkForMessage("x\xA4\xA4\xA4 "), "x\xD6\xD0\\xA4 ");
}

TEST(NarrowCharset, FollowsTheEnvironment) {
    EXPECT_EQ(NameIn("C"), "UTF-8");
    // Locales that are not installed anywhere.
    EXPECT_EQ(NameIn("xx_XX.GBK"), "GBK");
    EXPECT_EQ(NameIn("xx_XX.ISO-8859-15@euro"), "ISO-8859-15");
    EXPECT_EQ(NameIn("xx_XX.nonsense"), "UTF-8");
}
