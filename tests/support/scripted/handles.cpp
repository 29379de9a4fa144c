#include "handles.h"

#include "call.h"

namespace kortavin::testing {

std::optional<std::string> Argument(const SQLCHAR* text, SQLINTEGER length) {
    if (text == nullptr)
        return std::nullopt;
    const auto* bytes = reinterpret_cast<const char*>(text);
    return length == SQL_NTS ? std::string(bytes) : std::string(bytes, static_cast<std::size_t>(length));
}

namespace {

SQLRETURN AllocStatement(SQLHANDLE parent, SQLHANDLE* output) {
    return Enter<Connection>(parent, {"SQLAllocHandle"}, [output](Connection& connection) {
        auto statement = std::make_unique<Statement>(connection);
        Handle* key = statement.get();
        connection.statements.emplace(key, std::move(statement));
        connection.log.Line("statement opened");
        *output = key;
        return SQL_SUCCESS;
    });
}

// Freeing is never refused: neither faults nor a dead connection reach it.
void FreeStatement(Handle* handle) {
    Connection& connection = static_cast<Statement*>(handle)->connection;
    connection.statements.erase(handle);
    connection.log.Line("statement closed");
}

}  // namespace

SCRIPTED_EXPORT SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* output) {
    switch (type) {
        case SQL_HANDLE_ENV:
            *output = static_cast<Handle*>(std::make_unique<Environment>().release());
            return SQL_SUCCESS;
        case SQL_HANDLE_DBC:
            *output = static_cast<Handle*>(std::make_unique<Connection>().release());
            return SQL_SUCCESS;
        case SQL_HANDLE_STMT:
            return AllocStatement(parent, output);
        default:
            return static_cast<Handle*>(parent)->Fail("HYC00", "no descriptors here");
    }
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE raw) {
    auto* handle = static_cast<Handle*>(raw);
    if (type == SQL_HANDLE_STMT)
        FreeStatement(handle);
    else
        std::unique_ptr<Handle>(handle).reset();
    return SQL_SUCCESS;
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

}  // namespace kortavin::testing
