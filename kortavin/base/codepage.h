#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kortavin/base/export.h"

// Conversions at the library's borders, and the few rules of GBK text that everything shares. GBK stands for
// GB18030 here: GBK's bytes for GBK's characters and four-byte codes for the rest of Unicode. The single byte
// 80 is read as the euro sign.
namespace kortavin::base {

// How many bytes the character at the beginning of `rest` takes: 1, 2 or 4; 0 for an empty text. A lead byte
// without a proper trail is one byte.
inline std::size_t CharacterLength(std::string_view rest) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(rest[i]); };
    const auto isLead = [&](std::size_t i) { return byte(i) >= 0x81 && byte(i) <= 0xFE; };
    const auto isDigit = [&](std::size_t i) { return byte(i) >= 0x30 && byte(i) <= 0x39; };
    if (rest.size() < 2 || !isLead(0))
        return rest.empty() ? 0 : 1;
    if (byte(1) >= 0x40 && byte(1) != 0x7F && byte(1) != 0xFF)
        return 2;
    return rest.size() >= 4 && isDigit(1) && isLead(2) && isDigit(3) ? 4 : 1;
}

// How many bytes at the beginning of `text` are ASCII.
KORTAVIN_API std::size_t AsciiLength(std::string_view text);

// The last character boundary of `text` that is not behind `limit`, stepping from the boundary `from`.
KORTAVIN_API std::size_t CharacterBoundary(std::string_view text, std::size_t from, std::size_t limit);

// The longest beginning of `text` of at most `limit` bytes that does not split a character.
KORTAVIN_API std::string_view CutAtCharacter(std::string_view text, std::size_t limit);

// <0, 0, >0 in byte order after folding single-byte ASCII letters.
KORTAVIN_API int CompareNoCase(std::string_view a, std::string_view b);

// Append the converted text; false when the input is not valid, with `out` as it was. The input must not lie
// in `out`. Safe in any number of threads at once.
[[nodiscard]] KORTAVIN_API bool AppendUtf8AsGbk(std::string& out, std::string_view utf8);
[[nodiscard]] KORTAVIN_API bool AppendGbkAsUtf8(std::string& out, std::string_view gbk);

// Never fails: what is not valid GBK (or UTF-8) shows as \xNN. For messages and terminals only.
KORTAVIN_API std::string GbkForDisplay(std::string_view gbk);
KORTAVIN_API std::string Utf8ForMessage(std::string_view utf8);  // to GBK

// One side of a border whose other side is not Unicode by rule: the narrow character set of an ODBC
// connection. One object serves one thread at a time.
class KORTAVIN_API NarrowCharset {
  public:
    // By its IANA or ICU name, in any letter case. Nothing when no such character set is known.
    static std::optional<NarrowCharset> ByName(const std::string& name);
    static NarrowCharset Utf8();
    // The character set of the process's environment (its locale variables); UTF-8 where that says ASCII
    // only.
    static NarrowCharset OfEnvironment();

    NarrowCharset(NarrowCharset&&) noexcept;
    NarrowCharset& operator=(NarrowCharset&&) noexcept;
    ~NarrowCharset();

    const std::string& GetName() const;

    // Replace `gbk` (`narrow`) by the converted text; false, with the target unchanged, when a character is
    // not valid or the other side has no code for it. GBK and GB18030 pass unchanged, and so does what fits
    // in GB2312. The input must not lie in the target.
    [[nodiscard]] bool ToGbk(std::string& gbk, std::string_view narrow) const;
    [[nodiscard]] bool FromGbk(std::string& narrow, std::string_view gbk) const;
    // As Utf8ForMessage: never fails.
    std::string ToGbkForMessage(std::string_view narrow) const;

  private:
    struct Converter;
    explicit NarrowCharset(std::unique_ptr<Converter> converter);

    std::unique_ptr<Converter> m_converter;
};

}  // namespace kortavin::base
