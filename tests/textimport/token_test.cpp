#include "kortavin/textimport/token.h"

namespace {

// Each token in brackets.
std::string AllTokens(CToken tokens) {
    std::string all;
    while (tokens.MoreTokens())
        all.append("[").append(tokens.GetNextToken().View()).append("]");
    return all;
}

std::string Split(std::string_view text, std::string_view separator) {
    CToken tokens{CString(text)};
    tokens.SetToken(CString(separator));
    return AllTokens(tokens);
}

}  // namespace

TEST(Token, SplitsAtEverySeparatorAndTakesOneQuoteOffEachEnd) {
    for (const std::string_view each :
         {"a,b,c -> [a][b][c]", "a,,b -> [a][][b]", ",a -> [][a]", "a, -> [a][]", "abc -> ", " -> ",
          "'x',\"y\" -> [x][y]", "'x\",\"' -> [x][]", "''x'', -> ['x'][]", "\"a,b\",c -> [a][b][c]",
          "',' -> [][]", " a , b  -> [ a ][ b ]", "a'b,' -> [a'b][]", "'''',''', -> [''][][]"}) {
        const std::size_t arrow = each.find(" -> ");
        EXPECT_EQ(AllTokens(CToken(CString(each.substr(0, arrow)))), each.substr(arrow + 4)) << each;
    }
}

TEST(Token, SeparatorIsFoundAtWholeCharactersOnly) {
    using namespace std::string_view_literals;
    EXPECT_EQ(Split("a, b,c, d", ", "), "[a][b,c][d]");
    EXPECT_EQ(Split("\x82\x7C|\x82\x7C", "|"), "[\x82\x7C][\x82\x7C]");
    EXPECT_EQ(Split("\x81\x30\x84\x31\x30x", "0"), "[\x81\x30\x84\x31][x]");
    EXPECT_EQ(Split("\xB4\xF3\xA3\xAC\xB4", "\xA3\xAC"), "[\xB4\xF3][\xB4]");
    EXPECT_EQ(Split("a\0b"sv, "\0"sv), "[a][b]");
    EXPECT_EQ(Split("a,b", ""), "");
}

TEST(Token, WithoutSeparatorGivesNothingAndTheRestInTurn) {
    CToken tokens("'r'");
    for (const char* expected : {"", "r", "", "r"}) {
        EXPECT_EQ(tokens.MoreTokens(), *expected != '\0');
        EXPECT_EQ(tokens.GetNextToken(), expected);
    }
}

TEST(Token, NewSeparatorHoldsFromTheNextSplitOnAndCopiesGoTheirOwnWay) {
    CToken tokens("a,b;c,d");
    EXPECT_EQ(tokens.GetNextToken(), "a");
    const CToken copy(tokens);
    tokens.SetToken(";");
    EXPECT_EQ(tokens.GetNextToken(), "b");
    tokens.SetToken(",");  // the last token is pending
    EXPECT_EQ(tokens.GetNextToken(), "c,d");
    EXPECT_EQ(AllTokens(tokens), "[c][d]");
    EXPECT_EQ(AllTokens(copy), "[b;c][d]");
}
