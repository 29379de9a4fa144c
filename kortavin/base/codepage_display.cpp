#include <unicode/utf8.h>

#include <algorithm>

#include "kortavin/base/codepage.h"

// Conversions that cannot fail, for messages and terminals.
namespace kortavin::base {
namespace {

void AppendEscaped(std::string& out, std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        out.append({'\\', 'x', kDigits[value >> 4], kDigits[value & 0x0F]});
    }
}

std::size_t Utf8Length(std::string_view rest) {
    int32_t length = 0;
    [[maybe_unused]] UChar32 character;
    const auto size = static_cast<int32_t>(std::min<std::size_t>(rest.size(), U8_MAX_LENGTH));
    U8_NEXT(rest.data(), length, size, character);
    return static_cast<std::size_t>(length);
}

using Convert = bool (*)(std::string&, std::string_view);
using Length = std::size_t (*)(std::string_view);

// The whole text at once where it is valid, which it nearly always is; else character by character.
std::string ForReading(std::string_view text, Convert convert, Length length) {
    std::string out;
    if (convert(out, text))
        return out;
    while (!text.empty()) {
        const std::string_view character = text.substr(0, length(text));
        if (!convert(out, character))
            AppendEscaped(out, character);
        text.remove_prefix(character.size());
    }
    return out;
}

}  // namespace

std::string GbkForDisplay(std::string_view gbk) {
    return ForReading(gbk, AppendGbkAsUtf8, CharacterLength);
}

std::string Utf8ForMessage(std::string_view utf8) {
    return ForReading(utf8, AppendUtf8AsGbk, Utf8Length);
}

}  // namespace kortavin::base
