#include "kortavin/odbc/charsetdetection.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "kortavin/base/cstring.h"
#include "kortavin/odbc/handles.h"

namespace kortavin::odbc {
namespace {

std::string DatabaseProduct(HDBC connection) {
    std::array<char, 128> name{};
    SQLSMALLINT length = 0;
    const SQLRETURN code = SQLGetInfo(connection, SQL_DBMS_NAME, name.data(), name.size() - 1, &length);
    return Succeeded(code) ? std::string(name.data()) : std::string();
}

// The single ASCII value that a statement answers; empty when it does not answer one.
std::string Ask(HDBC connection, const char* sql) {
    StatementHandle statement;
    if (!Succeeded(statement.Allocate(connection)))
        return {};
    auto* text = reinterpret_cast<SQLCHAR*>(const_cast<char*>(sql));
    if (!Succeeded(WhileExecuting([&] { return SQLExecDirect(statement.Get(), text, SQL_NTS); })))
        return {};
    if (!Succeeded(WhileExecuting([&] { return SQLFetch(statement.Get()); })))
        return {};
    std::array<char, 64> value{};
    SQLLEN length = SQL_NULL_DATA;
    const SQLRETURN code = WhileExecuting(
        [&] { return SQLGetData(statement.Get(), 1, SQL_C_CHAR, value.data(), value.size(), &length); });
    return Succeeded(code) && length != SQL_NULL_DATA ? std::string(value.data()) : std::string();
}

std::string Lower(const std::string& name) {
    return std::string(CString(name).MakeLower().View());
}

struct CharsetName {
    std::string_view server;
    const char* iana;
};

const char* Find(const std::string& server, std::span<const CharsetName> names) {
    const auto found = std::ranges::find(names, server, &CharsetName::server);
    return found == names.end() ? nullptr : found->iana;
}

// Encodings whose name at the server is not what the rest of the world calls them.
constexpr CharsetName kPostgreSqlNames[] = {
    {"utf8", "UTF-8"},
    {"unicode", "UTF-8"},
    {"euc_cn", "GB2312"},
    {"euc_jp", "EUC-JP"},
    {"euc_kr", "EUC-KR"},
    {"euc_tw", "EUC-TW"},
    {"sjis", "Shift_JIS"},
    {"uhc", "windows-949"},
    {"johab", "x-johab"},
    {"koi8r", "KOI8-R"},
    {"koi8u", "KOI8-U"},
    {"latin5", "ISO-8859-9"},
    {"latin6", "ISO-8859-10"},
    {"latin7", "ISO-8859-13"},
    {"latin8", "ISO-8859-14"},
    {"latin9", "ISO-8859-15"},
    {"latin10", "ISO-8859-16"},
    {"iso_8859_5", "ISO-8859-5"},
    {"iso_8859_6", "ISO-8859-6"},
    {"iso_8859_7", "ISO-8859-7"},
    {"iso_8859_8", "ISO-8859-8"},
};
constexpr CharsetName kMySqlNames[] = {
    {"utf8", "UTF-8"},          {"utf8mb3", "UTF-8"},       {"utf8mb4", "UTF-8"},
    {"latin1", "windows-1252"}, {"latin2", "ISO-8859-2"},   {"latin5", "ISO-8859-9"},
    {"latin7", "ISO-8859-13"},  {"ujis", "EUC-JP"},         {"eucjpms", "EUC-JP"},
    {"sjis", "Shift_JIS"},      {"cp932", "windows-31j"},   {"euckr", "EUC-KR"},
    {"koi8r", "KOI8-R"},        {"koi8u", "KOI8-U"},        {"greek", "ISO-8859-7"},
    {"hebrew", "ISO-8859-8"},   {"tis620", "TIS-620"},      {"cp1250", "windows-1250"},
    {"cp1251", "windows-1251"}, {"cp1256", "windows-1256"}, {"cp1257", "windows-1257"},
    {"ascii", "UTF-8"},
};

std::string PostgreSqlCharset(HDBC connection) {
    std::string encoding = Lower(Ask(connection, "SHOW client_encoding"));
    // SQL_ASCII hands the server's bytes through as they are.
    if (encoding == "sql_ascii")
        encoding = Lower(Ask(connection, "SHOW server_encoding"));
    if (encoding == "sql_ascii")
        return {};
    if (const char* name = Find(encoding, kPostgreSqlNames))
        return name;
    if (encoding.starts_with("win"))
        return "windows-" + encoding.substr(3);
    return encoding;
}

std::string MySqlCharset(HDBC connection) {
    const std::string name = Lower(Ask(connection, "SELECT @@character_set_results"));
    if (const char* iana = Find(name, kMySqlNames))
        return iana;
    return name == "binary" ? std::string() : name;
}

}  // namespace

std::string DetectCharset(HDBC connection) {
    const std::string product = Lower(DatabaseProduct(connection));
    if (product.find("sqlite") != product.npos)
        return "UTF-8";
    if (product.find("postgresql") != product.npos)
        return PostgreSqlCharset(connection);
    if (product.find("mariadb") != product.npos || product.find("mysql") != product.npos)
        return MySqlCharset(connection);
    return {};
}

}  // namespace kortavin::odbc
