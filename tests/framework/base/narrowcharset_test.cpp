#include <gtest/gtest.h>

#include <cstdlib>
#include <map>

#include "framework/base/codepage.h"

using kortavin::base::NarrowCharset;

namespace {

constexpr const char* kGbkText =
    "\xD6\xD0\xB9\xFA"
    "A";  // 中国A

std::string FromGbk(const NarrowCharset& charset, std::string_view gbk) {
    std::string narrow = "kept";
    return charset.FromGbk(narrow, gbk) ? narrow : "refused, " + narrow;
}

std::string ToGbk(const NarrowCharset& charset, std::string_view narrow) {
    std::string gbk = "kept";
    return charset.ToGbk(gbk, narrow) ? gbk : "refused, " + gbk;
}

std::string NameIn(const std::map<std::string, std::string>& environment) {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"})
        unsetenv(variable);
    for (const auto& [variable, value] : environment)
        setenv(variable.c_str(), value.c_str(), 1);
    const NarrowCharset charset = NarrowCharset::OfEnvironment();
    for (const auto& [variable, value] : environment)
        unsetenv(variable.c_str());
    return charset.GetName();
}

}  // namespace

TEST(NarrowCharset, ConvertsAndReplacesTheTarget) {
    const std::map<std::string, std::string> narrowTexts{{"utf-8", "中国A"},
                                                         {"GBK", kGbkText},
                                                         {"gb18030", kGbkText},
                                                         {"GB2312", kGbkText},
                                                         {"Big5",
                                                          "\xA4\xA4\xB0\xEA"
                                                          "A"},
                                                         {"EUC_KR",
                                                          "\xF1\xE9\xCF\xD0"
                                                          "A"}};
    for (const auto& [name, narrow] : narrowTexts) {
        const auto charset = NarrowCharset::ByName(name);
        ASSERT_TRUE(charset) << name;
        const bool hasBoth = name == "Big5" || name == "EUC_KR";  // 国 is simplified
        const std::string gbk = hasBoth ? "\xD6\xD0\x87\xF8"
                                          "A"
                                        : kGbkText;
        EXPECT_EQ(ToGbk(*charset, narrow), gbk) << name;
        EXPECT_EQ(FromGbk(*charset, gbk), narrow) << name;
    }
    const auto latin = NarrowCharset::ByName("windows-1252");
    EXPECT_EQ(ToGbk(*latin, "\xE9\x80"), "\xA8\xA6\xA2\xE3");
    const std::string filler(3000, 'x');
    EXPECT_EQ(FromGbk(*latin, filler + "\xA8\xA6"), filler + "\xE9");
}

TEST(NarrowCharset, ReportsWhatTheOtherSideLacks) {
    const auto latin = NarrowCharset::ByName("ISO-8859-1");
    EXPECT_EQ(FromGbk(*latin, kGbkText), "refused, kept");
    // A fullwidth letter has a best fit, but no code.
    EXPECT_EQ(FromGbk(*NarrowCharset::ByName("windows-1252"), "\xA3\xE1"), "refused, kept");
    // A zero-width space and a soft hyphen: characters that do not show must not vanish either.
    EXPECT_EQ(FromGbk(*latin, "a\x81\x36\xA6\x31"), "refused, kept");
    EXPECT_EQ(FromGbk(*NarrowCharset::ByName("US-ASCII"), "a\x81\x30\x85\x35"), "refused, kept");
    EXPECT_EQ(FromGbk(*NarrowCharset::ByName("GB2312"), "\x81\x40"), "refused, kept");
    EXPECT_EQ(FromGbk(NarrowCharset::Utf8(), "a\xFF"), "refused, kept");
}

TEST(NarrowCharset, ReportsInvalidText) {
    EXPECT_EQ(ToGbk(NarrowCharset::Utf8(), "\xED\xA0\x80"), "refused, kept");
    EXPECT_EQ(ToGbk(*NarrowCharset::ByName("Big5"), "A\xA4"), "refused, kept");
    EXPECT_EQ(ToGbk(*NarrowCharset::ByName("US-ASCII"), "\xE9"), "refused, kept");
}

TEST(NarrowCharset, PassesGbkBytesUnchanged) {
    const auto gbk = NarrowCharset::ByName("CP936");
    for (const char* bytes : {"\xFF\x81", "\x80", "\xA1\xA4\xA1\xAA", "\x81\x30\x81\x30"}) {
        EXPECT_EQ(ToGbk(*gbk, bytes), bytes);
        EXPECT_EQ(FromGbk(*gbk, bytes), bytes);
    }
    EXPECT_EQ(FromGbk(*NarrowCharset::ByName("EUC-CN"), "\xA1\xA4\xA1\xAA"), "\xA1\xA4\xA1\xAA");
}

TEST(NarrowCharset, MessagesKeepWhatIsReadable) {
    const auto big5 = NarrowCharset::ByName("Big5");
    EXPECT_EQ(big5->ToGbkForMessage("x\xA4\xA4\xA4 "), "x\xD6\xD0\\xA4 ");
    EXPECT_EQ(ToGbk(*big5, "\xA4 "), "refused, kept");  // strict again
    EXPECT_EQ(NarrowCharset::Utf8().ToGbkForMessage("\xFF中"), "\\xFF\xD6\xD0");
}

TEST(NarrowCharset, UnknownNamesAnswerNothing) {
    EXPECT_FALSE(NarrowCharset::ByName(""));
    EXPECT_FALSE(NarrowCharset::ByName("no-such-charset"));
    EXPECT_FALSE(NarrowCharset::ByName(std::string(10000, 'x')));
}

TEST(NarrowCharset, FollowsTheEnvironment) {
    EXPECT_EQ(NameIn({}), "UTF-8");
    EXPECT_EQ(NameIn({{"LC_ALL", "C"}, {"LANG", "zh_CN.GBK"}}), "UTF-8");
    EXPECT_EQ(NameIn({{"LANG", "C.UTF-8"}}), "UTF-8");
    // Locales that are not installed anywhere.
    EXPECT_EQ(NameIn({{"LANG", "xx_XX.GBK"}}), "GBK");
    EXPECT_EQ(NameIn({{"LC_CTYPE", "xx_XX.ISO-8859-15@euro"}, {"LANG", "xx_XX.GBK"}}), "ISO-8859-15");
    EXPECT_EQ(NameIn({{"LANG", "xx_XX"}}), "UTF-8");
    EXPECT_EQ(NameIn({{"LANG", "xx_XX.nonsense"}}), "UTF-8");
}
