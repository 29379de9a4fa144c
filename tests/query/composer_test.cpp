#include <fstream>
#include <map>

#include "kortavin/query/clauses.h"
#include "kortavin/query/definition.h"

using namespace kortavin::query;

namespace {

struct Case {
    std::string name;
    CStringArray tables;
    std::vector<RelationRow> relations;
    std::vector<FieldRow> fields;
    ConditionGrid conditions;
    std::vector<SortRow> sorts;
    std::map<std::string, CString> expected;  // by its key
};

// The texts between the bars of "|a|b|".
std::vector<CString> CellsOf(const std::string& barred) {
    std::vector<CString> cells;
    for (std::size_t from = 1, to; (to = barred.find('|', from)) != barred.npos; from = to + 1)
        cells.push_back(CString::FromUtf8(barred.substr(from, to - from)).value());
    return cells;
}

void Take(Case& target, const std::string& key, const std::string& barred) {
    const std::vector<CString> cells = CellsOf(barred);
    if (key == "table")
        target.tables.Add(cells.at(0));
    else if (key == "relation")
        target.relations.push_back({cells.at(0), cells.at(1), cells.at(2), cells.at(3)});
    else if (key == "field")
        target.fields.push_back({cells.at(0), cells.at(1)});
    else if (key == "column")
        target.conditions.columns.push_back({cells.at(0), cells.at(1)});
    else if (key == "row")
        target.conditions.rows.push_back(cells);
    else if (key == "sort")
        target.sorts.push_back({cells.at(0), cells.at(1), cells.at(2)});
    else
        target.expected[key] = CString::FromUtf8(barred.substr(1, barred.size() - 2)).value();
}

std::vector<Case> ReadCases(const char* path) {
    std::ifstream file(path);
    std::vector<Case> cases;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line.front() == '#')
            continue;
        const auto blank = line.find(' ');
        const std::string rest = line.substr(blank + 1);
        if (line.starts_with("case "))
            cases.emplace_back().name = rest;
        else
            Take(cases.at(cases.size() - 1), line.substr(0, blank), rest);
    }
    return cases;
}

}  // namespace

TEST(Composer, GivesTheBytesOfEveryCase) {
    const std::vector<Case> cases = ReadCases(KORTAVIN_COMPOSER_CASES);
    EXPECT_FALSE(cases.empty());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QueryDefinition definition;
        definition.StoreTables(BuildTablesClause(c.tables));
        definition.StoreRelation(BuildRelationClause(c.relations));
        definition.StoreFields(BuildFieldsClause(c.fields));
        definition.StoreWhere(BuildWhereClause(c.conditions));
        definition.StoreOrder(BuildOrderClause(c.sorts));
        const std::map<std::string, CString> results = {
            {"tables", definition.m_strTables}, {"relations", definition.m_strRelation},
            {"fields", definition.m_strFields}, {"where", definition.m_strWhere},
            {"order", definition.m_strOrder},   {"sql", definition.BuildSql()},
        };
        EXPECT_FALSE(c.expected.empty());
        for (const auto& [key, text] : c.expected)
            EXPECT_EQ(results.at(key), text) << key;
    }
}

TEST(QueryDefinition, OnlyTheTablesTakeAnEmptyClauseUntilAllAreReset) {
    QueryDefinition definition;
    definition.m_strSql = "confirmed";
    for (const char* clause : {"x", ""}) {
        definition.StoreTables(clause);
        definition.StoreRelation(clause);
        definition.StoreFields(clause);
        definition.StoreWhere(clause);
        definition.StoreOrder(clause);
    }
    EXPECT_STREQ(definition.BuildSql(), "SELECT x FROM WHERE (x) AND xORDER BY x");
    definition.ResetClauses();
    EXPECT_STREQ(definition.BuildSql(), "SELECT * FROM ");
    EXPECT_STREQ(definition.m_strSql, "confirmed");
}
