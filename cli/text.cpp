#include "cli/text.h"

#include <fmt/format.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <optional>

#include "cli/failure.h"
#include "kortavin/base/codepage.h"

namespace kortavin::cli {
namespace {

// Calls `visit` with each code point (negative for a byte that is not UTF-8) and its bytes.
template <class Visit>
void EachCharacter(std::string_view utf8, const Visit& visit) {
    const char* text = utf8.data();
    const auto length = static_cast<int64_t>(utf8.size());
    for (int64_t end = 0; end < length;) {
        const int64_t begin = end;
        UChar32 character = 0;
        U8_NEXT(text, end, length, character);
        visit(character, utf8.substr(static_cast<std::size_t>(begin), static_cast<std::size_t>(end - begin)));
    }
}

bool SpoilsTheLine(UChar32 character) {
    switch (u_charType(character)) {
        case U_CONTROL_CHAR:
        case U_LINE_SEPARATOR:
        case U_PARAGRAPH_SEPARATOR:
            return true;
        default:
            return u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL) != 0;
    }
}

std::string Escaped(UChar32 character) {
    switch (character) {
        case '\t':
            return "\\t";
        case '\n':
            return "\\n";
        case '\r':
            return "\\r";
        default:
            return character < 0x80 ? fmt::format("\\x{:02X}", character)
                                    : fmt::format("\\u{:04X}", character);
    }
}

int CharacterWidth(UChar32 character) {
    switch (u_charType(character)) {
        case U_NON_SPACING_MARK:
        case U_ENCLOSING_MARK:
        case U_FORMAT_CHAR:
            return 0;
        default:
            break;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace

CString ToGbk(std::string_view utf8) {
    std::optional<CString> text = CString::FromUtf8(utf8);
    if (!text)
        throw Failure(fmt::format("not UTF-8: {}", EscapeControls(utf8)));
    return *std::move(text);
}

std::string ExactUtf8(const CString& gbk, std::string_view what) {
    std::optional<std::string> text = gbk.ToUtf8();
    if (!text)
        throw Failure(fmt::format("{} holds bytes that are no GBK text: {}", what, Shown(gbk)));
    return *std::move(text);
}

std::string Shown(const CString& gbk) {
    return EscapeControls(base::GbkForDisplay(gbk.View()));
}

std::string EscapeControls(std::string_view utf8) {
    std::string result;
    EachCharacter(utf8, [&](UChar32 character, std::string_view bytes) {
        if (character < 0) {
            for (const char byte : bytes)
                result += fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
        } else if (SpoilsTheLine(character)) {
            result += Escaped(character);
        } else {
            result += bytes;
        }
    });
    return result;
}

int DisplayWidth(std::string_view utf8) {
    int width = 0;
    EachCharacter(utf8, [&](UChar32 character, std::string_view) { width += CharacterWidth(character); });
    return width;
}

}  // namespace kortavin::cli
