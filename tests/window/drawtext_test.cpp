#include "kortavin/window/drawtext.h"

#include <gtest/gtest.h>

#include "kortavin/base/cstring.h"
#include "kortavin/window/dc.h"
#include "tests/support/memory/surface.h"

namespace kortavin::window {
namespace {

using ::kortavin::testing::FixedFont;

std::string Gbk(const std::string& utf8) {
    return std::string(CString::FromUtf8(utf8).value().View());
}

// The lines in brackets, each with its upper left corner. Characters are 8 by 16 pixels.
std::string Lines(const std::string& text, const CRect& rect, UINT flags) {
    std::string lines;
    for (const TextLine& line : LayOutText(text, FixedFont(), rect, flags).lines)
        lines +=
            "[" + line.text + "]" + std::to_string(line.corner.x) + "," + std::to_string(line.corner.y) + " ";
    return lines;
}

// How much text was measured to lay out another.
class CountingFont : public FixedFont {
  public:
    int Width(std::string_view text) const override {
        measured += text.size();
        return FixedFont::Width(text);
    }
    mutable std::size_t measured = 0;
};

TEST(DrawTextLayout, AlignsOneLineOnBothAxes) {
    const CRect rect(10, 20, 61, 57);
    EXPECT_EQ(Lines("abc", rect, DT_LEFT | DT_TOP), "[abc]10,20 ");
    EXPECT_EQ(Lines("abc", rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE), "[abc]23,30 ");
    EXPECT_EQ(Lines("abc", rect, DT_RIGHT | DT_BOTTOM | DT_SINGLELINE), "[abc]37,41 ");
    EXPECT_EQ(Lines("a&b", rect, DT_RIGHT), "[a&b]37,20 ");
    // One that is too large stands out evenly.
    EXPECT_EQ(Lines("abcdefgh", {0, 0, 40, 10}, DT_CENTER | DT_VCENTER), "[abcdefgh]-12,-3 ");
}

TEST(DrawTextLayout, LineEndsBreakLinesUnlessASingleLineIsAskedFor) {
    const CRect rect(0, 0, 100, 100);
    EXPECT_EQ(Lines("a\r\nb\nc\rd\n\ne\r\n", rect, 0), "[a]0,0 [b]0,16 [c]0,32 [d]0,48 []0,64 [e]0,80 ");
    EXPECT_EQ(Lines("a\r\nb\nc", rect, DT_SINGLELINE | DT_WORDBREAK), "[a b c]0,0 ");
    EXPECT_EQ(Lines("", rect, DT_WORDBREAK), "");
}

TEST(DrawTextLayout, BreaksAtBlanksWhichTheBreakSwallows) {
    const CRect rect(0, 0, 48, 200);  // six characters
    EXPECT_EQ(Lines("one two six", rect, DT_WORDBREAK), "[one]0,0 [two]0,16 [six]0,32 ");
    EXPECT_EQ(Lines("abcdef   gh  \nij", rect, DT_WORDBREAK), "[abcdef]0,0 [gh  ]0,16 [ij]0,32 ");
    EXPECT_EQ(Lines("ab cd ef", rect, DT_WORDBREAK | DT_RIGHT), "[ab cd]8,0 [ef]32,16 ");
    EXPECT_EQ(Lines("word      ", rect, DT_WORDBREAK), "[word]0,0 ");
    // A word that is too wide is broken where it fits, at least one character a line.
    EXPECT_EQ(Lines("ab abcdefgh", rect, DT_WORDBREAK), "[ab]0,0 [abcdef]0,16 [gh]0,32 ");
    EXPECT_EQ(Lines("ab c", {0, 0, 3, 200}, DT_WORDBREAK), "[a]0,0 [b]0,16 [c]0,32 ");
}

TEST(DrawTextLayout, BreaksBetweenDoubleByteCharactersAndNeverInsideOne) {
    const CRect rect(0, 0, 40, 200);  // two and a half double-byte characters
    EXPECT_EQ(Lines(Gbk("查询条件"), rect, DT_WORDBREAK), Gbk("[查询]0,0 [条件]0,16 "));
    EXPECT_EQ(Lines(Gbk("a查询b件"), rect, DT_WORDBREAK), Gbk("[a查]0,0 [询b件]0,16 "));
    EXPECT_EQ(Lines(Gbk("查询"), {0, 0, 3, 200}, DT_WORDBREAK), Gbk("[查]0,0 [询]0,16 "));
    // A trail byte that is a letter or bracket, and a character of four bytes.
    EXPECT_EQ(Lines("\x81\x41\x81\x5D\x82\x30\x81\x30", rect, DT_WORDBREAK),
              "[\x81\x41\x81\x5D]0,0 [\x82\x30\x81\x30]0,16 ");
    // Bytes that are no characters count as one each.
    EXPECT_EQ(Lines("\xFF\x81 \x80\xFF\xFF\xFF\x81", rect, DT_WORDBREAK),
              "[\xFF\x81]0,0 [\x80\xFF\xFF\xFF\x81]0,16 ");
}

TEST(DrawTextLayout, CentresSeveralLinesAndStartsAtTheTopWhereTheyDoNotFit) {
    const UINT flags = DT_CENTER | DT_VCENTER | DT_WORDBREAK;
    EXPECT_EQ(Lines("ab cd", {0, 0, 24, 50}, flags), "[ab]4,9 [cd]4,25 ");
    EXPECT_EQ(Lines("ab cd", {0, 0, 24, 50}, DT_BOTTOM | DT_WORDBREAK), "[ab]0,18 [cd]0,34 ");
    EXPECT_EQ(Lines("ab cd ef", {0, 0, 24, 33}, flags), "[ab]4,0 [cd]4,16 [ef]4,32 ");
    EXPECT_EQ(Lines("ab cd ef", {0, 0, 24, 32}, flags | DT_NOCLIP), "[ab]4,0 [cd]4,16 [ef]4,32 ");
}

TEST(DrawTextLayout, TellsTheSizeOfTheWholeText) {
    const auto box = [](const std::string& text, UINT flags) {
        return LayOutText(text, FixedFont(), {10, 20, 50, 21}, flags | DT_CALCRECT).box;
    };
    EXPECT_EQ(box("abcdefghi", DT_SINGLELINE | DT_VCENTER | DT_CENTER), CRect(10, 20, 82, 36));
    EXPECT_EQ(box("ab cd ef\nabc", DT_WORDBREAK), CRect(10, 20, 50, 68));
    EXPECT_EQ(box("", DT_WORDBREAK), CRect(10, 20, 10, 20));
}

TEST(DrawTextLayout, MeasuresNoMoreOfALongTextThanShows) {
    std::string text = Gbk("some words and 一些汉字 ");
    while (text.size() < 1'000'000)
        text += text;
    for (const UINT flags : {DT_WORDBREAK, DT_WORDBREAK | DT_VCENTER | DT_CENTER, DT_SINGLELINE, DT_LEFT}) {
        const CountingFont font;
        const TextLayout layout = LayOutText(text, font, {0, 0, 100, 60}, flags);
        EXPECT_EQ(layout.lines.size(), (flags & DT_WORDBREAK) != 0 ? 4U : 1U) << flags;
        EXPECT_LE(layout.lines[0].text.size(), 14U) << flags;
        EXPECT_LT(font.measured, 1000U) << flags;
    }
}

}  // namespace
}  // namespace kortavin::window
