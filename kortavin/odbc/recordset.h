#pragma once

#include <memory>
#include <new>
#include <vector>

#include "kortavin/base/object.h"
#include "kortavin/odbc/database.h"
#include "kortavin/odbc/fieldinfo.h"

namespace kortavin {

class CFieldExchange;

// A read-only, forward-only result of a statement or a catalog call, one row at a time. Derived classes say
// in Open what is executed. Columns reach the caller either through the members that DoFieldExchange binds,
// or, where no field is bound, as texts.
class KORTAVIN_API CRecordset : public CObject {
  public:
    enum OpenType : UINT { forwardOnly = 2 };
    enum OpenOptions : DWORD { none = 0, readOnly = 4, executeDirect = 0x2000 };

    static const CRuntimeClass classCRecordset;

    CRecordset(const CRecordset&) = delete;
    CRecordset& operator=(const CRecordset&) = delete;
    ~CRecordset() override;  // closes
    const CRuntimeClass* GetRuntimeClass() const override;

    // Runs `sql` and stands on the first row. `openType` is forwardOnly; CNotSupportedException for any
    // other. FALSE when no statement can be allocated. Throws CDBException and CMemoryException, closed
    // again. What was open is closed first.
    virtual BOOL Open(UINT openType, const char* sql, DWORD options) = 0;
    // Ends the result and frees the statement; the recordset can be opened again.
    virtual void Close();
    BOOL IsOpen() const { return m_isOpen; }
    // Throws CDBException when it is not: never opened, or closed, if only because its connection was.
    void RequireOpen() const;

    // An empty result is at both marks at once.
    BOOL IsBOF() const { return m_isBOF; }
    BOOL IsEOF() const { return m_isEOF; }
    // The next row, or the end mark. Nothing happens at the end. Throws CDBException, also when the recordset
    // is not open, and CMemoryException.
    void MoveNext();

    // -1 while the result is not described.
    short GetODBCFieldCount() const { return m_nResultCols; }
    // The description of column `index` (from 0). Throws CDBException (kFieldIndexOutOfRange) outside.
    void GetODBCFieldInfo(short index, CODBCFieldInfo& info) const;

    // How to connect, and what to select, when nothing else is told.
    virtual CString GetDefaultConnect();
    virtual CString GetDefaultSQL();
    // Exchanges the bound members, one RFX call for each of the m_nFields fields.
    virtual void DoFieldExchange(CFieldExchange* exchange);

    HSTMT m_hstmt = nullptr;           // null while closed
    CDatabase* m_pDatabase = nullptr;  // not owned; null when the connection went first

  protected:
    explicit CRecordset(CDatabase* database);

    // The steps of Open, for derived classes. Each throws CDBException where the data source fails.
    void SetState(UINT openType, const char* sql, DWORD options);
    BOOL AllocHstmt();  // FALSE when the driver has no statement to give
    virtual void OnSetOptions(HSTMT statement);
    void AllocStatusArrays();
    void PrepareAndExecute();
    void AllocRowset();
    virtual void PreBindFields();
    void BindFields();
    // Sets both marks for the beginning of the result, and fetches its first row if it has columns.
    void FetchFirst();
    // Forgets the description, so that a result is described afresh.
    void ForgetDescription();

    // Runs a part of Open: an error closes the recordset and goes on to the caller.
    template <class Body>
    void ClosingOnError(Body body);

    // The current row's column `index` (from 0, in range) as text; NULL is empty. Throws CDBException, also
    // where there is no current row or the text is not valid in the connection's character set, and
    // CMemoryException.
    void ReadColumnText(short index, CString& value);

    [[noreturn]] void ThrowDBException(RETCODE code) const;

    UINT m_nFields = 0;  // bound fields
    UINT m_nParams = 0;
    short m_nResultCols = -1;
    std::vector<CODBCFieldInfo> m_fieldInfos;  // one for each result column

  private:
    friend class CDatabase;

    struct Result;

    void ReleaseStatement();
    bool FetchRow();
    [[noreturn]] void ThrowNotUsable(short index, const char* why) const;

    BOOL m_isOpen = FALSE;
    BOOL m_isBOF = TRUE;
    BOOL m_isEOF = TRUE;
    DWORD m_options = none;
    CString m_strSQL;
    std::unique_ptr<Result> m_result;  // the statement and its row buffers; null while closed
};

template <class Body>
void CRecordset::ClosingOnError(Body body) {
    try {
        body();
    } catch (const std::bad_alloc&) {
        Close();
        throw CMemoryException();
    } catch (...) {
        Close();
        throw;
    }
}

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CRecordset;
#endif
