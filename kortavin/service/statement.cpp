#include "kortavin/service/statement.h"

namespace kortavin::service {

std::unique_ptr<_CRecordsetEx> OpenStatement(CGeoDatabase& database, const CString& sql) {
    auto recordset = std::make_unique<_CRecordsetEx>(&database);
    database.SetQueryTimeout(kStatementTimeout);
    recordset->OpenSql(sql);
    if (!recordset->IsOpen())
        throw database.MakeError(-1);
    return recordset;
}

std::vector<CODBCFieldInfo> DescribeResult(const CRecordset& recordset) {
    const short count = recordset.GetODBCFieldCount();
    std::vector<CODBCFieldInfo> columns(count > 0 ? static_cast<std::size_t>(count) : 0);
    for (short i = 0; i < count; ++i)
        recordset.GetODBCFieldInfo(i, columns[static_cast<std::size_t>(i)]);
    return columns;
}

}  // namespace kortavin::service
