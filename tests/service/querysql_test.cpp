#include "service/querysql.h"

#include <memory>

#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

struct Released {
    void operator()(CODBCFieldInfo* infos) const { CQuerySql::ReleaseFieldsInfo(infos); }
    void operator()(void* recordset) const { CQuerySql::ReleaseRecordset(recordset); }
};
using FieldsInfo = std::unique_ptr<CODBCFieldInfo[], Released>;
using RecordsetPointer = std::unique_ptr<void, Released>;

class QuerySql : public EveryDatabaseTest {
  protected:
    int Inspect(const std::string& sql) {
        CString statement(Gbk(sql));
        return m_query.InspectSyntax(statement);
    }

    CQuerySql m_query{&m_database};
};
INSTANTIATE_TEST_SUITE_P(On, QuerySql, kEveryBackend, BackendName);

}  // namespace

TEST(TypeNames, FollowTheTypeCodeAndTake18Characters) {
    static const std::map<int, std::string> kNames = {
        {-7, "SQL_BIT"},       {-6, "SQL_TINYINT"},   {-5, "SQL_BIGINT"},  {-4, "SQL_LONGVARBINARY"},
        {-3, "SQL_VARBINARY"}, {-2, "SQL_BINARY"},    {1, "SQL_CHAR"},     {-1, "SQL_LONGVARCHAR"},
        {2, "SQL_NUMERIC"},    {3, "SQL_DECIMAL"},    {4, "SQL_INTEGER"},  {5, "SQL_SMALLINT"},
        {6, "SQL_FLOAT"},      {7, "SQL_REAL"},       {8, "SQL_DOUBLE"},   {9, "SQL_DATE"},
        {10, "SQL_TIME"},      {11, "SQL_TIMESTAMP"}, {12, "SQL_VARCHAR"},
    };
    CQuerySql query;
    for (int code = -32768; code <= 32767; ++code) {
        CODBCFieldInfo info;
        info.m_nSQLType = static_cast<SWORD>(code);
        const auto known = kNames.find(code);
        std::string expected = known == kNames.end() ? "<unknown type>" : known->second;
        expected.resize(18, ' ');
        ASSERT_STREQ(query.GetFieldTypeStr(info), expected.c_str()) << code;
    }
}

TEST_P(QuerySql, InspectionExecutesTheStatementOnce) {
    const std::string table = MakeTable("道路", "a integer");
    EXPECT_EQ(Inspect("INSERT INTO " + table + " VALUES (7)"), 1);
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{{"7"}});
    EXPECT_EQ(Inspect("SELECT a FROM " + table), 1);
    EXPECT_EQ(Inspect("DELETE FROM " + table), 1);
    EXPECT_EQ(Inspect("SELECT a FROM " + table), 1);
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{});
}

TEST_P(QuerySql, RejectedStatementsAnswerNothing) {
    for (const char* rejected : {"SELEKT 1", "SELECT a FROM nosuchtable", "SELECT '\xB5'", "INSERT INTO t"}) {
        CString statement(rejected);
        int count = 7;
        EXPECT_EQ(m_query.InspectSyntax(statement), 0) << rejected;
        EXPECT_EQ(m_query.GetReocrd(statement), nullptr) << rejected;
        EXPECT_EQ(m_query.GetFieldsInfo(statement, count), nullptr) << rejected;
        EXPECT_EQ(count, 0);
    }
    EXPECT_EQ(Inspect("SELECT 1"), 1);
    m_database.Close();
    EXPECT_EQ(Inspect("SELECT 1"), 0);
}

TEST_P(QuerySql, FieldsInfoOfAStatementDescribesItsColumns) {
    const std::string table = MakeTable("t", "名称 varchar(20), b integer");
    CString select(Gbk("SELECT 名称, b FROM " + table));
    int count = 0;
    const FieldsInfo infos(m_query.GetFieldsInfo(select, count));
    ASSERT_EQ(count, 2);
    EXPECT_STREQ(infos[0].m_strName, "\xC3\xFB\xB3\xC6");
    EXPECT_EQ(infos[0].m_nSQLType, 12);
    EXPECT_EQ(infos[0].m_nPrecision, 20U);
    EXPECT_STREQ(infos[1].m_strName, "b");
    EXPECT_STREQ(m_query.GetFieldTypeStr(infos[1]), "SQL_INTEGER       ");

    CString insert(Gbk("INSERT INTO " + table + " VALUES ('x', 1)"));
    const FieldsInfo none(m_query.GetFieldsInfo(insert, count));
    EXPECT_NE(none, nullptr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(Query("SELECT b FROM " + table), std::vector<Row>{{"1"}});
}

TEST_P(QuerySql, FieldsInfoOfARecordsetLeavesItOnItsFirstRow) {
    CString select("SELECT 1 AS a, 'x' AS b");
    const RecordsetPointer pointer(m_query.GetReocrd(select));
    ASSERT_NE(pointer, nullptr);
    int count = 0;
    const FieldsInfo infos(m_query.GetFieldsInfo(pointer.get(), count));
    ASSERT_EQ(count, 2);
    EXPECT_STREQ(infos[1].m_strName, "b");
    auto& recordset = *static_cast<_CRecordsetEx*>(pointer.get());
    EXPECT_TRUE(recordset.IsOpen());
    EXPECT_EQ(RestOf(recordset), (std::vector<Row>{{"1", "x"}}));
}

TEST_P(QuerySql, TimeoutIs999AndEveryKindOfStatementWorksWithIt) {
    EXPECT_EQ(Inspect("SELEKT 1"), 0);
    EXPECT_EQ(m_database.GetQueryTimeout(), 999U);
    m_database.SetQueryTimeout(5);
    const std::string table = MakeTable("t", "a integer");
    const std::string show = m_backend == Backend::Sqlite    ? "PRAGMA encoding"
                             : m_backend == Backend::Mariadb ? "SHOW VARIABLES LIKE 'version'"
                                                             : "SHOW client_encoding";
    for (const std::string& sql :
         {show, "CREATE TABLE " + table + "b (a integer)", "INSERT INTO " + table + "b VALUES (1)",
          "UPDATE " + table + "b SET a = 2", "SELECT * FROM " + table + "b", std::string("  SELECT 1"),
          "DROP TABLE " + table + "b"}) {
        EXPECT_EQ(Inspect(sql), 1) << sql;
        EXPECT_EQ(m_database.GetQueryTimeout(), 999U);
    }
    CStringArray tables;
    EXPECT_TRUE(m_database.GetAllTables(tables));
    EXPECT_TRUE(m_database.GetColumnList(CString(Gbk(table)), tables));
}
