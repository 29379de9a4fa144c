// Compares the tokenizer with one that copies its remainder and searches it character by character.

#include <array>

#include "kortavin/base/codepage.h"
#include "kortavin/textimport/token.h"
#include "tests/textimport/fuzz.h"

namespace {

using namespace std::string_view_literals;

// 82 7C and 81 30 84 7C are characters, B4 a lead byte alone unless a trail follows by chance.
constexpr std::array kPieces{","sv,
                             ", "sv,
                             "|"sv,
                             "0"sv,
                             "'"sv,
                             "\""sv,
                             "a"sv,
                             " "sv,
                             "\0"sv,
                             "\xB4\xF3"sv,
                             "\xB4"sv,
                             "\x82\x7C"sv,
                             "\x81\x30\x84\x31"sv,
                             "\x84"sv};

bool IsQuote(char byte) {
    return byte == '\'' || byte == '"';
}

struct PlainTokenizer {
    std::string remainder;
    std::string separator = ",";
    bool last = false;

    std::size_t Find() const {
        std::size_t at = 0;
        while (!separator.empty() && at < remainder.size()) {
            if (remainder.compare(at, separator.size(), separator) == 0)
                return at;
            at += kortavin::base::CharacterLength(std::string_view(remainder).substr(at));
        }
        return std::string::npos;
    }
    bool More() const { return last || Find() != std::string::npos; }
    std::string Split() {
        const std::size_t at = Find();
        if (at == std::string::npos)
            return "";
        std::string token = remainder.substr(0, at);
        remainder.erase(0, at + separator.size());
        return token;
    }
    std::string Next() {
        std::string token = last ? remainder : Split();
        last = !last && Find() == std::string::npos;
        if (token.size() > 1 && IsQuote(token[0]))
            token.erase(0, 1);
        if (token.size() > 1 && IsQuote(token.back()))
            token.pop_back();
        return token.size() == 1 && IsQuote(token[0]) ? "" : token;
    }
};

void SplitOneText(Random random) {
    PlainTokenizer plain{random.Join(kPieces, random.Below(40))};
    CToken tokens{CString(std::string_view(plain.remainder))};
    for (int i = 0; i < 60 && (plain.More() || !random.OnceIn(3)); ++i) {
        if (random.OnceIn(8)) {
            plain.separator = random.Join(kPieces, random.Below(3));
            tokens.SetToken(CString(std::string_view(plain.separator)));
        }
        if (random.OnceIn(2))
            Require((tokens.MoreTokens() != FALSE) == plain.More(), "whether there are more");
        if (random.OnceIn(8)) {
            CToken copy(tokens);
            copy.GetNextToken();
            tokens = CToken(tokens);
        }
        Require(tokens.GetNextToken().View() == plain.Next(), "the token");
    }
}

}  // namespace

int main(int argc, char** argv) {
    return Fuzz(argc, argv, SplitOneText);
}
