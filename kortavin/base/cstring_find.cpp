#include <algorithm>

#include "kortavin/base/codepage.h"
#include "kortavin/base/cstring.h"

namespace kortavin {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// Bytes that GB18030 never uses behind a lead byte: where one stands, a character begins.
bool IsNeverTrail(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x30 || (byte > 0x39 && byte < 0x40) || byte == 0x7F;
}

// The first match at or behind `at`, a character boundary, that begins at a character.
std::size_t FindAtCharacter(std::string_view text, std::string_view what, std::size_t at) {
    std::size_t match = text.find(what, at);
    while (match != kNone && !IsNeverTrail(what[0])) {
        at = base::CharacterBoundary(text, at, match);
        if (at == match)
            break;
        match = text.find(what, match + 1);
    }
    return match;
}

int AsIndex(std::size_t position) {
    return position == kNone ? -1 : static_cast<int>(position);
}

std::size_t Start(int start, std::size_t length) {
    return start < 0 ? 0 : std::min(static_cast<std::size_t>(start), length);
}

bool HoldsCharacter(std::string_view characters, std::string_view character) {
    while (!characters.empty()) {
        const std::size_t length = base::CharacterLength(characters);
        if (characters.substr(0, length) == character)
            return true;
        characters.remove_prefix(length);
    }
    return false;
}

}  // namespace

int CString::Find(char character, int start) const {
    return AsIndex(FindAtCharacter(m_text, {&character, 1}, Start(start, m_text.size())));
}

int CString::Find(const char* text, int start) const {
    const std::size_t at = Start(start, m_text.size());
    if (text == nullptr || *text == '\0')
        return AsIndex(at);
    return AsIndex(FindAtCharacter(m_text, text, at));
}

int CString::ReverseFind(char character) const {
    if (IsNeverTrail(character))
        return AsIndex(m_text.rfind(character));
    std::size_t last = kNone;
    std::size_t match = FindAtCharacter(m_text, {&character, 1}, 0);
    while (match != kNone) {
        last = match;
        const std::size_t next = match + base::CharacterLength(View().substr(match));
        match = FindAtCharacter(m_text, {&character, 1}, next);
    }
    return AsIndex(last);
}

int CString::FindOneOf(const char* characters) const {
    const std::string_view set = characters != nullptr ? characters : "";
    std::string_view rest = m_text;
    while (!rest.empty()) {
        const std::string_view character = rest.substr(0, base::CharacterLength(rest));
        if (HoldsCharacter(set, character))
            return AsIndex(m_text.size() - rest.size());
        rest.remove_prefix(character.size());
    }
    return -1;
}

}  // namespace kortavin
