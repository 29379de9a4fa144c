#include "kortavin/textimport/token.h"

#include <cstring>
#include <utility>

#include "kortavin/base/codepage.h"

namespace kortavin {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// Below the digits, no byte is ever part of a longer character.
bool IsAlwaysACharacter(char byte) {
    return static_cast<unsigned char>(byte) < 0x30;
}

// The first separator at or behind `from`, a character boundary, that begins at a character.
[[gnu::noinline]] std::size_t FindText(std::string_view text, std::string_view separator, std::size_t from) {
    std::size_t match = text.find(separator, from);
    while (match != kNone && !IsAlwaysACharacter(separator[0])) {
        from = base::CharacterBoundary(text, from, match);
        if (from == match)
            break;
        match = text.find(separator, match + 1);
    }
    return match;
}

// The usual separator, one plain byte, is found much faster than any other.
inline std::size_t FindSeparator(std::string_view text, std::string_view separator, std::size_t from) {
    if (separator.size() != 1 || !IsAlwaysACharacter(separator[0]))
        return separator.empty() ? kNone : FindText(text, separator, from);
    const void* const found = std::memchr(text.data() + from, separator[0], text.size() - from);
    return found == nullptr ? kNone : static_cast<std::size_t>(static_cast<const char*>(found) - text.data());
}

bool IsQuote(char byte) {
    return byte == '\'' || byte == '"';
}

std::string_view WithoutQuotes(std::string_view token) {
    if (token.size() > 1 && IsQuote(token.front()))
        token.remove_prefix(1);
    if (token.size() > 1 && IsQuote(token.back()))
        token.remove_suffix(1);
    if (token.size() == 1 && IsQuote(token.front()))
        token.remove_prefix(1);
    return token;
}

}  // namespace

CToken::CToken(CString text) : m_Remainder{std::move(text)}, m_Separator(',') {}
CToken::CToken(const CToken&) = default;
CToken& CToken::operator=(const CToken&) = default;
CToken::~CToken() = default;

// Inline, since calls between the exported operations of a shared library cost more than what these two do.
inline std::size_t CToken::NextSeparator() {
    if (m_next == kNotLookedFor)
        m_next = FindSeparator(m_Remainder.text.View(), m_Separator.View(), m_Remainder.at);
    return m_next;
}

inline void CToken::StepOverToken() {
    m_Remainder.at = m_next + m_Separator.View().size();
    m_next = kNotLookedFor;
    m_LastToken = NextSeparator() == kNone;
}

// The token is made before anything changes, in case there is no memory for it.
CString CToken::GetNextToken() {
    const bool splits = !m_LastToken && NextSeparator() != kNone;
    const std::size_t end = splits ? m_next : m_LastToken ? m_Remainder.text.View().size() : m_Remainder.at;
    const char* const begin = m_Remainder.text.GetString() + m_Remainder.at;
    CString token(WithoutQuotes({begin, end - m_Remainder.at}));
    if (splits)
        StepOverToken();
    else
        m_LastToken = !m_LastToken;
    return token;
}

BOOL CToken::MoreTokens() {
    return m_LastToken || NextSeparator() != kNone;
}

void CToken::SetToken(const CString& separator) {
    m_Separator = separator;
    m_next = kNotLookedFor;
}

}  // namespace kortavin
