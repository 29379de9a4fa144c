#pragma once

#include "kortavin/base/file.h"
#include "kortavin/db/geodatabase.h"
#include "kortavin/odbc/fieldinfo.h"

namespace kortavin {

// The library's query services for a host: statements tried out and described, and their rows exported. The
// connection belongs to the host and must live for as long as a service is called. Without one, or while it
// is closed, every statement counts as failed. Statements run with a timeout of 999 seconds, which stays set
// on the connection.
class KORTAVIN_API CQuerySql {
  public:
    CQuerySql();  // without a connection
    explicit CQuerySql(CGeoDatabase* database);
    CQuerySql(const CQuerySql&) = delete;
    CQuerySql& operator=(const CQuerySql&) = delete;
    ~CQuerySql();

    void SetDatabase(CGeoDatabase* database);

    // Runs the query wizard, in which the user composes a statement. 1 and the statement in `sql` when it was
    // confirmed; otherwise 0, and `sql` stays as it was: also without an open connection, when nothing opens.
    // The tables that the user chose are there again in the next run, also after a cancelled one. Throws
    // CNotSupportedException when the driver has no catalog of tables, and CResourceException when no window
    // can be opened (no display); the host's source of resources is as it was in every case.
    int ConstructQuery(CString& sql);

    // Executes a statement and hands out its open recordset (a _CRecordsetEx), which the caller releases with
    // ReleaseRecordset. Null when it fails, also for lack of memory, without any message.
    void* GetReocrd(CString& sql);
    static void ReleaseRecordset(void* recordset);

    // 1 when the statement could be executed (it has been), otherwise 0.
    int InspectSyntax(CString& sql);

    // The descriptions of a statement's result columns, `count` of them, to be released with
    // ReleaseFieldsInfo (or by delete[] with the same allocator). Null, and 0, when the statement fails; a
    // statement without a result set gives an array of 0 elements.
    CODBCFieldInfo* GetFieldsInfo(CString& sql, int& count);
    // The same for a recordset of GetReocrd (not null), which stays open.
    CODBCFieldInfo* GetFieldsInfo(void* recordset, int& count);
    static void ReleaseFieldsInfo(CODBCFieldInfo* fieldsInfo);

    // The name of a column's SQL type, with blanks up to 18 characters.
    CString GetFieldTypeStr(CODBCFieldInfo& info);

    // Writes the rows of a statement to an open file, from its present position on. `format`: 1 comma, 2
    // blank, 3 tab, 10 binary; `quoteMode`: 2 single quotes, 3 double quotes, any other none; `header`:
    // whether column names (the binary header) come first. 1 when all rows are written; 0 for a null file, a
    // statement that fails (nothing is written then), or an error while writing rows or setting the binary
    // row count behind them (what was written until then stays, and the count includes the row begun). Errors
    // while writing the header reach the caller: whatever the file throws. A host that wants to know why, or
    // to show progress, uses service/exportrows.h.
    int QueryDataToFile(CFile* file, int format, int quoteMode, int header, CString sql);

  protected:
    // Writes one value and what follows it in the format: the separator, or for a line's last value (`isLast`
    // not 0) the line end; format 10 has the length before it and nothing behind. Throws what the file
    // throws.
    void WriteByFormat(CFile* file, CString& value, int format, int isLast);

  private:
    CGeoDatabase* m_pDatabase = nullptr;  // not owned
    CStringArray m_Tables;                // all tables and views
    CStringArray m_SelTables;             // those chosen in the wizard; kept from run to run
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CQuerySql;
#endif
