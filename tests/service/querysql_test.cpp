#include "kortavin/service/querysql.h"

#include <memory>

#include "kortavin/query/clauses.h"
#include "kortavin/query/definition.h"
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

TEST_P(QuerySql, EveryKindOfStatementIsExecutedOnceWithTheTimeout) {
    const std::string show = m_backend == Backend::Sqlite    ? "PRAGMA encoding"
                             : m_backend == Backend::Mariadb ? "SHOW VARIABLES LIKE 'version'"
                                                             : "SHOW client_encoding";
    const std::string table = MakeTable("a integer");
    for (const std::string& sql :
         {"CREATE TABLE " + table + "b (a integer)", "DROP TABLE " + table + "b", show,
          "INSERT INTO " + table + " VALUES (7)", "UPDATE " + table + " SET a = a + 1",
          "DELETE FROM " + table + " WHERE a = 7", "  SELECT * FROM " + table}) {
        EXPECT_EQ(Inspect(sql), 1) << sql;
        EXPECT_EQ(m_database.GetQueryTimeout(), 999U);
    }
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{{"8"}});
}

TEST_P(QuerySql, RejectedStatementsAnswerNothing) {
    for (const char* rejected : {"SELEKT 1", "SELECT a FROM nosuchtable", "SELECT '\xB5'", "INSERT INTO t"}) {
        CString statement(rejected);
        int count = 7;
        EXPECT_EQ(m_query.InspectSyntax(statement), 0) << rejected;
        EXPECT_EQ(m_query.GetReocrd(statement), nullptr) << rejected;
        EXPECT_EQ(m_query.GetFieldsInfo(statement, count), nullptr) << rejected;
        EXPECT_EQ(count, 0);
        CMemFile file;
        EXPECT_EQ(m_query.QueryDataToFile(&file, 10, 2, 1, statement), 0) << rejected;
        EXPECT_EQ(file.GetContent(), "");
    }
}

TEST_P(QuerySql, FieldsInfoDescribesTheColumnsAndLeavesARecordsetOnItsFirstRow) {
    const std::string table = MakeTable("名称 varchar(20), b integer");
    CString insert(Gbk("INSERT INTO " + table + " VALUES ('x', 1)"));
    int count = 7;
    EXPECT_NE(FieldsInfo(m_query.GetFieldsInfo(insert, count)), nullptr);
    EXPECT_EQ(count, 0);

    CString select(Gbk("SELECT 名称, b FROM " + table));
    const RecordsetPointer pointer(m_query.GetReocrd(select));
    ASSERT_NE(pointer, nullptr);
    const FieldsInfo infos(m_query.GetFieldsInfo(pointer.get(), count));
    ASSERT_EQ(count, 2);
    EXPECT_STREQ(infos[0].m_strName, "\xC3\xFB\xB3\xC6");
    EXPECT_EQ(infos[0].m_nPrecision, 20U);
    EXPECT_STREQ(m_query.GetFieldTypeStr(infos[1]), "SQL_INTEGER       ");
    infos[1].m_nSQLType = -98;
    EXPECT_STREQ(m_query.GetFieldTypeStr(infos[1]), "<unknown type>    ");
    EXPECT_EQ(RestOf(*static_cast<_CRecordsetEx*>(pointer.get())), (std::vector<Row>{{"x", "1"}}));
}

TEST_P(QuerySql, ComposedStatementRunsAsItStands) {
    namespace query = kortavin::query;
    const CString roads(Gbk(MakeTable("TownId integer, 名称 varchar(20), Width integer"))), name(Gbk("名称"));
    const CString towns(Gbk(MakeTable("Id integer, 名称 varchar(20), Population integer")));
    Execute("INSERT INTO " + std::string(roads.View()) +
            " VALUES (1, '二环', 12), (1, '小巷', 4), (2, '环路', 30)");
    Execute("INSERT INTO " + std::string(towns.View()) + " VALUES (1, '东镇', 4000), (2, '西镇', 9000)");

    query::QueryDefinition definition;
    CStringArray tables;
    tables.Add(roads);
    tables.Add(towns);
    definition.StoreTables(query::BuildTablesClause(tables));
    const query::RelationRow relation{roads, "TownId", towns, "Id"};
    const query::FieldRow fields[] = {{roads, name}, {towns, name}};
    const query::ConditionGrid conditions{{{roads, "Width"}, {towns, "Population"}}, {{">10", "<5000"}}};
    const query::SortRow sort{roads, name, CString(Gbk("升序"))};
    definition.StoreRelation(query::BuildRelationClause({&relation, 1}));
    definition.StoreFields(query::BuildFieldsClause(fields));
    definition.StoreWhere(query::BuildWhereClause(conditions));
    definition.StoreOrder(query::BuildOrderClause({&sort, 1}));
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(definition.BuildSql());
    EXPECT_EQ(RestOf(recordset), (std::vector<Row>{{Gbk("二环"), Gbk("东镇")}}));
}
