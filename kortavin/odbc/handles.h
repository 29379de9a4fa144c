#pragma once

#include <sql.h>
#include <sqlext.h>

#include <utility>

// Inside of this folder and `db/`: ODBC handles as objects.
namespace kortavin::odbc {

constexpr bool Succeeded(SQLRETURN code) {
    return code == SQL_SUCCESS || code == SQL_SUCCESS_WITH_INFO;
}

// Repeats an ODBC call at once for as long as it answers that it is still executing.
template <class Call>
SQLRETURN WhileExecuting(Call call) {
    SQLRETURN code;
    do {
        code = call();
    } while (code == SQL_STILL_EXECUTING);
    return code;
}

template <SQLSMALLINT type>
class Handle {
  public:
    Handle() = default;
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() { Free(); }

    SQLRETURN Allocate(SQLHANDLE parent) {
        Free();
        const SQLRETURN code = SQLAllocHandle(type, parent, &m_handle);
        if (!Succeeded(code))
            m_handle = nullptr;
        return code;
    }
    void Free() {
        if (m_handle != nullptr)
            SQLFreeHandle(type, std::exchange(m_handle, nullptr));
    }
    SQLHANDLE Get() const { return m_handle; }

  private:
    SQLHANDLE m_handle = nullptr;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV>;
using StatementHandle = Handle<SQL_HANDLE_STMT>;

// A connection's handle; ends the connection before it goes. What a transaction left open is rolled back.
class ConnectionHandle : public Handle<SQL_HANDLE_DBC> {
  public:
    ~ConnectionHandle() { Disconnect(); }

    void Disconnect() {
        if (Get() == nullptr)
            return;
        if (!Succeeded(SQLDisconnect(Get()))) {
            SQLEndTran(SQL_HANDLE_DBC, Get(), SQL_ROLLBACK);
            SQLDisconnect(Get());
        }
        Free();
    }
};

}  // namespace kortavin::odbc
