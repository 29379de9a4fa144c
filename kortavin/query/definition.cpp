#include "kortavin/query/definition.h"

namespace kortavin::query {

CString QueryDefinition::BuildSql() const {
    CString sql = "SELECT " + (m_strFields.IsEmpty() ? CString("*") : m_strFields) + " FROM ";
    if (!m_strTables.IsEmpty())
        sql += m_strTables + " ";

    CString condition;
    if (!m_strRelation.IsEmpty())
        condition = "(" + m_strRelation + ")";
    if (!m_strWhere.IsEmpty())
        condition += condition.IsEmpty() ? m_strWhere : " AND " + m_strWhere;
    if (!condition.IsEmpty())
        sql += "WHERE " + condition;

    if (!m_strOrder.IsEmpty())
        sql += "ORDER BY " + m_strOrder;
    return sql;
}

void QueryDefinition::ResetClauses() {
    for (CString* clause : {&m_strTables, &m_strRelation, &m_strFields, &m_strWhere, &m_strOrder})
        clause->Empty();
}

void QueryDefinition::StoreUnlessEmpty(CString& field, const CString& clause) {
    if (!clause.IsEmpty())
        field = clause;
}

}  // namespace kortavin::query
