#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "kortavin/base/codepage.h"
#include "kortavin/base/object.h"
#include "kortavin/odbc/dbexception.h"
#include "kortavin/odbc/odbctypes.h"

namespace kortavin {

class CRecordset;

// A connection to an ODBC data source. All texts that go through it are GBK here and in the connection's
// narrow character set on the driver's side; statements and names are converted whole or refused with an
// error. One connection and its recordsets serve one thread.
class KORTAVIN_API CDatabase : public CObject {
  public:
    CDatabase();
    CDatabase(const CDatabase&) = delete;
    CDatabase& operator=(const CDatabase&) = delete;
    ~CDatabase() override;  // closes

    // Opens by an ODBC connection string ("DSN=...;UID=..." or "Driver=...;..."), never asking anybody for
    // more. Throws CDBException; the connection is then closed. A connection that is open is closed first.
    // The string is not kept, and its passwords appear in no error text.
    virtual void Open(const CString& connectionString);
    // Ends the connection; its open recordsets are closed, an open transaction is rolled back.
    virtual void Close();
    BOOL IsOpen() const { return m_hdbc != nullptr; }

    // The character set in which the driver takes and gives narrow text, by its IANA name ("UTF-8", "GBK",
    // "windows-1252"). To be told before Open; FALSE when the name is not known. Without it, or with an empty
    // name, Open finds it: SQLite UTF-8, PostgreSQL its client encoding, MariaDB and MySQL their result
    // character set, any other the process's locale.
    BOOL SetNarrowCharset(const std::string& name);
    // The one in use, or last in use; before the first Open the one that was set, or the process's.
    const base::NarrowCharset& GetNarrowCharset() const;

    // Seconds after which a statement is given up, for every statement from now on; 0 (as at first) is no
    // limit. A driver that knows no such limit works without.
    void SetQueryTimeout(DWORD seconds) { m_dwQueryTimeout = seconds; }
    DWORD GetQueryTimeout() const { return m_dwQueryTimeout; }
    // Called for every statement before it is executed.
    virtual void OnSetOptions(HSTMT statement);

    // Executes a statement whose rows, if any, nobody wants. Throws CDBException, also on a closed
    // connection, and CMemoryException.
    void ExecuteSQL(const CString& sql);

    // A transaction: what is executed between is kept by CommitTrans or undone by Rollback (or by Close).
    // Each throws CDBException; after a CommitTrans that failed the transaction is still open.
    void BeginTrans();
    void CommitTrans();
    void Rollback();

    // The error for a call on the connection that failed with `code` just now.
    CDBException MakeError(RETCODE code) const;

    // A text of the driver's as people may read it: in GBK, without passwords, bytes that are no text
    // escaped.
    CString MakeReadable(std::string_view narrow) const;
    // A text in the connection's narrow character set, for the driver. Throws CDBException where it has none.
    std::string ToNarrow(std::string_view gbk) const;

    // A text that the driver gave, in GBK; nothing where it is no text in the connection's character set. Of
    // a text that was cut to a buffer, part of a character at the end does not count.
    std::optional<CString> FromNarrow(std::string_view narrow, bool wasCut) const;

    // The native connection handle; null while closed.
    HDBC m_hdbc = nullptr;

  private:
    friend class CRecordset;
    struct State;

    void AddRecordset(CRecordset& recordset);
    void RemoveRecordset(CRecordset& recordset);
    void Connect(const CString& connectionString);
    void Execute(const CString& sql);
    void SetAutoCommit(bool on);
    void EndTransaction(short completion);

    DWORD m_dwQueryTimeout = 0;
    std::unique_ptr<State> m_state;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CDatabase;
#endif
