#pragma once

#include <compare>
#include <cstdarg>
#include <optional>
#include <string>
#include <string_view>

#include "kortavin/base/export.h"
#include "kortavin/base/types.h"

namespace kortavin {

// A string of bytes in the GBK code page. Lengths, indices and comparisons count bytes, and the bytes are
// the truth: no operation re-encodes them. Zero bytes may stand inside. A null `const char*` is an empty
// string everywhere. Counts and indices outside the string are clamped to it. A length that an int cannot
// hold is a std::length_error.
class KORTAVIN_API CString {
  public:
    CString() = default;
    CString(const char* text);  // NOLINT(google-explicit-constructor)
    CString(const char* text, int length);
    explicit CString(std::string_view text);
    explicit CString(std::string&& text);
    explicit CString(char character, int repeat = 1);

    CString& operator=(const char* text);

    // Text from and to Unicode. Nothing when the input is not valid UTF-8, or not valid GBK (GB18030).
    static std::optional<CString> FromUtf8(std::string_view utf8);
    std::optional<std::string> ToUtf8() const;

    int GetLength() const { return static_cast<int>(m_text.size()); }
    BOOL IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    char GetAt(int index) const;  // 0 outside the string
    char operator[](int index) const { return GetAt(index); }
    void SetAt(int index, char character);  // nothing outside the string

    operator const char*() const { return m_text.c_str(); }  // NOLINT(google-explicit-constructor)
    const char* GetString() const { return m_text.c_str(); }
    std::string_view View() const { return m_text; }

    // Direct access: GetBuffer gives room for `minimum` bytes; ReleaseBuffer sets the length (-1: up to the
    // first zero byte). The pointer is valid until the next change.
    char* GetBuffer(int minimum);
    char* GetBufferSetLength(int length);
    void ReleaseBuffer(int length = -1);

    // The bytes themselves, for writing a text in place. They must stay within INT_MAX.
    std::string& GetStorage() { return m_text; }

    CString& operator+=(const CString& text);
    CString& operator+=(const char* text);
    CString& operator+=(char character);
    CString& Append(std::string_view text);

    // Byte order, and the same after folding single-byte ASCII letters (a trail byte is never folded).
    int Compare(const char* other) const;
    int CompareNoCase(const char* other) const;

    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Left(int count) const;
    CString Right(int count) const;

    // Index of the first (last) match, -1 for none. Only matches that begin at a character count, so an ASCII
    // byte never matches inside a double-byte or four-byte character. An empty text matches at `start`.
    int Find(char character, int start = 0) const;
    int Find(const char* text, int start = 0) const;
    int ReverseFind(char character) const;
    int FindOneOf(const char* characters) const;

    CString& MakeUpper();  // single-byte ASCII letters only
    CString& MakeLower();
    CString& TrimLeft();  // blanks, tabs and line breaks
    CString& TrimRight();

    // As printf formats it; the format and every %s are GBK bytes.
    void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void FormatV(const char* format, va_list arguments);

    friend bool operator==(const CString& a, const CString& b) { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const char* b) { return a.m_text == (b ? b : ""); }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) {
        return a.m_text <=> b.m_text;
    }
    friend std::strong_ordering operator<=>(const CString& a, const char* b) {
        return a.m_text <=> (b ? b : "");
    }

  private:
    std::string m_text;
};

KORTAVIN_API CString operator+(const CString& a, const CString& b);
KORTAVIN_API CString operator+(const CString& a, const char* b);
KORTAVIN_API CString operator+(const char* a, const CString& b);
KORTAVIN_API CString operator+(const CString& a, char b);
KORTAVIN_API CString operator+(char a, const CString& b);

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CString;
#endif
