#include "kortavin/odbc/recordset.h"

#include <climits>

#include "kortavin/odbc/diagnostics.h"
#include "kortavin/odbc/fieldexchange.h"
#include "kortavin/odbc/handles.h"
#include "kortavin/odbc/textrow.h"

namespace kortavin {

using odbc::Succeeded;
using odbc::WhileExecuting;

namespace {

bool IsBinary(SWORD sqlType) {
    return sqlType == SQL_BINARY || sqlType == SQL_VARBINARY || sqlType == SQL_LONGVARBINARY;
}

}  // namespace

// The statement stands last, so that it goes before the buffers that are bound to it.
struct CRecordset::Result {
    std::unique_ptr<CFieldExchange> fields;
    std::unique_ptr<odbc::TextRow> textRow;
    odbc::StatementHandle statement;
};

constinit const CRuntimeClass CRecordset::classCRecordset{"CRecordset", &CObject::classCObject};

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
    m_result.reset();
    m_hstmt = nullptr;
    m_isOpen = FALSE;
    m_isBOF = m_isEOF = TRUE;
}

void CRecordset::SetState(UINT openType, const char* sql, DWORD options) {
    if (openType != forwardOnly)
        throw CNotSupportedException("Only forward-only recordsets are supported.");
    // A result that is still open ends here: its statement cannot run another.
    Close();
    WithMemoryErrors([&] { m_strSQL = sql; });
    m_options = options;
}

BOOL CRecordset::AllocHstmt() {
    if (m_hstmt != nullptr)
        return TRUE;
    if (m_pDatabase == nullptr || m_pDatabase->m_hdbc == nullptr)
        return FALSE;
    auto result = WithMemoryErrors([] { return std::make_unique<Result>(); });
    if (!Succeeded(result->statement.Allocate(m_pDatabase->m_hdbc)))
        return FALSE;
    m_hstmt = result->statement.Get();
    m_result = std::move(result);
    return TRUE;
}

void CRecordset::OnSetOptions(HSTMT statement) {
    m_pDatabase->OnSetOptions(statement);
}

void CRecordset::AllocStatusArrays() {
    m_result->fields = std::make_unique<CFieldExchange>(*m_pDatabase, m_hstmt);
}

void CRecordset::PrepareAndExecute() {
    std::string sql = m_pDatabase->ToNarrow(m_strSQL.View());
    auto* text = reinterpret_cast<SQLCHAR*>(sql.data());
    const bool direct = (m_options & executeDirect) != 0;
    RETCODE code = WhileExecuting(
        [&] { return direct ? SQLExecDirect(m_hstmt, text, SQL_NTS) : SQLPrepare(m_hstmt, text, SQL_NTS); });
    if (!direct && Succeeded(code))
        code = WhileExecuting([&] { return SQLExecute(m_hstmt); });
    // A statement that touched no row was executed all the same.
    if (!Succeeded(code) && code != SQL_NO_DATA)
        ThrowDBException(code);
}

void CRecordset::AllocRowset() {
    if (m_nFields == 0 && m_nResultCols > 0)
        m_result->textRow = std::make_unique<odbc::TextRow>(*m_pDatabase, m_hstmt, m_fieldInfos);
}

void CRecordset::PreBindFields() {}

void CRecordset::BindFields() {
    if (m_nFields == 0)
        return;
    m_result->fields->BeginBinding();
    DoFieldExchange(m_result->fields.get());
}

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

void CRecordset::RequireOpen() const {
    if (!m_isOpen)
        throw odbc::MakeOwnError(SQL_ERROR, "24000", "The recordset is not open.");
}

void CRecordset::MoveNext() {
    RequireOpen();
    if (m_isEOF)
        return;
    WithMemoryErrors([this] {
        m_isEOF = !FetchRow();
        if (m_isEOF || !m_result->fields)
            return;
        m_result->fields->BeginLoading();
        DoFieldExchange(m_result->fields.get());
    });
}

bool CRecordset::FetchRow() {
    if (m_result->textRow)
        return m_result->textRow->Fetch();
    if (m_result->fields)
        m_result->fields->ForgetLengths();
    const RETCODE code = WhileExecuting([this] { return SQLFetch(m_hstmt); });
    if (!Succeeded(code) && code != SQL_NO_DATA)
        ThrowDBException(code);
    return code != SQL_NO_DATA;
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
    if (m_isEOF || !m_result->textRow)
        throw odbc::MakeOwnError(SQL_ERROR, "24000", "There is no current row.");
    WithMemoryErrors([&] {
        const auto narrow = m_result->textRow->Read(index);
        if (!narrow)
            return value.Empty();
        const auto& charset = m_pDatabase->GetNarrowCharset();
        std::string& text = value.GetStorage();
        // Where a driver hands the bytes of a binary column out as they are, they are no text to convert.
        if (IsBinary(m_fieldInfos[static_cast<std::size_t>(index)].m_nSQLType))
            text.assign(*narrow);
        else if (!charset.ToGbk(text, *narrow))
            ThrowNotUsable(index, ("is not valid text in the character set " + charset.GetName()).c_str());
        if (text.size() > INT_MAX) {
            value.Empty();
            ThrowNotUsable(index, "is longer than a text can be");
        }
    });
}

void CRecordset::ThrowNotUsable(short index, const char* why) const {
    CString text;
    text.Format("The value of column %d (%s) %s", index + 1,
                m_fieldInfos[static_cast<std::size_t>(index)].m_strName.GetString(), why);
    throw odbc::MakeOwnError(CDBException::kTextNotConvertible, "22021", text);
}

void CRecordset::ThrowDBException(RETCODE code) const {
    if (code == CDBException::kFieldIndexOutOfRange)
        throw odbc::MakeOwnError(code, "07009", "The result has no column with this index.");
    throw odbc::MakeError(code, m_pDatabase, m_hstmt);
}

}  // namespace kortavin
