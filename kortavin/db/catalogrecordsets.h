#pragma once

#include "kortavin/db/recordsetex.h"

namespace kortavin {

// What the two catalog recordsets share: a catalog function with four names in place of a statement.
class KORTAVIN_API CCatalogRecordset : public _CRecordsetEx {
  public:
    CString GetDefaultConnect() override;  // "ODBC;"
    CString GetDefaultSQL() override;      // "!": there is no statement text

  protected:
    using CatalogCall = RETCODE (*)(HSTMT statement, const char* const names[4]);

    explicit CCatalogRecordset(CDatabase* database) : _CRecordsetEx(database) {}

    // Null names are handed on as null. FALSE when no statement can be allocated. Throws CDBException,
    // CMemoryException, and CNotSupportedException when the driver lacks the function.
    BOOL OpenCatalog(UINT openType, WORD functionCode, const char* functionName, CatalogCall call,
                     const char* const names[4]);
};

// The tables and views of a data source, by SQLTables.
class KORTAVIN_API _CTables : public CCatalogRecordset {
  public:
    explicit _CTables(CDatabase* database);
    ~_CTables() override;

    // Stands on the first table, or at both marks. The names go to the driver as they are, patterns included;
    // null leaves one open. `openType` is forwardOnly. FALSE when no statement can be allocated. Throws
    // CDBException, CMemoryException, and CNotSupportedException for a driver without SQLTables.
    BOOL Open(const char* qualifier, const char* owner, const char* table, const char* tableType,
              UINT openType);
    void DoFieldExchange(CFieldExchange* exchange) override;

    CString m_strQualifier;
    CString m_strOwner;
    CString m_strName;
    CString m_strType;
    CString m_strRemarks;

  private:
    using CCatalogRecordset::Open;
};

// The columns of tables, by SQLColumns.
class KORTAVIN_API CColumns : public CCatalogRecordset {
  public:
    explicit CColumns(CDatabase* database);
    ~CColumns() override;

    // As _CTables::Open, by SQLColumns.
    BOOL Open(const char* qualifier, const char* owner, const char* table, const char* column, UINT openType);
    void DoFieldExchange(CFieldExchange* exchange) override;

    CString m_strQualifier;
    CString m_strOwner;
    CString m_strTableName;
    CString m_strColumnName;
    int m_nDataType = 0;
    CString m_strTypeName;
    LONG m_lPrecision = 0;
    LONG m_lLength = 0;
    int m_nScale = 0;
    int m_nRadix = 0;
    int m_nNullable = 0;
    CString m_strRemarks;

  private:
    using CCatalogRecordset::Open;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::_CTables;
using kortavin::CCatalogRecordset;
using kortavin::CColumns;
#endif
