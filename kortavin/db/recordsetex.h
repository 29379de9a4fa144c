#pragma once

#include "kortavin/odbc/recordset.h"

namespace kortavin {

// Runs any statement exactly as it is written, describes its result columns, and reads each value as text.
class KORTAVIN_API _CRecordsetEx : public CRecordset {
  public:
    static const CRuntimeClass class_CRecordsetEx;

    // `database` is not owned.
    explicit _CRecordsetEx(CDatabase* database);
    ~_CRecordsetEx() override;
    const CRuntimeClass* GetRuntimeClass() const override;

    // Executes the statement and stands on its first row, or at both marks when it has none; a statement
    // without a result set has 0 columns and is not fetched. FALSE when no statement can be allocated. Throws
    // CDBException and CMemoryException, closed again.
    BOOL Open(UINT openType, const char* sql, DWORD options) override;
    // The same, forward-only and executed directly. IsOpen tells whether a statement could be allocated.
    void OpenSql(const CString& sql);

    // Fills the column descriptions of the executed statement. Throws CDBException; std::bad_alloc where
    // memory does not suffice.
    void DescribeColumns();

    // Column `index` (from 0) of the current row in the driver's own text form; NULL is empty. Without result
    // columns nothing happens. Throws CDBException, with kFieldIndexOutOfRange outside the columns and
    // kTextNotConvertible for text that is not valid in the connection's character set, and CMemoryException.
    // Read each value of a row once: whether a driver gives a value again is its own matter (it may answer
    // that there is no more data, code 100).
    void ReadFieldText(short index, CString& value);

    // One SQLGetData call for `column` (from 1), repeated while it is still executing. Answers the length
    // that the driver reported, SQL_NULL_DATA (-1) when it reported none. SQLSTATE 22003 (numeric value out
    // of range) is ignored; any other failure, and no data (100), throw CDBException.
    static LONGLONG FetchData(CDatabase* database, HSTMT statement, SWORD column, SWORD targetType,
                              void* buffer, LONGLONG bufferLength, SWORD sqlType);

  private:
    void DescribeColumn(int column);
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::_CRecordsetEx;
#endif
