#include "kortavin/base/cstring.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <utility>

#include "kortavin/base/codepage.h"

namespace kortavin {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view ViewOf(const char* text) {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

std::size_t Clamp(int value, std::size_t most) {
    return value < 0 ? 0 : std::min(static_cast<std::size_t>(value), most);
}

std::size_t CheckedLength(std::size_t length) {
    if (length > INT_MAX)
        throw std::length_error("CString: longer than an int can tell");
    return length;
}

std::string_view Checked(std::string_view text) {
    CheckedLength(text.size());
    return text;
}

CString Joined(std::string_view a, std::string_view b) {
    std::string text;
    text.reserve(CheckedLength(a.size() + b.size()));
    text.append(a).append(b);
    return CString(std::move(text));
}

// Applies `fold` to single-byte letters from `first` to `last`.
void FoldLetters(std::string& text, char first, char last, int distance) {
    std::size_t at = 0;
    while (at < text.size()) {
        const std::string_view rest = std::string_view(text).substr(at);
        const std::size_t ascii = base::AsciiLength(rest);
        for (const std::size_t end = at + ascii; at < end; ++at)
            if (text[at] >= first && text[at] <= last)
                text[at] = static_cast<char>(text[at] + distance);
        at += base::CharacterLength(rest.substr(ascii));
    }
}

}  // namespace

CString::CString(const char* text) : m_text(Checked(ViewOf(text))) {}

CString::CString(const char* text, int length)
    : m_text(text != nullptr ? text : "", text ? Clamp(length, INT_MAX) : 0) {}

CString::CString(std::string_view text) : m_text(Checked(text)) {}

CString::CString(std::string&& text) : m_text((CheckedLength(text.size()), std::move(text))) {}

CString::CString(char character, int repeat) : m_text(Clamp(repeat, INT_MAX), character) {}

CString& CString::operator=(const char* text) {
    m_text.assign(Checked(ViewOf(text)));
    return *this;
}

std::optional<CString> CString::FromUtf8(std::string_view utf8) {
    std::string gbk;
    if (!base::AppendUtf8AsGbk(gbk, utf8))
        return std::nullopt;
    return CString(std::move(gbk));
}

std::optional<std::string> CString::ToUtf8() const {
    std::string utf8;
    if (!base::AppendGbkAsUtf8(utf8, m_text))
        return std::nullopt;
    return utf8;
}

char CString::GetAt(int index) const {
    return index >= 0 && index < GetLength() ? m_text[static_cast<std::size_t>(index)] : '\0';
}

void CString::SetAt(int index, char character) {
    if (index >= 0 && index < GetLength())
        m_text[static_cast<std::size_t>(index)] = character;
}

char* CString::GetBuffer(int minimum) {
    m_text.resize(std::max(m_text.size(), Clamp(minimum, INT_MAX)));
    return m_text.data();
}

char* CString::GetBufferSetLength(int length) {
    m_text.resize(Clamp(length, INT_MAX));
    return m_text.data();
}

void CString::ReleaseBuffer(int length) {
    m_text.resize(length < 0 ? std::min(m_text.find('\0'), m_text.size()) : Clamp(length, m_text.size()));
}

CString& CString::operator+=(const CString& text) {
    return Append(text.m_text);
}

CString& CString::operator+=(const char* text) {
    return Append(ViewOf(text));
}

CString& CString::operator+=(char character) {
    return Append({&character, 1});
}

CString& CString::Append(std::string_view text) {
    CheckedLength(m_text.size() + text.size());
    m_text.append(text);
    return *this;
}

int CString::Compare(const char* other) const {
    return View().compare(ViewOf(other));
}

int CString::CompareNoCase(const char* other) const {
    return base::CompareNoCase(m_text, ViewOf(other));
}

CString CString::Mid(int first) const {
    return CString(View().substr(Clamp(first, m_text.size())));
}

CString CString::Mid(int first, int count) const {
    return CString(View().substr(Clamp(first, m_text.size()), Clamp(count, INT_MAX)));
}

CString CString::Left(int count) const {
    return CString(View().substr(0, Clamp(count, INT_MAX)));
}

CString CString::Right(int count) const {
    return CString(View().substr(m_text.size() - Clamp(count, m_text.size())));
}

CString& CString::MakeUpper() {
    FoldLetters(m_text, 'a', 'z', 'A' - 'a');
    return *this;
}

CString& CString::MakeLower() {
    FoldLetters(m_text, 'A', 'Z', 'a' - 'A');
    return *this;
}

CString& CString::TrimLeft() {
    m_text.erase(0, m_text.find_first_not_of(kBlanks));
    return *this;
}

// No blank is ever a trail byte, so going backwards byte by byte is right.
CString& CString::TrimRight() {
    m_text.erase(m_text.find_last_not_of(kBlanks) + 1);
    return *this;
}

void CString::Format(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

// The old content stays until the new one is there: an argument may point into it.
void CString::FormatV(const char* format, va_list arguments) {
    std::array<char, 512> shortText;
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(shortText.data(), shortText.size(), format ? format : "", arguments);
    std::string text;
    if (length >= 0 && static_cast<std::size_t>(length) < shortText.size()) {
        text.assign(shortText.data(), static_cast<std::size_t>(length));
    } else if (length >= 0) {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, again);
    }
    va_end(again);
    if (length < 0)
        throw std::length_error("CString: cannot be formatted");
    m_text = std::move(text);
}

CString operator+(const CString& a, const CString& b) {
    return Joined(a.View(), b.View());
}

CString operator+(const CString& a, const char* b) {
    return Joined(a.View(), ViewOf(b));
}

CString operator+(const char* a, const CString& b) {
    return Joined(ViewOf(a), b.View());
}

CString operator+(const CString& a, char b) {
    return Joined(a.View(), {&b, 1});
}

CString operator+(char a, const CString& b) {
    return Joined({&a, 1}, b.View());
}

}  // namespace kortavin
