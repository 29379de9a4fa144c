#pragma once

#include <sql.h>
#include <sqlext.h>

#include <string>
#include <vector>

namespace kortavin::testing {

using Strings = std::vector<std::string>;

inline SQLCHAR* Bytes(const std::string& text) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(text.c_str()));
}

// "state native message" of every record.
inline Strings Records(SQLSMALLINT type, SQLHANDLE handle) {
    Strings records;
    SQLCHAR state[6];
    SQLCHAR text[1024];
    SQLINTEGER native = 0;
    for (SQLSMALLINT i = 1;
         SQL_SUCCEEDED(SQLGetDiagRec(type, handle, i, state, &native, text, sizeof text, nullptr)); ++i) {
        records.push_back(reinterpret_cast<char*>(state) + (' ' + std::to_string(native)) + ' ' +
                          reinterpret_cast<char*>(text));
    }
    return records;
}

// An ODBC 2 application at its barest.
class Session {
  public:
    explicit Session(const std::string& connectionString) {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC2), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &dbc);
        connected = SQLDriverConnect(dbc, nullptr, Bytes(connectionString), SQL_NTS, nullptr, 0, nullptr,
                                     SQL_DRIVER_NOPROMPT);
        if (SQL_SUCCEEDED(connected))
            SQLAllocHandle(SQL_HANDLE_STMT, dbc, &stmt);
    }
    ~Session() {
        if (stmt)
            SQLFreeHandle(SQL_HANDLE_STMT, stmt);
        if (SQL_SUCCEEDED(connected))
            SQLDisconnect(dbc);
        SQLFreeHandle(SQL_HANDLE_DBC, dbc);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    SQLRETURN Execute(const std::string& sql) const { return SQLExecDirect(stmt, Bytes(sql), SQL_NTS); }
    Strings Errors() const { return Records(SQL_HANDLE_STMT, stmt); }

    // "code indicator bytes" of one SQLGetData; an unwritten indicator shows as -77.
    std::string Get(SQLUSMALLINT column) const {
        std::string buffer(32, '~');
        SQLLEN indicator = -77;
        const SQLRETURN code = SQLGetData(stmt, column, SQL_C_CHAR, buffer.data(), 32, &indicator);
        return std::to_string(code) + ' ' + std::to_string(indicator) + ' ' +
               buffer.substr(0, buffer.find_first_of(std::string("\0~", 2)));
    }

    SQLHDBC dbc = nullptr;
    SQLHSTMT stmt = nullptr;
    SQLRETURN connected = SQL_ERROR;

  private:
    SQLHENV m_environment = nullptr;
};

}  // namespace kortavin::testing
