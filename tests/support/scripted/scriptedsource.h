#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script.h"

namespace kortavin::testing {

// A data source whose every answer a test writes down, reached through the real driver manager and
// a registry of its own:
//
//     ScriptedSource source;
//     source.Statement("SELECT * FROM t").AddColumn("A").AddRow({"1"}).AddRow({Error("22003", "too large")});
//     database.Open(source.ConnectionString());
//     EXPECT_THAT(source.Calls("SQLExecDirect"), ElementsAre("SQLExecDirect SELECT * FROM t"));
//     EXPECT_EQ(source.log.openStatements, 0);
//
// What unixODBC 2.3.11 makes of it for an application that asks for ODBC 2:
// - States of ODBC 3 become those of ODBC 2: 42000 37000, 42S02 S0002, 22018 22005, 22007 22008, 07005 24000,
//   07009 S1002, HYxxx S1xxx. All others pass, and so do ODBC 2 ones, texts and numbers.
// - A fetch that fails before any row was fetched leaves the manager before the first row: its own 24000
//   answers SQLGetData although the driver stands on the row. From the second row on the driver is asked.
// - After SQL_STILL_EXECUTING only the same function may be called; nothing closes or frees the statement.
//   SQLFetch without a row never leaves that state.
class ScriptedSource : public Script {
  public:
    ScriptedSource();
    ScriptedSource(const ScriptedSource&) = delete;
    ScriptedSource& operator=(const ScriptedSource&) = delete;

    // What a statement of exactly this text answers. The reference stays valid.
    Answer& Statement(const std::string& text) { return statements[text]; }
    // By the driver's name for the function: allocating a statement is SQLAllocHandle, SQLSetStmtOption
    // arrives as SQLSetStmtAttr.
    void Fails(std::string function, Fault fault) {
        faults.emplace_back(std::move(function), std::move(fault));
    }

    // A connection takes the script as it stands when it opens, and keeps the log here: the source has to
    // outlive it. `more` is appended, such as "UID=scott;PWD=tiger;".
    std::string ConnectionString(std::string_view more = {});
    std::vector<std::string> Calls(std::string_view function) const;
};

}  // namespace kortavin::testing
