#pragma once

#include <span>
#include <vector>

#include "kortavin/base/arrays.h"

// The clauses of a SELECT, each built from the rows that a user filled in. Names and conditions are copied as
// they are: nothing is quoted, trimmed or checked. A row counts only when all its cells that a clause needs
// are filled; a cell with a blank is filled. No complete row gives an empty clause.
namespace kortavin::query {

struct RelationRow {
    CString firstTable;
    CString firstField;
    CString secondTable;
    CString secondField;
};

struct FieldRow {
    CString table;
    CString field;
};

struct SortRow {
    CString table;
    CString field;
    CString direction;
};

// Query by example: one condition text for each row and column. A text carries its own operator (">10",
// " LIKE 'a%'"). Texts of one row must hold together; one row's holding is enough.
struct ConditionGrid {
    std::vector<FieldRow> columns;
    std::vector<std::vector<CString>> rows;  // texts missing at a row's end count as empty
};

// "A,B,C"
KORTAVIN_API CString BuildTablesClause(const CStringArray& tables);
// "(A.x = B.y) AND (B.z = C.w)"
KORTAVIN_API CString BuildRelationClause(std::span<const RelationRow> rows);
// "A.x,B.y"
KORTAVIN_API CString BuildFieldsClause(std::span<const FieldRow> rows);
// "((A.x>1 AND B.y='q') OR (A.x<0) )", with one blank before the last parenthesis
KORTAVIN_API CString BuildWhereClause(const ConditionGrid& grid);
// "A.x ASC,B.y DESC"; every direction but the ascending one's text sorts descending
KORTAVIN_API CString BuildOrderClause(std::span<const SortRow> rows);

}  // namespace kortavin::query
