#pragma once

#include <array>
#include <atomic>
#include <bit>
#include <cstdint>
#include <optional>
#include <string_view>

// GB18030 as tables. They are filled piece by piece from ICU's converter when a character of the piece is
// first met, and are shared by all threads: an entry is written once, with its only value, so reading it
// needs no order.
namespace kortavin::base::gb18030 {

// Characters of the basic plane by the form they have in UTF-8: two-byte forms stand behind all three-byte
// ones, so that an overlong three-byte form finds nothing.
inline constexpr std::size_t kTwoByteForms = 0x10000;
inline constexpr std::size_t kForms = kTwoByteForms + 0x800;

// A double-byte code as it lies in memory; 0 where there is none, or none was looked up yet.
using ShortCode = std::uint16_t;
using ShortCodes = std::array<std::atomic<ShortCode>, kForms>;

// The UTF-8 form of a double-byte code: up to three bytes as they lie in memory, then their count. 0 as
// above. The index is the code without its highest bit.
using Utf8Form = std::uint32_t;
using Utf8Forms = std::array<std::atomic<Utf8Form>, 0x10000>;

const ShortCodes& GetShortCodes();
const Utf8Forms& GetUtf8Forms();

inline std::size_t LengthOf(Utf8Form form) {
    return std::bit_cast<std::array<std::uint8_t, 4>>(form)[3];
}

// Writes the code of a character (never a surrogate) to `to`, which has room for four bytes; answers its
// length.
std::size_t Encode(char32_t character, char* to);

struct Decoded {
    char32_t character;
    std::size_t length;
};
// The character at the beginning of `rest`, which is not empty. The single byte 80 is the euro sign.
std::optional<Decoded> Decode(std::string_view rest);

}  // namespace kortavin::base::gb18030
