#pragma once

#include "kortavin/base/arrays.h"

namespace kortavin {

class CGeoDatabase;

namespace query {

// What one run of the query wizard builds: the clauses, each as the pages last stored it, and the statement
// that the user confirmed. The pointers are set before the run and own nothing.
struct KORTAVIN_API QueryDefinition {
    CGeoDatabase* m_pDatabase = nullptr;
    CStringArray* m_pTables = nullptr;     // all tables and views; only read
    CStringArray* m_pSelTables = nullptr;  // the chosen ones; outlives the run
    CString m_strTables;
    CString m_strRelation;
    CString m_strFields;
    CString m_strWhere;
    CString m_strOrder;
    CString m_strSql;

    // The SELECT made of the five clauses. Without tables it ends with "FROM "; without a condition and a
    // sort it ends in a blank; the condition's last parenthesis is followed directly by ORDER BY.
    CString BuildSql() const;
    // Empties the five clauses; the confirmed statement stays.
    void ResetClauses();

    // Store a page's clause. The tables take every result; the others keep what they hold when a page has
    // nothing complete to offer.
    void StoreTables(const CString& clause) { m_strTables = clause; }
    void StoreRelation(const CString& clause) { StoreUnlessEmpty(m_strRelation, clause); }
    void StoreFields(const CString& clause) { StoreUnlessEmpty(m_strFields, clause); }
    void StoreWhere(const CString& clause) { StoreUnlessEmpty(m_strWhere, clause); }
    void StoreOrder(const CString& clause) { StoreUnlessEmpty(m_strOrder, clause); }

  private:
    static void StoreUnlessEmpty(CString& field, const CString& clause);
};

}  // namespace query

}  // namespace kortavin
