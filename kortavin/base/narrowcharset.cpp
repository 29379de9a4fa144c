#include <langinfo.h>
#include <locale.h>
#include <unicode/ucnv_cb.h>

#include <cstdlib>

#include "kortavin/base/codepage.h"
#include "kortavin/base/icu.h"

namespace kortavin::base {
namespace {

enum class Kind { Utf8, Gbk, Gb2312, Other };

Kind KindOf(std::string_view canonicalName) {
    if (canonicalName == "UTF-8")
        return Kind::Utf8;
    if (canonicalName == "gb18030" || canonicalName == "windows-936-2000" ||
        canonicalName == "ibm-1386_P100-2001")
        return Kind::Gbk;
    if (canonicalName == "ibm-1383_P110-1999")
        return Kind::Gb2312;
    return Kind::Other;
}

// ICU reads two of GB2312's punctuation marks as other characters than GBK has at the same codes, so its
// bytes are taken as they are; only what lies outside its area has no code there.
bool FitsGb2312(std::string_view gbk) {
    while (true) {
        gbk.remove_prefix(AsciiLength(gbk));
        if (gbk.empty())
            return true;
        const auto lead = static_cast<unsigned char>(gbk[0]);
        if (CharacterLength(gbk) != 2 || lead < 0xA1 || lead > 0xF7 ||
            static_cast<unsigned char>(gbk[1]) < 0xA1)
            return false;
        gbk.remove_prefix(2);
    }
}

// Puts what a conversion appended in the place of the former content, keeping the string's memory.
template <class Append>
bool Replace(std::string& target, Append append) {
    const std::size_t before = target.size();
    if (!append(target))
        return false;
    if (before > 0)
        target.erase(0, before);
    return true;
}

bool AssignAscii(std::string& target, std::string_view text) {
    const bool ascii = AsciiLength(text) == text.size();
    if (ascii)
        target.assign(text);
    return ascii;
}

// ICU speaks UTF-16 only; both steps between it and GBK are ours.
bool AppendUtf16AsGbk(std::string& gbk, std::u16string_view text, UConverter& utf8) {
    std::string between;
    return icu::AppendFromUtf16(between, utf8, text) && AppendUtf8AsGbk(gbk, between);
}

bool AppendGbkAsUtf16(std::u16string& text, std::string_view gbk, UConverter& utf8) {
    std::string between;
    return AppendGbkAsUtf8(between, gbk) && icu::AppendAsUtf16(text, utf8, between);
}

struct LocaleCloser {
    void operator()(locale_t locale) const { freelocale(locale); }
};
using Locale = std::unique_ptr<std::remove_pointer_t<locale_t>, LocaleCloser>;

// "gbk" of "zh_CN.gbk@modifier", for a locale that is named but not installed.
std::string CharsetOfVariables() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value == nullptr || *value == '\0')
            continue;
        const std::string_view name(value);
        const std::size_t dot = name.find('.');
        if (dot == std::string_view::npos)
            return {};
        return std::string(name.substr(dot + 1, name.find('@', dot) - dot - 1));
    }
    return {};
}

std::string CharsetOfEnvironment() {
    const Locale locale(newlocale(LC_CTYPE_MASK, "", nullptr));
    return locale ? nl_langinfo_l(CODESET, locale.get()) : CharsetOfVariables();
}

}  // namespace

struct NarrowCharset::Converter {
    std::string name;
    Kind kind = Kind::Utf8;
    icu::Converter converter;  // both only for Kind::Other
    icu::Converter utf8;
};

NarrowCharset::NarrowCharset(std::unique_ptr<Converter> converter) : m_converter(std::move(converter)) {}
NarrowCharset::NarrowCharset(NarrowCharset&&) noexcept = default;
NarrowCharset& NarrowCharset::operator=(NarrowCharset&&) noexcept = default;
NarrowCharset::~NarrowCharset() = default;

std::optional<NarrowCharset> NarrowCharset::ByName(const std::string& name) {
    if (name.empty())
        return std::nullopt;
    icu::Converter converter = icu::OpenConverter(name.c_str());
    if (!converter)
        return std::nullopt;
    const Kind kind = KindOf(icu::CanonicalName(*converter));
    if (kind != Kind::Other)
        converter = nullptr;
    icu::Converter utf8 = converter ? icu::OpenConverter("UTF-8") : nullptr;
    return NarrowCharset(
        std::make_unique<Converter>(Converter{name, kind, std::move(converter), std::move(utf8)}));
}

NarrowCharset NarrowCharset::Utf8() {
    return NarrowCharset(std::make_unique<Converter>(Converter{"UTF-8", Kind::Utf8, nullptr, nullptr}));
}

NarrowCharset NarrowCharset::OfEnvironment() {
    std::optional<NarrowCharset> charset = ByName(CharsetOfEnvironment());
    if (!charset)
        return Utf8();
    const icu::Converter& converter = charset->m_converter->converter;
    return converter && icu::CanonicalName(*converter) == "US-ASCII" ? Utf8() : std::move(*charset);
}

const std::string& NarrowCharset::GetName() const {
    return m_converter->name;
}

bool NarrowCharset::ToGbk(std::string& gbk, std::string_view narrow) const {
    switch (m_converter->kind) {
        case Kind::Utf8:
            return AssignAscii(gbk, narrow) ||
                   Replace(gbk, [&](std::string& out) { return AppendUtf8AsGbk(out, narrow); });
        case Kind::Gbk:
        case Kind::Gb2312:
            gbk.assign(narrow);
            return true;
        case Kind::Other:
            break;
    }
    std::u16string text;
    return icu::AppendAsUtf16(text, *m_converter->converter, narrow) &&
           Replace(gbk, [&](std::string& out) { return AppendUtf16AsGbk(out, text, *m_converter->utf8); });
}

bool NarrowCharset::FromGbk(std::string& narrow, std::string_view gbk) const {
    switch (m_converter->kind) {
        case Kind::Utf8:
            return AssignAscii(narrow, gbk) ||
                   Replace(narrow, [&](std::string& out) { return AppendGbkAsUtf8(out, gbk); });
        case Kind::Gb2312:
            if (!FitsGb2312(gbk))
                return false;
            [[fallthrough]];
        case Kind::Gbk:
            narrow.assign(gbk);
            return true;
        case Kind::Other:
            break;
    }
    std::u16string text;
    return AppendGbkAsUtf16(text, gbk, *m_converter->utf8) && Replace(narrow, [&](std::string& out) {
               return icu::AppendFromUtf16(out, *m_converter->converter, text);
           });
}

std::string NarrowCharset::ToGbkForMessage(std::string_view narrow) const {
    if (m_converter->kind == Kind::Utf8)
        return Utf8ForMessage(narrow);
    std::string gbk;
    if (ToGbk(gbk, narrow))
        return gbk;
    UConverter* const converter = m_converter->converter.get();
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_ESCAPE, UCNV_ESCAPE_C, nullptr, nullptr, &error);
    std::u16string text;
    if (!icu::AppendAsUtf16(text, *converter, narrow) || !AppendUtf16AsGbk(gbk, text, *m_converter->utf8))
        gbk = Utf8ForMessage(narrow);
    ucnv_setToUCallBack(converter, UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    return gbk;
}

}  // namespace kortavin::base
