#include "kortavin/db/recordsetex.h"

#include <algorithm>
#include <array>

#include "kortavin/base/codepage.h"
#include "kortavin/odbc/diagnostics.h"
#include "kortavin/odbc/handles.h"
#include "kortavin/odbc/piecereader.h"

namespace kortavin {

using odbc::Succeeded;
using odbc::WhileExecuting;

constinit const CRuntimeClass _CRecordsetEx::class_CRecordsetEx{"_CRecordsetEx",
                                                                &CRecordset::classCRecordset};

_CRecordsetEx::_CRecordsetEx(CDatabase* database) : CRecordset(database) {}

_CRecordsetEx::~_CRecordsetEx() = default;

const CRuntimeClass* _CRecordsetEx::GetRuntimeClass() const {
    return &class_CRecordsetEx;
}

BOOL _CRecordsetEx::Open(UINT openType, const char* sql, DWORD options) {
    SetState(openType, sql, options);
    if (!AllocHstmt())
        return FALSE;
    ClosingOnError([this] {
        OnSetOptions(m_hstmt);
        const bool hasFields = m_nFields > 0 || m_nParams > 0;
        if (hasFields)
            AllocStatusArrays();
        PrepareAndExecute();
        DescribeColumns();
        AllocRowset();
        if (!hasFields && (m_nFields > 0 || m_nParams > 0))
            AllocStatusArrays();
        PreBindFields();
        BindFields();
        FetchFirst();
    });
    return TRUE;
}

void _CRecordsetEx::OpenSql(const CString& sql) {
    odbc::RefuseZeroBytes(sql.View());
    Open(forwardOnly, sql, executeDirect);
}

void _CRecordsetEx::DescribeColumns() {
    ForgetDescription();
    short count = 0;
    const RETCODE code = WhileExecuting([&] { return SQLNumResultCols(m_hstmt, &count); });
    if (!Succeeded(code))
        ThrowDBException(code);
    m_fieldInfos.resize(static_cast<std::size_t>(std::max<short>(count, 0)));
    for (int column = 1; column <= count; ++column)
        DescribeColumn(column);
    m_nResultCols = count;
}

void _CRecordsetEx::DescribeColumn(int column) {
    static constexpr std::size_t kLongestName = 256;
    // A name in the driver's character set may be longer than it is in GBK. The last byte is not offered, and
    // ends the name where a driver forgets to.
    std::array<char, 4 * kLongestName + 2> name{};
    constexpr SQLSMALLINT kRoom = name.size() - 1;
    SQLSMALLINT length = 0;
    SQLULEN precision = 0;
    CODBCFieldInfo& info = m_fieldInfos[static_cast<std::size_t>(column - 1)];
    const RETCODE code = WhileExecuting([&] {
        return SQLDescribeCol(m_hstmt, static_cast<SQLUSMALLINT>(column),
                              reinterpret_cast<SQLCHAR*>(name.data()), static_cast<SQLSMALLINT>(name.size()),
                              &length, &info.m_nSQLType, &precision, &info.m_nScale, &info.m_nNullability);
    });
    if (!Succeeded(code))
        ThrowDBException(code);
    info.m_nPrecision = static_cast<DWORD>(std::min<SQLULEN>(precision, UINT32_MAX));

    const auto text = m_pDatabase->FromNarrow(name.data(), length >= kRoom);
    if (!text) {
        CString what;
        what.Format("The name of column %d", column);
        throw odbc::MakeConversionError(what, *m_pDatabase);
    }
    info.m_strName = CString(base::CutAtCharacter(text->View(), kLongestName));
}

void _CRecordsetEx::ReadFieldText(short index, CString& value) {
    if (m_nResultCols <= 0)
        return;
    if (index < 0 || index >= m_nResultCols)
        ThrowDBException(CDBException::kFieldIndexOutOfRange);
    ReadColumnText(index, value);
}

LONGLONG _CRecordsetEx::FetchData(CDatabase* database, HSTMT statement, SWORD column, SWORD targetType,
                                  void* buffer, LONGLONG bufferLength, SWORD /*sqlType*/) {
    SQLLEN length = SQL_NULL_DATA;
    odbc::GetData(database, statement, static_cast<SQLUSMALLINT>(column), targetType, buffer, bufferLength,
                  length);
    return length;
}

}  // namespace kortavin
