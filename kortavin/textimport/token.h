#pragma once

#include <string_view>

#include "kortavin/base/cstring.h"

namespace kortavin {

// Splits one line of delimited text at a separator and hands out a token a call:
//
//     CToken tokens(line);
//     while (tokens.MoreTokens())
//         Use(tokens.GetNextToken());
//
// A text without separator gives no token at all. One quote character, ' or ", is taken off each end of a
// token; quotes protect no separator, and blanks stay. The separator is looked for at whole characters: one
// that is a single ASCII byte never splits a double-byte or four-byte character. An empty separator
// separates nothing. All tokens of a line together cost time linear in the line.
class KORTAVIN_API CToken {
  public:
    // Splits `text` at "," unless SetToken names another separator.
    explicit CToken(CString text);
    // Copies go on independently from where the original stands.
    CToken(const CToken&);
    CToken& operator=(const CToken&);

    // The next token. While MoreTokens is FALSE: an empty token, then the whole remainder, and so on in turn.
    virtual CString GetNextToken();
    // TRUE while the remainder holds a separator or is itself the last token.
    virtual BOOL MoreTokens();
    virtual ~CToken();

    // Sets the separator for the splits to come. A last token that is already pending stays pending.
    void SetToken(const CString& separator);

  private:
    // What has not been handed out, without moving it up after every token.
    struct Remainder {
        CString text;
        std::size_t at = 0;
    };
    static constexpr std::size_t kNotLookedFor = std::string_view::npos - 1;

    std::size_t NextSeparator();
    void StepOverToken();

    Remainder m_Remainder;
    CString m_Separator;
    BOOL m_LastToken = FALSE;            // the remainder is the last token, and is yet to be handed out
    std::size_t m_next = kNotLookedFor;  // the next separator; npos: there is none
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CToken;
#endif
