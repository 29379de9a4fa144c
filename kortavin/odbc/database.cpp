#include "kortavin/odbc/database.h"

#include <algorithm>
#include <vector>

#include "kortavin/odbc/charsetdetection.h"
#include "kortavin/odbc/diagnostics.h"
#include "kortavin/odbc/handles.h"
#include "kortavin/odbc/recordset.h"
#include "kortavin/odbc/secrets.h"

namespace kortavin {

using base::NarrowCharset;
using odbc::Succeeded;
using odbc::WhileExecuting;

struct CDatabase::State {
    odbc::EnvironmentHandle environment;
    odbc::ConnectionHandle connection;  // declared behind the environment, so it goes first
    NarrowCharset charset = NarrowCharset::OfEnvironment();
    bool charsetIsSet = false;
    odbc::SecretFilter secrets;
    std::vector<CRecordset*> recordsets;  // those made on this connection
};

CDatabase::CDatabase() : m_state(std::make_unique<State>()) {}

CDatabase::~CDatabase() {
    CDatabase::Close();
    for (CRecordset* recordset : m_state->recordsets)
        recordset->m_pDatabase = nullptr;
}

void CDatabase::AddRecordset(CRecordset& recordset) {
    m_state->recordsets.push_back(&recordset);
}

void CDatabase::RemoveRecordset(CRecordset& recordset) {
    std::erase(m_state->recordsets, &recordset);
}

void CDatabase::Open(const CString& connectionString) {
    Close();
    try {
        WithMemoryErrors([&] { Connect(connectionString); });
    } catch (...) {
        Close();
        throw;
    }
}

void CDatabase::Connect(const CString& connectionString) {
    State& state = *m_state;
    state.secrets = odbc::SecretFilter(connectionString.View());
    if (!state.charsetIsSet)
        state.charset = NarrowCharset::OfEnvironment();
    std::string narrow = ToNarrow(connectionString.View());

    // ODBC 2 behaviour: dates arrive as 9, 10 and 11, and texts under their narrow type codes.
    if (!Succeeded(state.environment.Allocate(SQL_NULL_HANDLE)) ||
        !Succeeded(SQLSetEnvAttr(state.environment.Get(), SQL_ATTR_ODBC_VERSION,
                                 reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC2), 0)) ||  // NOLINT
        !Succeeded(state.connection.Allocate(state.environment.Get())))
        throw odbc::MakeOwnError(SQL_ERROR, "HY000", "The driver manager cannot be used.");

    const HDBC connection = state.connection.Get();
    const SQLRETURN code = SQLDriverConnect(connection, nullptr, reinterpret_cast<SQLCHAR*>(narrow.data()),
                                            SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT);
    if (!Succeeded(code))
        throw odbc::MakeConnectError(code, *this, connection);
    m_hdbc = connection;

    if (state.charsetIsSet)
        return;
    const std::string detected = odbc::DetectCharset(connection);
    if (detected.empty())
        return;
    auto charset = NarrowCharset::ByName(detected);
    if (!charset) {
        const CString text = CString("The connection's character set is not known here: ") + detected.c_str();
        throw odbc::MakeOwnError(CDBException::kUnknownCharset, "2C000", text);
    }
    state.charset = std::move(*charset);
}

void CDatabase::Close() {
    State& state = *m_state;
    for (CRecordset* recordset : state.recordsets)
        recordset->ReleaseStatement();
    m_hdbc = nullptr;
    state.connection.Disconnect();
    state.environment.Free();
}

BOOL CDatabase::SetNarrowCharset(const std::string& name) {
    State& state = *m_state;
    auto charset = name.empty() ? NarrowCharset::OfEnvironment() : NarrowCharset::ByName(name);
    if (!charset)
        return FALSE;
    state.charset = std::move(*charset);
    state.charsetIsSet = !name.empty();
    return TRUE;
}

const NarrowCharset& CDatabase::GetNarrowCharset() const {
    return m_state->charset;
}

void CDatabase::OnSetOptions(HSTMT statement) {
    if (m_dwQueryTimeout == 0)
        return;
    const SQLULEN seconds = m_dwQueryTimeout;
    SQLSetStmtAttr(statement, SQL_ATTR_QUERY_TIMEOUT, reinterpret_cast<SQLPOINTER>(seconds), 0);  // NOLINT
}

void CDatabase::ExecuteSQL(const CString& sql) {
    WithMemoryErrors([&] { Execute(sql); });
}

void CDatabase::Execute(const CString& sql) {
    std::string narrow = ToNarrow(sql.View());
    odbc::StatementHandle statement;
    SQLRETURN code = statement.Allocate(m_hdbc);
    if (!Succeeded(code))
        throw MakeError(code);
    OnSetOptions(statement.Get());
    auto* text = reinterpret_cast<SQLCHAR*>(narrow.data());
    code = WhileExecuting([&] { return SQLExecDirect(statement.Get(), text, SQL_NTS); });
    if (!Succeeded(code) && code != SQL_NO_DATA)
        throw odbc::MakeError(code, this, statement.Get());
}

void CDatabase::BeginTrans() {
    SetAutoCommit(false);
}

void CDatabase::CommitTrans() {
    EndTransaction(SQL_COMMIT);
}

void CDatabase::Rollback() {
    EndTransaction(SQL_ROLLBACK);
}

void CDatabase::SetAutoCommit(bool on) {
    const SQLULEN value = on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF;
    const SQLRETURN code =
        SQLSetConnectAttr(m_hdbc, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(value), 0);  // NOLINT
    if (!Succeeded(code))
        throw MakeError(code);
}

void CDatabase::EndTransaction(short completion) {
    const SQLRETURN code = SQLEndTran(SQL_HANDLE_DBC, m_hdbc, completion);
    if (!Succeeded(code))
        throw MakeError(code);
    SetAutoCommit(true);
}

CDBException CDatabase::MakeError(RETCODE code) const {
    return odbc::MakeError(IsOpen() ? code : RETCODE{SQL_INVALID_HANDLE}, this, nullptr);
}

CString CDatabase::MakeReadable(std::string_view narrow) const {
    const std::string gbk = m_state->charset.ToGbkForMessage(narrow);
    return CString(m_state->secrets.Apply(gbk));
}

std::string CDatabase::ToNarrow(std::string_view gbk) const {
    odbc::RefuseZeroBytes(gbk);
    std::string narrow;
    if (m_state->charset.FromGbk(narrow, gbk))
        return narrow;
    const CString text = CString("The text has no form in the connection's character set ") +
                         m_state->charset.GetName().c_str();
    throw odbc::MakeOwnError(CDBException::kTextNotConvertible, "22021", text);
}

std::optional<CString> CDatabase::FromNarrow(std::string_view narrow, bool wasCut) const {
    static constexpr int kLongestCharacter = 4;
    std::string gbk;
    bool converted = m_state->charset.ToGbk(gbk, narrow);
    for (int i = 1; i < kLongestCharacter && !converted && wasCut && !narrow.empty(); ++i) {
        narrow.remove_suffix(1);
        converted = m_state->charset.ToGbk(gbk, narrow);
    }
    if (!converted)
        return std::nullopt;
    return CString(std::move(gbk));
}

}  // namespace kortavin
