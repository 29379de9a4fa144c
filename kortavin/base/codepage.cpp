#include "kortavin/base/codepage.h"

#include <algorithm>
#include <cstring>

namespace kortavin::base {
namespace {

bool IsAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

// The bytes of a text in order, with single-byte letters folded.
class FoldedBytes {
  public:
    explicit FoldedBytes(std::string_view text) : m_text(text) {}

    unsigned char At(std::size_t index) {  // index by index
        if (index == m_next) {
            const std::size_t length = CharacterLength(m_text.substr(index));
            m_folds = length == 1;
            m_next += length;
        }
        const char byte = m_text[index];
        return static_cast<unsigned char>(m_folds && byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte);
    }

  private:
    std::string_view m_text;
    std::size_t m_next = 0;
    bool m_folds = false;
};

}  // namespace

std::size_t AsciiLength(std::string_view text) {
    std::size_t at = 0;
    for (std::uint64_t eight; text.size() - at >= sizeof eight; at += sizeof eight) {
        std::memcpy(&eight, text.data() + at, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0)
            break;
    }
    while (at < text.size() && IsAscii(text[at]))
        ++at;
    return at;
}

std::size_t CharacterBoundary(std::string_view text, std::size_t from, std::size_t limit) {
    limit = std::min(limit, text.size());
    while (from < limit) {
        if (IsAscii(text[from])) {
            from += AsciiLength(text.substr(from, limit - from));
            continue;
        }
        const std::size_t length = CharacterLength(text.substr(from));
        if (length > limit - from)
            break;
        from += length;
    }
    return from;
}

std::string_view CutAtCharacter(std::string_view text, std::size_t limit) {
    return text.size() <= limit ? text : text.substr(0, CharacterBoundary(text, 0, limit));
}

int CompareNoCase(std::string_view a, std::string_view b) {
    FoldedBytes foldedA(a);
    FoldedBytes foldedB(b);
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < common; ++i)
        if (const int difference = foldedA.At(i) - foldedB.At(i); difference != 0)
            return difference;
    return a.size() < b.size() ? -1 : a.size() > b.size();
}

}  // namespace kortavin::base
