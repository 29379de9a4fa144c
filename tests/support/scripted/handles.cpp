#include "handles.h"

#include <memory>

#include "call.h"

namespace kortavin::testing {

std::optional<std::string> Argument(const SQLCHAR* text, SQLINTEGER length) {
    if (text == nullptr)
        return std::nullopt;
    const auto* bytes = reinterpret_cast<const char*>(text);
    return length == SQL_NTS ? std::string(bytes) : std::string(bytes, static_cast<std::size_t>(length));
}

namespace {

SQLRETURN AllocStatement(Connection& connection, SQLHANDLE* output) {
    const SQLRETURN code = Enter<Connection>(static_cast<Handle*>(&connection), {"SQLAllocHandle"},
                                             [](Connection&) { return SQL_SUCCESS; });
    if (SQL_SUCCEEDED(code)) {
        *output = static_cast<Handle*>(std::make_unique<Statement>(connection).release());
        connection.log.Line("statement opened");
    }
    return code;
}

// Freeing is never refused, and the faults of a dead connection don't reach it.
void FreeStatement(Handle* raw) {
    const std::unique_ptr<Statement> statement(static_cast<Statement*>(raw));
    statement->connection.log.Line("statement closed");
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
            return AllocStatement(static_cast<Connection&>(*static_cast<Handle*>(parent)), output);
        default:
            return static_cast<Handle*>(parent)->Fail("HYC00", "no descriptors here");
    }
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE raw) {
    auto* handle = static_cast<Handle*>(raw);
    switch (type) {
        case SQL_HANDLE_ENV:
            std::unique_ptr<Environment>(static_cast<Environment*>(handle)).reset();
            return SQL_SUCCESS;
        case SQL_HANDLE_DBC:
            std::unique_ptr<Connection>(static_cast<Connection*>(handle)).reset();
            return SQL_SUCCESS;
        case SQL_HANDLE_STMT:
            FreeStatement(handle);
            return SQL_SUCCESS;
        default:
            return SQL_INVALID_HANDLE;
    }
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

}  // namespace kortavin::testing
