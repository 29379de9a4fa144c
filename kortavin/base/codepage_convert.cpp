#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "kortavin/base/codepage.h"
#include "kortavin/base/gb18030.h"

// The two hot conversions. A text goes through a piece of the stack, so that the target grows by what it
// needs.
namespace kortavin::base {
namespace {

using gb18030::ShortCode;
using gb18030::Utf8Form;
using Bytes = const std::uint8_t*;

constexpr std::ptrdiff_t kPieceSize = 1024;
// A piece may end a little late (a character, eight ASCII bytes), and one byte makes three at most (the euro
// sign).
constexpr std::size_t kRoom = (kPieceSize + 8) * 3;

// What is left of the input. A piece converts the characters that begin before `stop`.
struct Input {
    Bytes at;
    Bytes stop;
    Bytes end;

    bool Has(std::ptrdiff_t count) const { return end - at >= count; }
};

template <class T>
T Load(Bytes from) {
    T value;
    std::memcpy(&value, from, sizeof value);
    return value;
}

template <class T>
char* Store(T value, char* to) {
    std::memcpy(to, &value, sizeof value);
    return to + sizeof value;
}

char* CopyAscii(Input& in, char* to) {
    while (in.at < in.stop && in.Has(8)) {
        const auto eight = Load<std::uint64_t>(in.at);
        if ((eight & 0x8080808080808080U) != 0)
            break;
        to = Store(eight, to);
        in.at += 8;
    }
    while (in.at < in.stop && *in.at < 0x80)
        *to++ = static_cast<char>(*in.at++);
    return to;
}

// The index of a three-byte form, whose marker bits are known to be right.
std::size_t ThreeByteForm(Bytes at) {
    constexpr std::size_t kMarkers = (std::size_t{0xE0} << 12) + (std::size_t{0x80} << 6) + 0x80;
    return (std::size_t{at[0]} << 12) + (std::size_t{at[1]} << 6) + at[2] - kMarkers;
}

// Two neighbouring characters of three bytes each, the common case of Chinese text, while it lasts.
char* PairsToGbk(Input& in, char* to, const gb18030::ShortCodes& codes) {
    constexpr auto kMask =
        std::bit_cast<std::uint64_t>(std::array<std::uint8_t, 8>{0xF0, 0xC0, 0xC0, 0xF0, 0xC0, 0xC0, 0, 0});
    constexpr auto kMarkers =
        std::bit_cast<std::uint64_t>(std::array<std::uint8_t, 8>{0xE0, 0x80, 0x80, 0xE0, 0x80, 0x80, 0, 0});
    if (!in.Has(8))
        return to;
    const Bytes stop = std::min(in.stop, in.end - 7);
    Bytes at = in.at;
    while (at < stop && (Load<std::uint64_t>(at) & kMask) == kMarkers) {
        const ShortCode first = codes[ThreeByteForm(at)].load(std::memory_order_relaxed);
        const ShortCode second = codes[ThreeByteForm(at + 3)].load(std::memory_order_relaxed);
        if (first == 0 || second == 0)
            break;
        to = Store(second, Store(first, to));
        at += 6;
    }
    in.at = at;
    return to;
}

// The last ones of a run, which no pair reaches.
char* SinglesToGbk(Input& in, char* to, const gb18030::ShortCodes& codes) {
    Bytes at = in.at;
    while (at < in.stop && in.end - at >= 3 && (at[0] & 0xF0) == 0xE0 && (at[1] & 0xC0) == 0x80 &&
           (at[2] & 0xC0) == 0x80) {
        const ShortCode code = codes[ThreeByteForm(at)].load(std::memory_order_relaxed);
        if (code == 0)
            break;
        to = Store(code, to);
        at += 3;
    }
    in.at = at;
    return to;
}

// Any character, strictly; null when it is not valid.
char* CharacterToGbk(Input& in, char* to) {
    std::ptrdiff_t length = 0;
    UChar32 character;
    U8_NEXT(in.at, length, in.end - in.at, character);
    if (character < 0)
        return nullptr;
    in.at += length;
    return to + gb18030::Encode(static_cast<char32_t>(character), to);
}

char* PieceToGbk(Input& in, char* to) {
    const gb18030::ShortCodes& codes = gb18030::GetShortCodes();
    while (in.at < in.stop && to != nullptr) {
        to = SinglesToGbk(in, PairsToGbk(in, to, codes), codes);
        if (in.at < in.stop)
            to = *in.at < 0x80 ? CopyAscii(in, to) : CharacterToGbk(in, to);
    }
    return to;
}

char* DoubleBytesToUtf8(Input& in, char* to) {
    const gb18030::Utf8Forms& forms = gb18030::GetUtf8Forms();
    const Bytes stop = std::min(in.stop, in.end - 1);
    Bytes at = in.at;
    while (at < stop) {
        const Utf8Form form = forms[std::size_t{at[0]} << 8 | at[1]].load(std::memory_order_relaxed);
        if (form == 0)
            break;
        Store(form, to);
        to += gb18030::LengthOf(form);
        at += 2;
    }
    in.at = at;
    return to;
}

char* CharacterToUtf8(Input& in, char* to) {
    const std::string_view rest(reinterpret_cast<const char*>(in.at),
                                static_cast<std::size_t>(in.end - in.at));
    const auto decoded = gb18030::Decode(rest);
    if (!decoded)
        return nullptr;
    in.at += decoded->length;
    std::size_t length = 0;
    U8_APPEND_UNSAFE(to, length, decoded->character);
    return to + length;
}

char* PieceToUtf8(Input& in, char* to) {
    while (in.at < in.stop && to != nullptr) {
        to = DoubleBytesToUtf8(in, to);
        if (in.at < in.stop)
            to = *in.at < 0x80 ? CopyAscii(in, to) : CharacterToUtf8(in, to);
    }
    return to;
}

template <class Piece>
bool Append(std::string& out, std::string_view text, Piece convert) {
    const std::size_t ascii = AsciiLength(text);
    const std::size_t before = out.size();
    if (ascii > 0)
        out.append(text.substr(0, ascii));
    const auto* data = reinterpret_cast<Bytes>(text.data());
    Input in{data + ascii, nullptr, data + text.size()};
    std::array<char, kRoom> piece;
    while (in.at < in.end) {
        in.stop = in.at + std::min(kPieceSize, in.end - in.at);
        char* const converted = convert(in, piece.data());
        if (converted == nullptr) {
            out.resize(before);
            return false;
        }
        out.append(piece.data(), converted);
    }
    return true;
}

}  // namespace

bool AppendUtf8AsGbk(std::string& out, std::string_view utf8) {
    return Append(out, utf8, PieceToGbk);
}

bool AppendGbkAsUtf8(std::string& out, std::string_view gbk) {
    return Append(out, gbk, PieceToUtf8);
}

}  // namespace kortavin::base
