#include "kortavin/odbc/secrets.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <optional>

#include "kortavin/base/codepage.h"

namespace kortavin::odbc {
namespace {

constexpr std::array<std::string_view, 8> kSecretKeys = {"pwd",   "password", "passwd",     "pass",
                                                         "token", "secret",   "sslkeypass", "sslpassword"};

std::string_view Trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool IsSecretKey(std::string_view key) {
    return std::ranges::any_of(
        kSecretKeys, [key](std::string_view known) { return base::CompareNoCase(known, key) == 0; });
}

// Takes one KEY=VALUE off the string; a value in braces may hold semicolons, and "}}" stands for a brace.
struct Attribute {
    std::string_view key;
    std::string_view written;  // as it stands, braces included
};

std::optional<Attribute> TakeAttribute(std::string_view& rest) {
    const auto equals = rest.find('=');
    if (equals == rest.npos)
        return std::nullopt;
    std::string_view key = rest.substr(0, equals);
    if (const auto semicolon = key.rfind(';'); semicolon != key.npos)
        key.remove_prefix(semicolon + 1);
    rest.remove_prefix(equals + 1);

    std::size_t end = 0;
    if (const auto blanks = rest.find_first_not_of(' '); blanks != rest.npos && rest[blanks] == '{') {
        end = blanks + 1;
        while (end < rest.size() && (rest[end] != '}' || rest.substr(end, 2) == "}}"))
            end += rest[end] == '}' ? 2 : 1;
    }
    end = std::min(rest.find(';', std::min(end, rest.size())), rest.size());
    const Attribute attribute{Trim(key), Trim(rest.substr(0, end))};
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return attribute;
}

std::string Unbraced(std::string_view written) {
    if (!written.starts_with('{'))
        return std::string(written);
    written.remove_prefix(1);
    if (written.ends_with('}'))
        written.remove_suffix(1);
    std::string value;
    for (std::size_t i = 0; i < written.size(); ++i) {
        value += written[i];
        if (written.substr(i, 2) == "}}")
            ++i;
    }
    return value;
}

bool IsWordByte(std::string_view text, std::size_t index) {
    if (index >= text.size())
        return false;
    const auto byte = static_cast<unsigned char>(text[index]);
    return std::isalnum(byte) || byte == '_' || byte >= 0x80;
}

bool StandsFor(std::string_view text, std::size_t at, std::string_view secret) {
    static constexpr std::size_t kShort = 4;
    return secret.size() >= kShort || (!IsWordByte(text, at - 1) && !IsWordByte(text, at + secret.size()));
}

std::string Replace(std::string_view text, std::string_view secret) {
    std::string result;
    while (true) {
        auto at = text.find(secret);
        while (at != text.npos && !StandsFor(text, at, secret))
            at = text.find(secret, at + 1);
        result += text.substr(0, at);
        if (at == text.npos)
            return result;
        result += "***";
        text.remove_prefix(at + secret.size());
    }
}

// A driver may end its text in the middle of a quoted connection string.
std::string ReplaceCutOff(std::string text, std::string_view secret) {
    for (std::size_t length = secret.size(); length-- > 1;) {
        if (!text.ends_with(secret.substr(0, length)))
            continue;
        const std::size_t begin = text.size() - length;
        if (begin > 0 && (text[begin - 1] == '=' || text[begin - 1] == '{'))
            return text.substr(0, begin) + "***";
    }
    return text;
}

}  // namespace

SecretFilter::SecretFilter(std::string_view connectionString) {
    while (const auto attribute = TakeAttribute(connectionString)) {
        if (!IsSecretKey(attribute->key))
            continue;
        m_secrets.emplace_back(attribute->written);
        m_secrets.push_back(Unbraced(attribute->written));
    }
    std::erase(m_secrets, std::string());
    std::ranges::sort(m_secrets, std::greater<>(), &std::string::size);
}

std::string SecretFilter::Apply(std::string_view text) const {
    std::string result(text);
    for (const std::string& secret : m_secrets)
        result = ReplaceCutOff(Replace(result, secret), secret);
    return result;
}

}  // namespace kortavin::odbc
