#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "script.h"

namespace kortavin::testing {

// A data source whose every answer a test writes down, reached through the real driver manager:
//
//     ScriptedSource source;
//     source.Statement("SELECT * FROM t").AddColumn("A").AddRow({"1"}).AddRow({Error("22003", "too large")});
//     database.Open(source.ConnectionString());
//     EXPECT_THAT(source.Log(), Contains("SQLExecDirect SELECT * FROM t"));
//     EXPECT_EQ(source.OpenStatements(), 0);
//
// What unixODBC 2.3.11 makes of it for an application that asks for ODBC 2:
// - States of ODBC 3 become those of ODBC 2: 42000 37000, 42S02 S0002, 22018 22005, 22007 22008, 07005 24000,
//   07009 S1002, HYxxx S1xxx. All others pass, and so do ODBC 2 ones, texts and numbers.
// - Column types 91, 92, 93 become 9, 10, 11 in SQLDescribeCol, but not in the rows of SQLColumns.
// - A fetch that fails before any row was fetched leaves the manager before the first row: its own 24000
//   answers SQLGetData although the driver stands on the row. From the second row on the driver is asked.
// - After SQL_STILL_EXECUTING only the same function may be called; nothing closes or frees the statement.
//   SQLNumResultCols, SQLDescribeCol, SQLMoreResults and SQLFetch without a row never leave that state.
// - A cursor that could not be closed (as on a dead connection) makes the next execution fail with 24000.
class ScriptedSource {
  public:
    // SQL_GETDATA_EXTENSIONS is 15 at first: any column, in any order, bound ones too.
    ScriptedSource();
    ~ScriptedSource();
    ScriptedSource(const ScriptedSource&) = delete;
    ScriptedSource& operator=(const ScriptedSource&) = delete;

    // Answers for a statement of exactly this text, and for any other. Asked again, the same text gets the
    // next answer written for it, and the last one from then on. References stay valid.
    Answer& Statement(std::string text);
    Answer& AnyStatement();
    // SQLTables and SQLColumns, their standard columns being there already: for one list of table types or
    // one table name as the driver receives it, or for any.
    Answer& Tables();
    Answer& Tables(std::string types);
    Answer& Columns();
    Answer& Columns(std::string table);

    // What SQLGetInfo answers; other types are an error (HY096). Fails("SQLGetInfo", ...) makes it fail.
    ScriptedSource& DriverName(std::string name);
    ScriptedSource& DbmsName(std::string name);
    // The driver refuses SQLGetData where this doesn't announce it.
    ScriptedSource& GetDataExtensions(int bits);
    ScriptedSource& Info(int type, std::string text);
    ScriptedSource& Info(int type, long long number);

    ScriptedSource& Unsupported(std::string function);
    // By the driver's name for the function: allocating a statement is SQLAllocHandle, SQLSetStmtOption
    // arrives as SQLSetStmtAttr. In the messages of SQLDriverConnect, %CONNECTION% becomes the connection
    // string.
    ScriptedSource& Fails(std::string function, Fault fault);
    // Each answer of the function comes after so many SQL_STILL_EXECUTING; of SQLFetch only before a row.
    // Without a name: of SQLExecDirect, SQLTables, SQLColumns, SQLFetch and SQLGetData.
    ScriptedSource& StillExecuting(std::string function, int times);
    ScriptedSource& StillExecuting(int times);

    // Both write the script as it stands; a connection reads it when it opens. `more` is appended, such as
    // "UID=scott;PWD=tiger;". The second one goes through a registry file that each program with this class
    // uses from its start: the machine's, with the drivers Scripted and ODBCJT32.DLL added.
    std::string ConnectionString(std::string_view more = {}) const;
    std::string RegisteredConnectionString(std::string_view driver, std::string_view more = {}) const;

    // What the driver was asked, one line a call, such as "SQLBindCol 2, type 1, size 256",
    // "SQLTables NULL, NULL, NULL, 'TABLE'", "SQLSetStmtAttr 0, 30" (attribute, value). Control characters
    // are written as \xNN.
    std::vector<std::string> Log() const;
    // The lines of one function, without those that were answered with SQL_STILL_EXECUTING.
    std::vector<std::string> Calls(std::string_view function) const;
    // Neither counts as closed because its parent was.
    std::ptrdiff_t OpenStatements() const;
    std::ptrdiff_t OpenConnections() const;

  private:
    std::string Written(std::string_view driver, std::string_view more) const;
    std::filesystem::path ScriptPath() const { return m_folder / "script.json"; }

    std::filesystem::path m_folder;
    Script m_script;
};

}  // namespace kortavin::testing
