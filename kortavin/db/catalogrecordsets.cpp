#include "kortavin/db/catalogrecordsets.h"

#include <array>
#include <optional>
#include <string>

#include "kortavin/odbc/fieldexchange.h"
#include "kortavin/odbc/handles.h"

namespace kortavin {

using odbc::Succeeded;
using odbc::WhileExecuting;

namespace {

SQLCHAR* Text(const char* name) {
    return reinterpret_cast<SQLCHAR*>(const_cast<char*>(name));
}

RETCODE CallTables(HSTMT statement, const char* const names[4]) {
    return SQLTables(statement, Text(names[0]), SQL_NTS, Text(names[1]), SQL_NTS, Text(names[2]), SQL_NTS,
                     Text(names[3]), SQL_NTS);
}

RETCODE CallColumns(HSTMT statement, const char* const names[4]) {
    return SQLColumns(statement, Text(names[0]), SQL_NTS, Text(names[1]), SQL_NTS, Text(names[2]), SQL_NTS,
                      Text(names[3]), SQL_NTS);
}

}  // namespace

CString CCatalogRecordset::GetDefaultConnect() {
    return "ODBC;";
}

CString CCatalogRecordset::GetDefaultSQL() {
    return "!";
}

BOOL CCatalogRecordset::OpenCatalog(UINT openType, WORD functionCode, const char* functionName,
                                    CatalogCall call, const char* const names[4]) {
    SQLUSMALLINT supported = 0;
    const HDBC connection = m_pDatabase != nullptr ? m_pDatabase->m_hdbc : nullptr;
    RETCODE code = SQLGetFunctions(connection, functionCode, &supported);
    if (!Succeeded(code))
        ThrowDBException(code);
    if (!supported)
        throw CNotSupportedException(CString("<::") + functionName + "> not supported.");

    SetState(openType, nullptr, readOnly);
    if (!AllocHstmt())
        return FALSE;
    ClosingOnError([&] {
        OnSetOptions(m_hstmt);
        AllocStatusArrays();
        std::array<std::optional<std::string>, 4> narrow;
        const char* arguments[4] = {};
        for (std::size_t i = 0; i < narrow.size(); ++i)
            if (names[i] != nullptr)
                arguments[i] = narrow[i].emplace(m_pDatabase->ToNarrow(names[i])).c_str();
        code = WhileExecuting([&] { return call(m_hstmt, arguments); });
        if (!Succeeded(code))
            ThrowDBException(code);
        DescribeColumns();
        AllocRowset();
        BindFields();
        FetchFirst();
    });
    return TRUE;
}

_CTables::_CTables(CDatabase* database) : CCatalogRecordset(database) {
    m_nFields = 5;
}

_CTables::~_CTables() = default;

BOOL _CTables::Open(const char* qualifier, const char* owner, const char* table, const char* tableType,
                    UINT openType) {
    const char* const names[] = {qualifier, owner, table, tableType};
    return OpenCatalog(openType, SQL_API_SQLTABLES, "SQLTables", CallTables, names);
}

void _CTables::DoFieldExchange(CFieldExchange* exchange) {
    exchange->SetFieldType(CFieldExchange::outputColumn);
    RFX_Text(exchange, "TABLE_QUALIFIER", m_strQualifier);
    RFX_Text(exchange, "TABLE_OWNER", m_strOwner);
    RFX_Text(exchange, "TABLE_NAME", m_strName);
    RFX_Text(exchange, "TABLE_TYPE", m_strType);
    RFX_Text(exchange, "REMARKS", m_strRemarks);
}

CColumns::CColumns(CDatabase* database) : CCatalogRecordset(database) {
    m_nFields = 12;
}

CColumns::~CColumns() = default;

BOOL CColumns::Open(const char* qualifier, const char* owner, const char* table, const char* column,
                    UINT openType) {
    const char* const names[] = {qualifier, owner, table, column};
    return OpenCatalog(openType, SQL_API_SQLCOLUMNS, "SQLColumns", CallColumns, names);
}

void CColumns::DoFieldExchange(CFieldExchange* exchange) {
    exchange->SetFieldType(CFieldExchange::outputColumn);
    RFX_Text(exchange, "TABLE_QUALIFIER", m_strQualifier);
    RFX_Text(exchange, "TABLE_OWNER", m_strOwner);
    RFX_Text(exchange, "TABLE_NAME", m_strTableName);
    RFX_Text(exchange, "COLUMN_NAME", m_strColumnName);
    RFX_Int(exchange, "DATA_TYPE", m_nDataType);
    RFX_Text(exchange, "TYPE_NAME", m_strTypeName);
    RFX_Long(exchange, "PRECISION", m_lPrecision);
    RFX_Long(exchange, "LENGTH", m_lLength);
    RFX_Int(exchange, "SCALE", m_nScale);
    RFX_Int(exchange, "RADIX", m_nRadix);
    RFX_Int(exchange, "NULLABLE", m_nNullable);
    RFX_Text(exchange, "REMARKS", m_strRemarks);
}

}  // namespace kortavin
