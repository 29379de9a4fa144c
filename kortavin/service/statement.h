#pragma once

#include <memory>
#include <vector>

#include "kortavin/db/geodatabase.h"
#include "kortavin/db/recordsetex.h"

// What the query service does inside, with errors thrown rather than discarded.
namespace kortavin::service {

// Seconds that a statement may take.
inline constexpr DWORD kStatementTimeout = 999;

// Executes a statement and stands on its first row, if any. The connection's query timeout is
// kStatementTimeout from then on. Throws CDBException (also when no statement could be allocated) and
// CMemoryException.
KORTAVIN_API std::unique_ptr<_CRecordsetEx> OpenStatement(CGeoDatabase& database, const CString& sql);

// The descriptions of all result columns.
KORTAVIN_API std::vector<CODBCFieldInfo> DescribeResult(const CRecordset& recordset);

// "SQL_VARCHAR", with blanks up to 18 characters; "<unknown type>" for a code outside ODBC 2.
KORTAVIN_API CString FieldTypeName(SWORD sqlType);

}  // namespace kortavin::service
