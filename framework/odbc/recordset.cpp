#include "framework/odbc/recordset.h"

#include <algorithm>

#include "framework/odbc/diagnostics.h"
#include "framework/odbc/fieldexchange.h"
#include "framework/odbc/handles.h"
#include "framework/odbc/textrow.h"

using kortavin::odbc::Succeeded;
using kortavin::odbc::WhileExecuting;

const CRuntimeClass CRecordset::classCRecordset{"CRecordset", &CObject::classCObject};

CRecordset::CRecordset(CDatabase* database) : m_pDatabase(database) {
    if (m_pDatabase != nullptr)
        m_pDatabase->AddRecordset(*this);
}

CRecordset::~CRecordset() {
    ReleaseStatement();
    if (m_pDatabase != nullptr)
        m_pDatabase->RemoveRecordset(*this);
}

const CRuntimeClass* CRecordset::GetRuntimeClass() const {
    return &classCRecordset;
}

void CRecordset::Close() {
    ReleaseStatement();
}

void CRecordset::ReleaseStatement() {
    if (m_hstmt != nullptr)
        SQLFreeHandle(SQL_HANDLE_STMT, m_hstmt);
    m_hstmt = nullptr;
    m_textRow.reset();
    m_fields.reset();
    m_isOpen = FALSE;
    m_isBOF = m_isEOF = TRUE;
}

void CRecordset::SetState(UINT /*openType*/, const char* sql, DWORD options) {
    // A result that is still open ends here: its statement cannot run another.
    Close();
    m_strSQL = sql;
    m_options = options;
}

BOOL CRecordset::AllocHstmt() {
    if (m_hstmt != nullptr)
        return TRUE;
    const HDBC connection = m_pDatabase != nullptr ? m_pDatabase->m_hdbc : nullptr;
    if (connection == nullptr || !Succeeded(SQLAllocHandle(SQL_HANDLE_STMT, connection, &m_hstmt)))
        m_hstmt = nullptr;
    return m_hstmt != nullptr;
}

void CRecordset::OnSetOptions(HSTMT statement) {
    m_pDatabase->OnSetOptions(statement);
}

void CRecordset::AllocStatusArrays() {
    m_fields = std::make_unique<CFieldExchange>(*m_pDatabase, m_hstmt);
}

void CRecordset::PrepareAndExecute() {
    std::string sql = m_pDatabase->ToNarrow(m_strSQL.View());
    auto* text = reinterpret_cast<SQLCHAR*>(sql.data());
    const bool direct = (m_options & executeDirect) != 0;
    SQLRETURN code = WhileExecuting(
        [&] { return direct ? SQLExecDirect(m_hstmt, text, SQL_NTS) : SQLPrepare(m_hstmt, text, SQL_NTS); });
    if (!direct && Succeeded(code))
        code = WhileExecuting([&] { return SQLExecute(m_hstmt); });
    // A statement that touched no row was executed all the same.
    if (!Succeeded(code) && code != SQL_NO_DATA)
        ThrowDBException(code);
}

void CRecordset::AllocRowset() {
    if (m_nFields > 0) {
        m_fields->BeginBinding();
        DoFieldExchange(m_fields.get());
    } else if (m_nResultCols > 0) {
        m_textRow = std::make_unique<kortavin::odbc::TextRow>(*m_pDatabase, m_hstmt, m_fieldInfos);
    }
}

void CRecordset::PreBindFields() {}

void CRecordset::FetchFirst() {
    m_isOpen = TRUE;
    m_isEOF = m_nResultCols <= 0;
    MoveNext();
    m_isBOF = m_isEOF;
}

void CRecordset::ForgetDescription() {
    m_nResultCols = -1;
    m_fieldInfos.clear();
}

void CRecordset::MoveNext() {
    if (m_isEOF)
        return;
    const RETCODE code = FetchRow();
    if (code == SQL_NO_DATA)
        m_isEOF = TRUE;
    else if (!Succeeded(code))
        ThrowDBException(code);
    else if (m_fields)
        LoadFields();
}

RETCODE CRecordset::FetchRow() {
    try {
        return m_textRow ? m_textRow->Fetch() : WhileExecuting([&] { return SQLFetch(m_hstmt); });
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

void CRecordset::LoadFields() {
    m_fields->BeginLoading();
    DoFieldExchange(m_fields.get());
}

void CRecordset::GetODBCFieldInfo(short index, CODBCFieldInfo& info) const {
    if (index < 0 || index >= m_nResultCols)
        ThrowDBException(CDBException::kFieldIndexOutOfRange);
    info = m_fieldInfos[static_cast<std::size_t>(index)];
}

CString CRecordset::GetDefaultConnect() {
    return {};
}

CString CRecordset::GetDefaultSQL() {
    return {};
}

void CRecordset::DoFieldExchange(CFieldExchange* /*exchange*/) {}

void CRecordset::ReadColumnText(short index, CString& value) {
    if (!m_textRow)
        ThrowDBException(CDBException::kFieldIndexOutOfRange);
    try {
        const auto narrow = m_textRow->Read(index);
        if (!narrow) {
            value.Empty();
            return;
        }
        m_converted.clear();
        if (!m_pDatabase->GetNarrowCharset().ToGbk(m_converted, *narrow))
            ThrowNotConvertible(index);
        value.Swap(m_converted);
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

void CRecordset::ThrowNotConvertible(short index) const {
    CString what;
    what.Format("The value of column %d (%s)", index + 1,
                m_fieldInfos[static_cast<std::size_t>(index)].m_strName.GetString());
    throw kortavin::odbc::MakeConversionError(what, *m_pDatabase);
}

void CRecordset::ThrowDBException(RETCODE code) const {
    if (code == CDBException::kFieldIndexOutOfRange)
        throw kortavin::odbc::MakeOwnError(code, "07009", "The result has no column with this index.");
    throw kortavin::odbc::MakeError(code, m_pDatabase, m_hstmt);
}
