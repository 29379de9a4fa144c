#include "kortavin/base/gb18030.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <stdexcept>
#include <string>

#include "kortavin/base/codepage.h"
#include "kortavin/base/icu.h"

namespace kortavin::base::gb18030 {
namespace {

constexpr std::size_t kPageSize = 256;
constexpr std::size_t kTrails = 0xBE;  // 40..7E and 80..FE
// Four-byte codes are counted: 10 times 126 to each pair of leading bytes, the basic plane first.
constexpr std::uint32_t kRowSize = 1260;
constexpr std::uint32_t kBasicPlaneCodes = 39420;
constexpr std::uint32_t kRows = kBasicPlaneCodes / kRowSize + 1;
constexpr std::uint32_t kFirstSupplementary = 189000;
constexpr std::uint32_t kSupplementaryCodes = 0x100000;
constexpr char32_t kEuro = 0x20AC;

// Zero pages until they are used, and never destroyed: a host's static objects may convert at exit.
constinit ShortCodes shortCodes{};
constinit Utf8Forms utf8Forms{};
constinit std::array<std::atomic<std::uint32_t>, 0x10000> longCodes{};
constinit std::array<std::atomic<std::uint16_t>, kRows * kRowSize> longCharacters{};
constinit std::array<std::atomic<bool>, 0x10000 / kPageSize> filledPages{};
constinit std::array<std::atomic<bool>, 0x100> filledLeads{};
constinit std::array<std::atomic<bool>, kRows> filledRows{};
constinit std::mutex filling;

template <class Fill>
void FillOnce(std::atomic<bool>& filled, Fill fill) {
    if (filled.load(std::memory_order_acquire))
        return;
    const std::lock_guard lock(filling);
    if (filled.load(std::memory_order_relaxed))
        return;
    fill();
    filled.store(true, std::memory_order_release);
}

icu::Converter OpenGb18030() {
    icu::Converter converter = icu::OpenConverter("gb18030");
    if (!converter)
        throw std::runtime_error("ICU offers no converter for gb18030");
    return converter;
}

std::string FromIcu(std::u16string_view characters) {
    std::string codes;
    if (!icu::AppendFromUtf16(codes, *OpenGb18030(), characters))
        throw std::runtime_error("ICU's gb18030 converter lacks a character");
    return codes;
}

std::u16string ToUtf16(std::string_view codes) {
    std::u16string characters;
    if (!icu::AppendAsUtf16(characters, *OpenGb18030(), codes))
        throw std::runtime_error("ICU's gb18030 converter lacks a code");
    return characters;
}

std::size_t FormOf(char32_t character) {
    return character < 0x800 ? kTwoByteForms + character : character;
}

void FillPage(std::size_t page) {
    std::u16string characters(kPageSize, u'\0');
    for (std::size_t i = 0; i < kPageSize; ++i)
        characters[i] = static_cast<char16_t>(page * kPageSize + i);
    const std::string codes = FromIcu(characters);
    std::string_view rest = codes;
    for (const char16_t character : characters) {
        const std::size_t length = CharacterLength(rest);
        if (length == 2) {
            ShortCode code;
            std::memcpy(&code, rest.data(), sizeof code);
            shortCodes[FormOf(character)].store(code, std::memory_order_relaxed);
        } else if (length == 4) {
            std::uint32_t code;
            std::memcpy(&code, rest.data(), sizeof code);
            longCodes[character].store(code, std::memory_order_relaxed);
        }
        rest.remove_prefix(length);
    }
}

Utf8Form Utf8FormOf(char16_t character) {
    std::array<std::uint8_t, 4> form{};
    std::size_t length = 0;
    U8_APPEND_UNSAFE(form, length, character);
    form[3] = static_cast<std::uint8_t>(length);
    return std::bit_cast<Utf8Form>(form);
}

void FillLead(std::size_t lead) {
    std::string codes;
    for (std::size_t trail = 0x40; trail <= 0xFE; ++trail)
        if (trail != 0x7F)
            codes.append({static_cast<char>(lead), static_cast<char>(trail)});
    const std::u16string characters = ToUtf16(codes);
    for (std::size_t i = 0; i < kTrails; ++i) {
        const auto trail = static_cast<std::uint8_t>(codes[2 * i + 1]);
        utf8Forms[lead << 8 | trail].store(Utf8FormOf(characters[i]), std::memory_order_relaxed);
    }
}

void WriteLong(std::uint32_t number, char* to) {
    to[3] = static_cast<char>(0x30 + number % 10);
    to[2] = static_cast<char>(0x81 + number / 10 % 126);
    to[1] = static_cast<char>(0x30 + number / kRowSize % 10);
    to[0] = static_cast<char>(0x81 + number / kRowSize / 10);
}

std::uint32_t NumberOf(std::string_view code) {
    const auto digit = [&](std::size_t i, std::uint32_t first) {
        return static_cast<std::uint8_t>(code[i]) - first;
    };
    return (digit(0, 0x81) * 10 + digit(1, 0x30)) * kRowSize + digit(2, 0x81) * 10 + digit(3, 0x30);
}

void FillRow(std::uint32_t row) {
    const std::uint32_t first = row * kRowSize;
    const std::uint32_t count = std::min(kRowSize, kBasicPlaneCodes - first);
    std::string codes(std::size_t{count} * 4, '\0');
    for (std::uint32_t i = 0; i < count; ++i)
        WriteLong(first + i, codes.data() + std::size_t{i} * 4);
    const std::u16string characters = ToUtf16(codes);
    for (std::uint32_t i = 0; i < count; ++i)
        longCharacters[first + i].store(characters[i], std::memory_order_relaxed);
}

std::optional<Decoded> DecodeLong(std::string_view code) {
    const std::uint32_t number = NumberOf(code);
    if (number - kFirstSupplementary < kSupplementaryCodes)
        return Decoded{0x10000 + (number - kFirstSupplementary), 4};
    if (number >= kBasicPlaneCodes)
        return std::nullopt;
    const std::uint32_t row = number / kRowSize;
    FillOnce(filledRows[row], [&] { FillRow(row); });
    return Decoded{longCharacters[number].load(std::memory_order_relaxed), 4};
}

Decoded DecodeShort(std::uint8_t lead, std::uint8_t trail) {
    FillOnce(filledLeads[lead], [&] { FillLead(lead); });
    const Utf8Form form = utf8Forms[std::size_t{lead} << 8 | trail].load(std::memory_order_relaxed);
    const auto bytes = std::bit_cast<std::array<std::uint8_t, 4>>(form);
    char32_t character = 0;
    std::size_t length = 0;
    U8_NEXT_UNSAFE(bytes, length, character);
    return {character, 2};
}

}  // namespace

const ShortCodes& GetShortCodes() {
    return shortCodes;
}

const Utf8Forms& GetUtf8Forms() {
    return utf8Forms;
}

std::size_t Encode(char32_t character, char* to) {
    if (character < 0x80) {
        *to = static_cast<char>(character);
        return 1;
    }
    if (character > 0xFFFF) {
        WriteLong(kFirstSupplementary + (character - 0x10000), to);
        return 4;
    }
    FillOnce(filledPages[character / kPageSize], [&] { FillPage(character / kPageSize); });
    if (const ShortCode code = shortCodes[FormOf(character)].load(std::memory_order_relaxed); code != 0) {
        std::memcpy(to, &code, sizeof code);
        return sizeof code;
    }
    const std::uint32_t code = longCodes[character].load(std::memory_order_relaxed);
    std::memcpy(to, &code, sizeof code);
    return sizeof code;
}

std::optional<Decoded> Decode(std::string_view rest) {
    const auto first = static_cast<std::uint8_t>(rest[0]);
    if (first < 0x80)
        return Decoded{first, 1};
    switch (CharacterLength(rest)) {
        case 4:
            return DecodeLong(rest.substr(0, 4));
        case 2:
            return DecodeShort(first, static_cast<std::uint8_t>(rest[1]));
        default:
            if (first == 0x80)
                return Decoded{kEuro, 1};
            return std::nullopt;
    }
}

}  // namespace kortavin::base::gb18030
