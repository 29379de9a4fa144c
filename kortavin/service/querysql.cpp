#include "kortavin/service/querysql.h"

#include <algorithm>
#include <memory>

#include "kortavin/base/texts.h"
#include "kortavin/service/exportrows.h"
#include "kortavin/service/statement.h"
#include "kortavin/wizard/pagefields.h"
#include "kortavin/wizard/pageorder.h"
#include "kortavin/wizard/pagerelation.h"
#include "kortavin/wizard/pageseltable.h"
#include "kortavin/wizard/pagesql.h"
#include "kortavin/wizard/pagewhere.h"

namespace kortavin {

using service::RowExport;

CQuerySql::CQuerySql() = default;

CQuerySql::CQuerySql(CGeoDatabase* database) : m_pDatabase(database) {}

CQuerySql::~CQuerySql() = default;

void CQuerySql::SetDatabase(CGeoDatabase* database) {
    m_pDatabase = database;
}

int CQuerySql::ConstructQuery(CString& sql) {
    if (m_pDatabase == nullptr || !m_pDatabase->IsOpen())
        return 0;
    m_pDatabase->GetAllTables(m_Tables);

    CSqlSheet sheet(Text(base::TextId::BuildQuery));
    sheet.m_pDatabase = m_pDatabase;
    sheet.m_pTables = &m_Tables;
    sheet.m_pSelTables = &m_SelTables;
    CPageSelTable tables;
    CPageRelation relations;
    CPageFields fields;
    CPageWhere conditions;
    CPageOrder order;
    CPageSql statement;
    for (CWizardPage* const page :
         std::initializer_list<CWizardPage*>{&tables, &relations, &fields, &conditions, &order, &statement}) {
        page->SetSheet(&sheet);
        sheet.AddPage(page);
    }
    if (sheet.DoModal() != IDOK)
        return 0;
    sql = sheet.m_strSql;
    return 1;
}

void* CQuerySql::GetReocrd(CString& sql) {
    if (m_pDatabase == nullptr)
        return nullptr;
    try {
        return WithMemoryErrors([&] { return service::OpenStatement(*m_pDatabase, sql).release(); });
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
        const auto columns = service::DescribeResult(*static_cast<_CRecordsetEx*>(recordset));
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
    return service::FieldTypeName(info.m_nSQLType);
}

int CQuerySql::QueryDataToFile(CFile* file, int format, int quoteMode, int header, CString sql) {
    if (file == nullptr)
        return 0;
    const std::unique_ptr<_CRecordsetEx> recordset(static_cast<_CRecordsetEx*>(GetReocrd(sql)));
    if (!recordset)
        return 0;

    const service::ExportOptions options{static_cast<service::ExportLayout>(format),
                                         static_cast<service::ExportQuote>(quoteMode), header != 0};
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
    service::WriteValue(*file, value.View(), static_cast<service::ExportLayout>(format), isLast != 0);
}

}  // namespace kortavin
