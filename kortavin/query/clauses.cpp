#include "kortavin/query/clauses.h"

#include "kortavin/base/texts.h"

namespace kortavin::query {
namespace {

constexpr const char* kAnd = " AND ";

CString Column(const CString& table, const CString& field) {
    return table + "." + field;
}

bool IsComplete(const FieldRow& row) {
    return !row.table.IsEmpty() && !row.field.IsEmpty();
}

// Appends with the separator between, so that no trailing one has to be taken off again.
void AppendListed(CString& list, const char* separator, const CString& item) {
    if (!list.IsEmpty())
        list += separator;
    list += item;
}

CString BuildConditionRow(std::span<const FieldRow> columns, std::span<const CString> texts) {
    CString row;
    for (std::size_t i = 0; i < columns.size() && i < texts.size(); ++i)
        if (IsComplete(columns[i]) && !texts[i].IsEmpty())
            AppendListed(row, kAnd, Column(columns[i].table, columns[i].field) + texts[i]);
    return row;
}

}  // namespace

CString BuildTablesClause(const CStringArray& tables) {
    CString clause;
    for (int i = 0; i < tables.GetSize(); ++i) {
        if (i > 0)
            clause += ",";
        clause += tables[i];
    }
    return clause;
}

CString BuildRelationClause(std::span<const RelationRow> rows) {
    CString clause;
    for (const RelationRow& row : rows) {
        if (row.firstTable.IsEmpty() || row.firstField.IsEmpty() || row.secondTable.IsEmpty() ||
            row.secondField.IsEmpty())
            continue;
        const CString join =
            Column(row.firstTable, row.firstField) + " = " + Column(row.secondTable, row.secondField);
        AppendListed(clause, kAnd, "(" + join + ")");
    }
    return clause;
}

CString BuildFieldsClause(std::span<const FieldRow> rows) {
    CString clause;
    for (const FieldRow& row : rows)
        if (IsComplete(row))
            AppendListed(clause, ",", Column(row.table, row.field));
    return clause;
}

CString BuildWhereClause(const ConditionGrid& grid) {
    CString clause;
    for (const std::vector<CString>& texts : grid.rows) {
        const CString row = BuildConditionRow(grid.columns, texts);
        if (!row.IsEmpty())
            AppendListed(clause, " OR ", "(" + row + ")");
    }
    return clause.IsEmpty() ? clause : "(" + clause + " )";
}

CString BuildOrderClause(std::span<const SortRow> rows) {
    CString clause;
    for (const SortRow& row : rows) {
        if (row.table.IsEmpty() || row.field.IsEmpty())
            continue;
        const bool ascending = row.direction == base::Text(base::TextId::Ascending);
        AppendListed(clause, ",", Column(row.table, row.field) + (ascending ? " ASC" : " DESC"));
    }
    return clause;
}

}  // namespace kortavin::query
