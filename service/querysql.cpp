#include "service/querysql.h"

#include <algorithm>
#include <memory>

#include "service/exportrows.h"
#include "service/statement.h"

using kortavin::service::RowExport;

CQuerySql::CQuerySql() = default;

CQuerySql::CQuerySql(CGeoDatabase* database) : m_pDatabase(database) {}

CQuerySql::~CQuerySql() = default;

void CQuerySql::SetDatabase(CGeoDatabase* database) {
    m_pDatabase = database;
}

void* CQuerySql::GetReocrd(CString& sql) {
    if (m_pDatabase == nullptr)
        return nullptr;
    try {
        return WithMemoryErrors(
            [&] { return kortavin::service::OpenStatement(*m_pDatabase, sql).release(); });
    } catch (const CDBException&) {
    } catch (const CMemoryException&) {
    }
    return nullptr;
}

void CQuerySql::ReleaseRecordset(void* recordset) {
    delete static_cast<_CRecordsetEx*>(recordset);
}

int CQuerySql::InspectSyntax(CString& sql) {
    void* const recordset = GetReocrd(sql);
    ReleaseRecordset(recordset);
    return recordset != nullptr;
}

CODBCFieldInfo* CQuerySql::GetFieldsInfo(CString& sql, int& count) {
    count = 0;
    const std::unique_ptr<_CRecordsetEx> recordset(static_cast<_CRecordsetEx*>(GetReocrd(sql)));
    return recordset ? GetFieldsInfo(recordset.get(), count) : nullptr;
}

CODBCFieldInfo* CQuerySql::GetFieldsInfo(void* recordset, int& count) {
    return WithMemoryErrors([&] {
        const auto columns = kortavin::service::DescribeResult(*static_cast<_CRecordsetEx*>(recordset));
        auto infos = std::make_unique<CODBCFieldInfo[]>(columns.size());
        std::ranges::copy(columns, infos.get());
        count = static_cast<int>(columns.size());
        return infos.release();
    });
}

void CQuerySql::ReleaseFieldsInfo(CODBCFieldInfo* fieldsInfo) {
    delete[] fieldsInfo;
}

CString CQuerySql::GetFieldTypeStr(CODBCFieldInfo& info) {
    return kortavin::service::FieldTypeName(info.m_nSQLType);
}

int CQuerySql::QueryDataToFile(CFile* file, int format, int quoteMode, int header, CString sql) {
    if (file == nullptr)
        return 0;
    const std::unique_ptr<_CRecordsetEx> recordset(static_cast<_CRecordsetEx*>(GetReocrd(sql)));
    if (!recordset)
        return 0;

    const kortavin::service::ExportOptions options{static_cast<kortavin::service::ExportLayout>(format),
                                                   static_cast<kortavin::service::ExportQuote>(quoteMode),
                                                   header != 0};
    return WithMemoryErrors([&] {
        RowExport rowExport(*file, options, *recordset);
        rowExport.WriteHeader();
        try {
            rowExport.WriteRows();
            return 1;
        } catch (...) {  // a host's file may throw anything
            return 0;
        }
    });
}

void CQuerySql::WriteByFormat(CFile* file, CString& value, int format, int isLast) {
    kortavin::service::WriteValue(*file, value.View(), static_cast<kortavin::service::ExportLayout>(format),
                                  isLast != 0);
}
