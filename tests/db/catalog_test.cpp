#include "kortavin/db/catalogrecordsets.h"
#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

std::vector<CString> Names(const CStringArray& names) {
    return {names.begin(), names.end()};
}

class Catalog : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Catalog, kEveryBackend, BackendName);

}  // namespace

TEST_P(Catalog, ListsTablesAndViewsWithTheirGbkNames) {
    const std::string road = Make("TABLE", "道路", "(a integer)");
    const std::string view = Make("VIEW", "视图", "AS SELECT a FROM " + road);
    CStringArray tables;
    tables.Add("left over");
    EXPECT_TRUE(m_database.GetAllTables(tables));
    EXPECT_THAT(Names(tables), testing::IsSupersetOf({CString(Gbk(road)), CString(Gbk(view))}));
    EXPECT_EQ(Gbk(road).substr(0, 4), "\xB5\xC0\xC2\xB7");
    for (const char* unwanted : {"left over", "pg_class", "sqlite_master"})
        EXPECT_THAT(Names(tables), testing::Not(testing::Contains(unwanted)));
}

TEST_P(Catalog, AppendsColumnsInTheirOrderAndBracketsThoseWithABlank) {
    if (m_backend == Backend::Mariadb)
        Execute("SET sql_mode = 'ANSI_QUOTES'");
    const std::string table =
        MakeTable("名称 integer, plain integer, \"Order Date\" date, \"x.y\" integer, \"宽 度.米\" integer");
    CStringArray columns;
    columns.Add("former");
    EXPECT_FALSE(m_database.GetColumnList(CString(Gbk("没有此表")), columns));
    EXPECT_TRUE(m_database.GetColumnList(CString(table), columns));
    EXPECT_THAT(Names(columns), testing::ElementsAre("former", "\xC3\xFB\xB3\xC6", "plain", "[Order Date]",
                                                     "x.y", "[\xBF\xED \xB6\xC8.\xC3\xD7]"));
}

TEST_P(Catalog, ColumnsAreBoundToTheirFields) {
    const CString table(Gbk(Make("TABLE", "列", "(number integer NOT NULL, 名称 varchar(20))")));
    CColumns columns(&m_database);
    ASSERT_TRUE(columns.Open(nullptr, nullptr, table, nullptr, CRecordset::forwardOnly));
    EXPECT_STREQ(columns.m_strColumnName, "number");
    EXPECT_EQ(columns.m_nDataType, 4);
    EXPECT_EQ(columns.m_nNullable, 0);
    columns.MoveNext();
    EXPECT_STREQ(columns.m_strColumnName, "\xC3\xFB\xB3\xC6");
    EXPECT_EQ(columns.m_lPrecision, 20);
    EXPECT_EQ(columns.m_nNullable, 1);
}
