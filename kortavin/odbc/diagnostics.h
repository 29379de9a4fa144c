#pragma once

#include <string_view>

#include "kortavin/odbc/dbexception.h"
#include "kortavin/odbc/handles.h"

namespace kortavin {

class CDatabase;

namespace odbc {

// The database error for a failed call, with the texts of the statement's diagnostic records, else of the
// connection's. A failure without any record gets a text that says so. `database` may be null.
CDBException MakeError(RETCODE code, const CDatabase* database, HSTMT statement);

// The same for a connection handle that is not a database's yet.
CDBException MakeConnectError(RETCODE code, const CDatabase& database, HDBC connection);

// An error of this layer's own; `state` is a five-character SQLSTATE.
CDBException MakeOwnError(RETCODE code, const char* state, const CString& text);

// Throws for a text that the driver would take up to a zero byte only.
void RefuseZeroBytes(std::string_view text);

// "`what` is not valid text in the character set UTF-8": for a value or a name of the driver's.
CDBException MakeConversionError(const CString& what, const CDatabase& database);

}  // namespace odbc

}  // namespace kortavin
