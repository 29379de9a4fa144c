#include "handles.h"

#include <memory>

namespace kortavin::testing {

SQLRETURN Handle::Fail(std::string state, std::string message) {
    records.push_back({std::move(state), std::move(message)});
    return SQL_ERROR;
}

SQLRETURN Obey(Handle& handle, Connection& connection, const Fault& fault) {
    handle.records.insert(handle.records.end(), fault.diagnostics.begin(), fault.diagnostics.end());
    connection.dead = connection.dead || fault.connectionDies;
    return static_cast<SQLRETURN>(fault.code);
}

std::optional<std::string> Argument(const SQLCHAR* text, SQLINTEGER length) {
    if (text == nullptr)
        return std::nullopt;
    const auto* bytes = reinterpret_cast<const char*>(text);
    return length == SQL_NTS ? std::string(bytes) : std::string(bytes, static_cast<std::size_t>(length));
}

namespace {

SQLRETURN AllocStatement(SQLHANDLE parent, SQLHANDLE* output) {
    return Enter<Connection>(parent, {"SQLAllocHandle"}, [output](Connection& connection) {
        ++connection.log->openStatements;
        *output = static_cast<Handle*>(std::make_unique<Statement>(connection).release());
        return SQL_SUCCESS;
    });
}

}  // namespace

SCRIPTED_EXPORT SQLRETURN SQL_API SQLAllocHandle(SQLSMALLINT type, SQLHANDLE parent, SQLHANDLE* output) {
    switch (type) {
        case SQL_HANDLE_ENV:
            *output = std::make_unique<Handle>().release();
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

// Freeing is never refused: neither faults nor a dead connection reach it.
SCRIPTED_EXPORT SQLRETURN SQL_API SQLFreeHandle(SQLSMALLINT type, SQLHANDLE raw) {
    const std::unique_ptr<Handle> handle(static_cast<Handle*>(raw));
    if (type == SQL_HANDLE_STMT)
        --static_cast<Statement&>(*handle).connection.log->openStatements;
    return SQL_SUCCESS;
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLSetEnvAttr(SQLHENV, SQLINTEGER, SQLPOINTER, SQLINTEGER) {
    return SQL_SUCCESS;
}

}  // namespace kortavin::testing
