#pragma once

#include <unicode/ucnv.h>

#include <memory>
#include <string>
#include <string_view>

// ICU's converters, strict: what is not valid, or has no code on the other side, ends a conversion.
namespace kortavin::base::icu {

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

// Null when ICU knows no such character set; std::bad_alloc when memory is short.
Converter OpenConverter(const char* name);
// ICU's own name of the character set, the same for all its aliases.
std::string_view CanonicalName(const UConverter& converter);

// Append the converted text; false, with `out` as it was, when the input cannot be converted as a whole.
[[nodiscard]] bool AppendAsUtf16(std::u16string& out, UConverter& from, std::string_view text);
[[nodiscard]] bool AppendFromUtf16(std::string& out, UConverter& to, std::u16string_view text);

}  // namespace kortavin::base::icu
