#pragma once

#include <memory>
#include <span>

#include "kortavin/db/geodatabase.h"

namespace kortavin {

// Adds rows to one table by a statement that is prepared once. Names are those of the catalog and are quoted
// as the driver wants it. Whoever wants all rows or none makes it a transaction of the connection's.
class KORTAVIN_API CRowInserter {
  public:
    // Throws CDBException where the data source refuses the table or a column, and CMemoryException. The
    // connection must stay open for as long as this lives.
    CRowInserter(CGeoDatabase& database, const CString& table, const CStringArray& columns);
    CRowInserter(const CRowInserter&) = delete;
    CRowInserter& operator=(const CRowInserter&) = delete;
    ~CRowInserter();

    // A value for each column, as text that the data source converts; an empty one is NULL. Throws as above,
    // also for a text that has no form in the connection's character set, and for another number of values.
    void Insert(std::span<const CString> values);

  private:
    struct Statement;
    std::unique_ptr<Statement> m_statement;
};

// The name as it stands in a statement: quoted as the driver wants it, whatever it consists of.
KORTAVIN_API CString QuotedName(CGeoDatabase& database, const CString& name);

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CRowInserter;
#endif
