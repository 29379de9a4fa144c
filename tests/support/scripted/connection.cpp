#include <algorithm>
#include <cstdint>
#include <cstring>

#include "handles.h"

namespace kortavin::testing {
namespace {

const Fault* Find(const FunctionFaults& faults, const Call& call) {
    for (const auto& [function, fault] : faults) {
        if (function == call.function && (!fault.argument || fault.argument == call.argument))
            return &fault;
    }
    return nullptr;
}

// The script lies in this process; the connection string tells where.
Script& ScriptOf(const std::string& connectionString) {
    static constexpr std::string_view kKey = ";Script=";
    const std::size_t found = (';' + connectionString).find(kKey);
    const auto address = std::stoull(connectionString.substr(found + kKey.size() - 1));
    return *reinterpret_cast<Script*>(static_cast<std::uintptr_t>(address));  // NOLINT
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

SQLRETURN Info(Connection& connection, SQLUSMALLINT type, SQLPOINTER buffer, SQLSMALLINT size,
               SQLSMALLINT* length) {
    switch (type) {
        case SQL_DRIVER_NAME:
            return CopyText(connection.script.driverName, buffer, size, length);
        case SQL_DBMS_NAME:
            return CopyText(connection.script.dbmsName, buffer, size, length);
        case SQL_GETDATA_EXTENSIONS:
            std::memcpy(buffer, &connection.script.getDataExtensions, sizeof(SQLUINTEGER));
            return SQL_SUCCESS;
        default:
            return connection.Fail("HY096", "no such information is scripted");
    }
}

}  // namespace

const Fault* Connection::FindFault(const Call& call) const {
    return Find(script.faults, call);
}

const Fault* Statement::FindFault(const Call& call) const {
    const Fault* ofResult = answer ? Find(answer->faults, call) : nullptr;
    return ofResult ? ofResult : connection.FindFault(call);
}

SQLRETURN Connection::Connect(const std::string& connectionString) {
    Script& source = ScriptOf(connectionString);
    script = source;
    log = &source.log;
    QuoteConnectionString(script, connectionString);
    return Enter<Connection>(static_cast<Handle*>(this), {"SQLDriverConnect"}, [](Connection& connection) {
        ++connection.log->openConnections;
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLDriverConnect(SQLHDBC raw, SQLHWND, SQLCHAR* input, SQLSMALLINT length,
                                                   SQLCHAR* output, SQLSMALLINT size, SQLSMALLINT* written,
                                                   SQLUSMALLINT) {
    const std::string text = Argument(input, length).value_or("");
    CopyText(text, output, size, written);
    return static_cast<Connection&>(*static_cast<Handle*>(raw)).Connect(text);
}

// A disconnection takes even when the other side is gone.
SCRIPTED_EXPORT SQLRETURN SQL_API SQLDisconnect(SQLHDBC raw) {
    --static_cast<Connection&>(*static_cast<Handle*>(raw)).log->openConnections;
    return SQL_SUCCESS;
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetInfo(SQLHDBC raw, SQLUSMALLINT type, SQLPOINTER buffer,
                                             SQLSMALLINT size, SQLSMALLINT* length) {
    return Enter<Connection>(raw, {"SQLGetInfo", std::to_string(type), type}, [=](Connection& connection) {
        return Info(connection, type, buffer, size, length);
    });
}

// The manager asks for the whole table, and uses what is both in there and exported.
SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetFunctions(SQLHDBC raw, SQLUSMALLINT id, SQLUSMALLINT* supported) {
    if (id != SQL_API_ODBC3_ALL_FUNCTIONS)
        return SQL_ERROR;
    std::fill_n(supported, SQL_API_ODBC3_ALL_FUNCTIONS_SIZE, SQLUSMALLINT{0xFFFF});
    if (static_cast<Connection&>(*static_cast<Handle*>(raw)).script.hasCatalogFunctions)
        return SQL_SUCCESS;
    for (const int function : {SQL_API_SQLTABLES, SQL_API_SQLCOLUMNS})
        supported[function >> 4] &= static_cast<SQLUSMALLINT>(~(1 << (function & 15)));
    return SQL_SUCCESS;
}

}  // namespace kortavin::testing
