#include "kortavin/base/icu.h"

#include <array>
#include <new>

namespace kortavin::base::icu {
namespace {

constexpr std::size_t kPieceSize = 1024;

// ICU's own stopping callback lets default-ignorable characters without a code (a soft hyphen, a zero-width
// space) vanish silently; leaving the error as it is reports them too.
void LeaveError(const void*, UConverterFromUnicodeArgs*, const UChar*, int32_t, UChar32,
                UConverterCallbackReason, UErrorCode*) {}

}  // namespace

Converter OpenConverter(const char* name) {
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(name, &error));
    if (error == U_MEMORY_ALLOCATION_ERROR)
        throw std::bad_alloc();
    if (U_FAILURE(error))
        return nullptr;
    ucnv_setFromUCallBack(converter.get(), LeaveError, nullptr, nullptr, nullptr, &error);
    ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    return converter;
}

std::string_view CanonicalName(const UConverter& converter) {
    UErrorCode error = U_ZERO_ERROR;
    const char* name = ucnv_getName(&converter, &error);
    return U_SUCCESS(error) ? std::string_view(name) : std::string_view();
}

bool AppendAsUtf16(std::u16string& out, UConverter& from, std::string_view text) {
    const std::size_t before = out.size();
    std::array<char16_t, kPieceSize> piece;
    const char* at = text.data();
    const char* const end = at + text.size();
    ucnv_resetToUnicode(&from);
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        char16_t* to = piece.data();
        ucnv_toUnicode(&from, &to, piece.data() + piece.size(), &at, end, nullptr, true, &error);
        out.append(piece.data(), to);
    }
    if (U_FAILURE(error))
        out.resize(before);
    return U_SUCCESS(error);
}

bool AppendFromUtf16(std::string& out, UConverter& to, std::u16string_view text) {
    const std::size_t before = out.size();
    std::array<char, kPieceSize> piece;
    const char16_t* at = text.data();
    const char16_t* const end = at + text.size();
    ucnv_resetFromUnicode(&to);
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
        error = U_ZERO_ERROR;
        char* target = piece.data();
        ucnv_fromUnicode(&to, &target, piece.data() + piece.size(), &at, end, nullptr, true, &error);
        out.append(piece.data(), target);
    }
    if (U_FAILURE(error))
        out.resize(before);
    return U_SUCCESS(error);
}

}  // namespace kortavin::base::icu
