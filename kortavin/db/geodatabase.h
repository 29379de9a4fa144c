#pragma once

#include "kortavin/base/arrays.h"
#include "kortavin/odbc/database.h"

namespace kortavin {

// The connection that a host opens and hands to the library: a CDatabase with a catalog of its own. Lists are
// the caller's. None of the operations asks whether the connection is open. Errors of the data source and of
// memory are shown in a message box; a driver without the catalog function gives CNotSupportedException.
class KORTAVIN_API CGeoDatabase : public CDatabase {
  public:
    CGeoDatabase();
    ~CGeoDatabase() override;

    // Empties the list and fills it with the names of all tables and views, as the driver gives and orders
    // them. FALSE when the catalog could not be opened; after an error while reading, the names read so far
    // are there and the answer is TRUE.
    BOOL GetAllTables(CStringArray& tables);

    // Appends the names of a table's columns, bracketed for use in SQL: a name with a blank as [a b]; over
    // the Jet driver instead a name with a dot as [a].[b]. FALSE when the table has no columns or does not
    // exist. After an error the names read so far are there and the answer is TRUE.
    BOOL GetColumnList(const CString& table, CStringArray& columns);

    // TRUE when the driver's file is ODBCJT32.DLL, in any letter case. FALSE when it does not tell.
    BOOL IsODBCJetDriver();
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGeoDatabase;
#endif
