#include <fstream>
#include <functional>
#include <map>
#include <stdexcept>

#include "query/clauses.h"
#include "query/definition.h"

using namespace kortavin::query;

namespace {

CString Gbk(const std::string& utf8) {
    return CString::FromUtf8(utf8).value();
}

struct Case {
    std::string name;
    CStringArray tables;
    std::vector<RelationRow> relations;
    std::vector<FieldRow> fields;
    ConditionGrid conditions;
    std::vector<SortRow> sorts;
    std::map<std::string, CString> expected;  // by its key
};

void PrintTo(const Case& c, std::ostream* out) {
    *out << c.name;
}

using Cells = std::vector<CString>;

// The texts between the bars of "|a|b|".
Cells CellsOf(const std::string& barred) {
    Cells cells;
    for (std::size_t from = 1, to; (to = barred.find('|', from)) != barred.npos; from = to + 1)
        cells.push_back(Gbk(barred.substr(from, to - from)));
    return cells;
}

void Take(Case& target, const std::string& key, const std::string& barred) {
    static const std::map<std::string, std::function<void(Case&, const Cells&)>> kInputs = {
        {"table", [](Case& c, const Cells& cells) { c.tables.Add(cells.at(0)); }},
        {"relation",
         [](Case& c, const Cells& cells) {
             c.relations.push_back({cells.at(0), cells.at(1), cells.at(2), cells.at(3)});
         }},
        {"field",
         [](Case& c, const Cells& cells) {
             c.fields.push_back({cells.at(0), cells.at(1)});
         }},
        {"column",
         [](Case& c, const Cells& cells) {
             c.conditions.columns.push_back({cells.at(0), cells.at(1)});
         }},
        {"row", [](Case& c, const Cells& cells) { c.conditions.rows.push_back(cells); }},
        {"sort",
         [](Case& c, const Cells& cells) {
             c.sorts.push_back({cells.at(0), cells.at(1), cells.at(2)});
         }},
    };
    if (const auto input = kInputs.find(key); input != kInputs.end())
        input->second(target, CellsOf(barred));
    else
        target.expected[key] = Gbk(barred.substr(1, barred.size() - 2));
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
        else if (cases.empty() || rest.size() < 2 || rest.front() != '|' || rest.back() != '|')
            throw std::runtime_error("not a line of a case: " + line);
        else
            Take(cases.back(), line.substr(0, blank), rest);
    }
    if (cases.empty())
        throw std::runtime_error(std::string("no cases in ") + path);
    return cases;
}

class Composer : public testing::TestWithParam<Case> {};

}  // namespace

TEST_P(Composer, GivesTheseBytes) {
    QueryDefinition definition;
    definition.StoreTables(BuildTablesClause(GetParam().tables));
    definition.StoreRelation(BuildRelationClause(GetParam().relations));
    definition.StoreFields(BuildFieldsClause(GetParam().fields));
    definition.StoreWhere(BuildWhereClause(GetParam().conditions));
    definition.StoreOrder(BuildOrderClause(GetParam().sorts));
    const std::map<std::string, CString> results = {
        {"tables", definition.m_strTables}, {"relations", definition.m_strRelation},
        {"fields", definition.m_strFields}, {"where", definition.m_strWhere},
        {"order", definition.m_strOrder},   {"sql", definition.BuildSql()},
    };
    EXPECT_FALSE(GetParam().expected.empty());
    for (const auto& [key, text] : GetParam().expected)
        EXPECT_EQ(results.at(key).View(), text.View()) << key;
}

INSTANTIATE_TEST_SUITE_P(Cases, Composer, testing::ValuesIn(ReadCases(KORTAVIN_COMPOSER_CASES)),
                         [](const auto& info) { return info.param.name; });

TEST(QueryDefinition, OnlyTheTablesTakeAnEmptyClause) {
    QueryDefinition definition;
    definition.StoreTables("A");
    definition.StoreRelation("(A.x = A.y)");
    definition.StoreFields("A.x");
    definition.StoreWhere("((A.x>1) )");
    definition.StoreOrder("A.x ASC");

    definition.StoreTables("");
    definition.StoreRelation("");
    definition.StoreFields("");
    definition.StoreWhere("");
    definition.StoreOrder("");
    EXPECT_STREQ(definition.m_strTables, "");
    EXPECT_STREQ(definition.m_strRelation, "(A.x = A.y)");
    EXPECT_STREQ(definition.m_strFields, "A.x");
    EXPECT_STREQ(definition.m_strWhere, "((A.x>1) )");
    EXPECT_STREQ(definition.m_strOrder, "A.x ASC");

    definition.StoreFields("A.y");
    EXPECT_STREQ(definition.m_strFields, "A.y");
}

TEST(QueryDefinition, ResetEmptiesTheClausesAndKeepsTheConfirmedStatement) {
    QueryDefinition definition;
    definition.StoreTables("A");
    definition.StoreRelation("(A.x = A.y)");
    definition.StoreFields("A.x");
    definition.StoreWhere("((A.x>1) )");
    definition.StoreOrder("A.x ASC");
    definition.m_strSql = "SELECT 1";
    definition.ResetClauses();
    EXPECT_STREQ(definition.BuildSql(), "SELECT * FROM ");
    EXPECT_STREQ(definition.m_strSql, "SELECT 1");
}
