#include <algorithm>
#include <cstring>
#include <iterator>

#include "call.h"

namespace kortavin::testing {
namespace {

constexpr std::pair<const char*, SQLUSMALLINT> kFunctions[] = {
    {"SQLAllocHandle", SQL_API_SQLALLOCHANDLE},
    {"SQLBindCol", SQL_API_SQLBINDCOL},
    {"SQLCancel", SQL_API_SQLCANCEL},
    {"SQLCloseCursor", SQL_API_SQLCLOSECURSOR},
    {"SQLColumns", SQL_API_SQLCOLUMNS},
    {"SQLDescribeCol", SQL_API_SQLDESCRIBECOL},
    {"SQLDisconnect", SQL_API_SQLDISCONNECT},
    {"SQLDriverConnect", SQL_API_SQLDRIVERCONNECT},
    {"SQLEndTran", SQL_API_SQLENDTRAN},
    {"SQLExecDirect", SQL_API_SQLEXECDIRECT},
    {"SQLExecute", SQL_API_SQLEXECUTE},
    {"SQLPrepare", SQL_API_SQLPREPARE},
    {"SQLFetch", SQL_API_SQLFETCH},
    {"SQLFreeHandle", SQL_API_SQLFREEHANDLE},
    {"SQLFreeStmt", SQL_API_SQLFREESTMT},
    {"SQLGetData", SQL_API_SQLGETDATA},
    {"SQLGetDiagField", SQL_API_SQLGETDIAGFIELD},
    {"SQLGetDiagRec", SQL_API_SQLGETDIAGREC},
    {"SQLGetFunctions", SQL_API_SQLGETFUNCTIONS},
    {"SQLGetInfo", SQL_API_SQLGETINFO},
    {"SQLMoreResults", SQL_API_SQLMORERESULTS},
    {"SQLNumResultCols", SQL_API_SQLNUMRESULTCOLS},
    {"SQLRowCount", SQL_API_SQLROWCOUNT},
    {"SQLSetConnectAttr", SQL_API_SQLSETCONNECTATTR},
    {"SQLSetEnvAttr", SQL_API_SQLSETENVATTR},
    {"SQLSetStmtAttr", SQL_API_SQLSETSTMTATTR},
    {"SQLTables", SQL_API_SQLTABLES},
};

template <class Entries>
auto* Lookup(Entries& entries, int type) {
    for (auto& [key, value] : entries) {
        if (key == type)
            return &value;
    }
    return static_cast<decltype(&entries.front().second)>(nullptr);
}

// The value of a KEY=value pair of the connection string.
std::string Attribute(const std::string& connectionString, const std::string& key) {
    const std::string text = ';' + connectionString + ';';
    const std::size_t found = text.find(';' + key + '=');
    if (found == std::string::npos)
        return {};
    const std::size_t begin = found + key.size() + 2;
    return text.substr(begin, text.find(';', begin) - begin);
}

// A refusal may quote what the application sent, as some databases do with all that is in it.
void QuoteConnectionString(Script& script, const std::string& connectionString) {
    static constexpr std::string_view kPlace = "%CONNECTION%";
    for (auto& [function, fault] : script.faults) {
        for (Diagnostic& diagnostic : fault.diagnostics) {
            if (const auto place = diagnostic.message.find(kPlace); place != std::string::npos)
                diagnostic.message.replace(place, kPlace.size(), connectionString);
        }
    }
}

SQLRETURN TextInfo(Connection& connection, const std::string& text, SQLPOINTER buffer, SQLSMALLINT size,
                   SQLSMALLINT* length) {
    if (CopyText(text, buffer, size, length))
        return SQL_SUCCESS;
    connection.Fail("01004", "String data, right truncated");
    return SQL_SUCCESS_WITH_INFO;
}

SQLRETURN Info(Connection& connection, SQLUSMALLINT type, SQLPOINTER buffer, SQLSMALLINT size,
               SQLSMALLINT* length) {
    if (const auto* text = Lookup(connection.script.infoTexts, type))
        return TextInfo(connection, *text, buffer, size, length);
    const auto* scripted = Lookup(connection.script.infoNumbers, type);
    if (scripted == nullptr)
        return connection.Fail("HY096", "no such information is scripted");
    // Some numbers of SQLGetInfo have 16 bits: those that the manager asks for itself, and where the size
    // says so.
    const bool isShort = type == SQL_CURSOR_COMMIT_BEHAVIOR || type == SQL_CURSOR_ROLLBACK_BEHAVIOR ||
                         size == sizeof(SQLUSMALLINT);
    const auto number = static_cast<SQLUINTEGER>(*scripted);
    std::memcpy(buffer, &number, isShort ? sizeof(SQLUSMALLINT) : sizeof number);
    return SQL_SUCCESS;
}

}  // namespace

SQLRETURN Connection::Connect(const std::string& connectionString) {
    const std::string path = Attribute(connectionString, "Script");
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return Fail("08001", "the script cannot be read: '" + path + "'");
    script = FromText({std::istreambuf_iterator<char>(file), {}});
    QuoteConnectionString(script, connectionString);
    log.Open(path + ".log");
    m_turns.clear();
    return Answered(*this, {"SQLDriverConnect", connectionString}, [](Connection& connection) -> SQLRETURN {
        connection.log.Line("connection opened");
        return SQL_SUCCESS;
    });
}

Answer* Connection::Find(std::list<Answer>& answers, const std::string& key) {
    std::vector<Answer*> meant;
    const auto gather = [&](const std::optional<std::string>& wanted) {
        for (Answer& answer : answers) {
            if (answer.key == wanted)
                meant.push_back(&answer);
        }
    };
    gather(key);
    if (meant.empty())
        gather(std::nullopt);
    if (meant.empty())
        return nullptr;
    return meant[std::min(m_turns[meant.front()]++, meant.size() - 1)];
}

long long Connection::Number(int type) const {
    const auto* number = Lookup(script.infoNumbers, type);
    return number ? *number : 0;
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLDriverConnect(SQLHDBC raw, SQLHWND, SQLCHAR* input, SQLSMALLINT length,
                                                   SQLCHAR* output, SQLSMALLINT size, SQLSMALLINT* written,
                                                   SQLUSMALLINT) {
    auto& connection = static_cast<Connection&>(*static_cast<Handle*>(raw));
    connection.records.clear();
    const std::string text = Argument(input, length).value_or("");
    try {
        connection.code = connection.Connect(text);
    } catch (const std::exception& error) {
        connection.code = connection.Fail("HY000", error.what());
    }
    if (SQL_SUCCEEDED(connection.code))
        CopyText(text, output, size, written);
    return connection.code;
}

// A disconnection takes even when the other side is gone, so nothing but its own fault can stop it.
SCRIPTED_EXPORT SQLRETURN SQL_API SQLDisconnect(SQLHDBC raw) {
    static_cast<Connection&>(*static_cast<Handle*>(raw)).dead = false;
    return Enter<Connection>(raw, {"SQLDisconnect"}, [](Connection& connection) {
        connection.log.Line("connection closed");
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetInfo(SQLHDBC raw, SQLUSMALLINT type, SQLPOINTER buffer,
                                             SQLSMALLINT size, SQLSMALLINT* length) {
    return Enter<Connection>(raw, {"SQLGetInfo", std::to_string(type), type}, [=](Connection& connection) {
        return Info(connection, type, buffer, size, length);
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetFunctions(SQLHDBC raw, SQLUSMALLINT id, SQLUSMALLINT* supported) {
    const auto& unsupported = static_cast<Connection&>(*static_cast<Handle*>(raw)).script.unsupported;
    const std::size_t words = id == SQL_API_ODBC3_ALL_FUNCTIONS ? SQL_API_ODBC3_ALL_FUNCTIONS_SIZE
                              : id == SQL_API_ALL_FUNCTIONS     ? 100
                                                                : 1;
    std::fill_n(supported, words, SQLUSMALLINT{0});
    for (const auto& [name, function] : kFunctions) {
        if (unsupported.contains(name))
            continue;
        if (id == SQL_API_ODBC3_ALL_FUNCTIONS)
            supported[function >> 4] |= static_cast<SQLUSMALLINT>(1 << (function & 15));
        else if (id == SQL_API_ALL_FUNCTIONS && function < words)
            supported[function] = SQL_TRUE;
        else if (id == function)
            *supported = SQL_TRUE;
    }
    return SQL_SUCCESS;
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLSetConnectAttr(SQLHDBC raw, SQLINTEGER attribute, SQLPOINTER value,
                                                    SQLINTEGER) {
    const std::string arguments =
        std::to_string(attribute) + ", " + std::to_string(reinterpret_cast<SQLLEN>(value));
    return Enter<Connection>(raw, {"SQLSetConnectAttr", arguments, attribute},
                             [](Connection&) { return SQL_SUCCESS; });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLEndTran(SQLSMALLINT type, SQLHANDLE raw, SQLSMALLINT completion) {
    if (type != SQL_HANDLE_DBC)
        return SQL_SUCCESS;
    return Enter<Connection>(raw, {"SQLEndTran", completion == SQL_COMMIT ? "commit" : "rollback"},
                             [](Connection&) { return SQL_SUCCESS; });
}

}  // namespace kortavin::testing
