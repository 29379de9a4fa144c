#include "tests/support/scripted/scriptedsource.h"
#include "tests/support/scripted/session.h"

namespace kortavin::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST(ScriptedDriver, RegisteredNameLeadsToTheDriverThatPosesAsAnother) {
    ScriptedSource source;
    source.DriverName("odbcjt32.dll")
        .Unsupported("SQLTables")
        .Fails("SQLGetInfo", Error("HY000", "no").At(17));
    const Session session(source.RegisteredConnectionString("ODBCJT32.DLL"));
    ASSERT_EQ(session.connected, SQL_SUCCESS);

    char name[64] = "";
    EXPECT_EQ(SQLGetInfo(session.dbc, SQL_DRIVER_NAME, name, sizeof name, nullptr), SQL_SUCCESS);
    EXPECT_STREQ(name, "odbcjt32.dll");
    EXPECT_EQ(SQLGetInfo(session.dbc, SQL_DBMS_NAME, name, sizeof name, nullptr), SQL_ERROR);
    SQLUSMALLINT tables = 1;
    SQLUSMALLINT columns = 0;
    SQLGetFunctions(session.dbc, SQL_API_SQLTABLES, &tables);
    SQLGetFunctions(session.dbc, SQL_API_SQLCOLUMNS, &columns);
    EXPECT_EQ(tables, SQL_FALSE);
    EXPECT_EQ(columns, SQL_TRUE);
}

TEST(ScriptedDriver, RefusalCarriesAllRecordsAndQuotesWhatWasSent) {
    ScriptedSource source;
    source.Fails("SQLDriverConnect", Error("28000", "denied: %CONNECTION%", 18456).Also("08001", "gone"));
    const Session session(source.ConnectionString("UID=scott;PWD=tiger;"));
    EXPECT_EQ(session.connected, SQL_ERROR);
    EXPECT_THAT(Records(SQL_HANDLE_DBC, session.dbc),
                ElementsAre(HasSubstr("UID=scott;PWD=tiger;"), "08001 0 gone"));
    EXPECT_EQ(source.OpenConnections(), 0);

    ScriptedSource silent;
    silent.Fails("SQLDriverConnect", ErrorWithoutRecord());
    const Session refused(silent.ConnectionString());
    EXPECT_EQ(refused.connected, SQL_ERROR);
    EXPECT_THAT(Records(SQL_HANDLE_DBC, refused.dbc), IsEmpty());
}

TEST(ScriptedDriver, StatementsAreAnsweredByTheirTextAndInTurn) {
    ScriptedSource source;
    source.Statement("again").Affects(3);
    source.Statement("again").Fails(Error("S0002", "\xB1\xED\xC3\xBB\xC1\xCB", 7));
    source.AnyStatement().Fails(ErrorWithoutRecord());
    const Session session(source.ConnectionString());

    EXPECT_EQ(session.Execute("again"), SQL_SUCCESS);
    SQLSMALLINT columns = -1;
    SQLLEN rows = -1;
    SQLNumResultCols(session.stmt, &columns);
    SQLRowCount(session.stmt, &rows);
    EXPECT_EQ(columns, 0);
    EXPECT_EQ(rows, 3);
    EXPECT_EQ(session.Execute("again"), SQL_ERROR);
    EXPECT_THAT(session.Errors(), ElementsAre("S0002 7 \xB1\xED\xC3\xBB\xC1\xCB"));
    EXPECT_EQ(session.Execute("something else"), SQL_ERROR);
    EXPECT_THAT(session.Errors(), IsEmpty());
    EXPECT_THAT(source.Calls("SQLExecDirect"),
                ElementsAre("SQLExecDirect again", "SQLExecDirect again", "SQLExecDirect something else"));
}

TEST(ScriptedDriver, ColumnsAreDescribedUntilOneFails) {
    ScriptedSource source;
    source.Statement("t")
        .AddColumn(std::string(300, '\xB1'), 93, 19, 3, 0)
        .AddColumn("b")
        .Fails("SQLDescribeCol", Error("HY000", "no such").At(2));
    const Session session(source.ConnectionString());
    ASSERT_EQ(session.Execute("t"), SQL_SUCCESS);

    SQLCHAR name[256];
    SQLSMALLINT length = 0, type = 0, scale = 0, nullable = 9;
    SQLULEN precision = 0;
    EXPECT_EQ(
        SQLDescribeCol(session.stmt, 1, name, sizeof name, &length, &type, &precision, &scale, &nullable),
        SQL_SUCCESS_WITH_INFO);
    EXPECT_EQ(length, 300);
    EXPECT_EQ(reinterpret_cast<char*>(name), std::string(255, '\xB1'));
    EXPECT_THAT((std::vector<long long>{type, static_cast<long long>(precision), scale, nullable}),
                ElementsAre(SQL_TIMESTAMP, 19, 3, SQL_NO_NULLS));
    EXPECT_EQ(
        SQLDescribeCol(session.stmt, 2, name, sizeof name, &length, &type, &precision, &scale, &nullable),
        SQL_ERROR);
    EXPECT_THAT(session.Errors(), ElementsAre("S1000 0 no such"));
}

TEST(ScriptedDriver, ValuesArePiecedMissingOrFailing) {
    ScriptedSource source;
    Answer& result = source.AnyStatement();
    for (const char* name : {"a", "b", "c", "d", "e", "f", "g"})
        result.AddColumn(name);
    result.AddRow({Value("\xB1\xED\xC3\xBB").Pieces(3), Value("abcd").Pieces(2).NoTotal(), Value::Null(),
                   Value("x").NoIndicator(), Value::NoData(), Value("y").But(Error("22003", "range", 5)),
                   Value("abcdef").Pieces(2).FailsInPiece(2, Error("HY000", "torn"))});
    const Session session(source.ConnectionString());
    session.Execute("any");
    ASSERT_EQ(SQLFetch(session.stmt), SQL_SUCCESS);

    EXPECT_EQ(session.Get(1), "1 4 \xB1\xED\xC3");
    EXPECT_THAT(session.Errors(), ElementsAre(HasSubstr("01004")));
    EXPECT_EQ(session.Get(1), "0 1 \xBB");
    EXPECT_EQ(session.Get(1), "100 -77 ");
    EXPECT_EQ(session.Get(2), "1 -4 ab");
    EXPECT_EQ(session.Get(2), "0 2 cd");
    EXPECT_EQ(session.Get(3), "0 -1 ");
    EXPECT_EQ(session.Get(4), "0 -77 x");
    EXPECT_EQ(session.Get(5), "100 -77 ");
    EXPECT_EQ(session.Get(6), "-1 1 y");
    EXPECT_THAT(session.Errors(), ElementsAre("22003 5 range"));
    EXPECT_EQ(session.Get(7), "1 6 ab");
    EXPECT_EQ(session.Get(7), "-1 -77 ");
}

TEST(ScriptedDriver, BoundValuesAreCutOrFailWithTheCursorOnTheirRow) {
    ScriptedSource source;
    source.GetDataExtensions(SQL_GD_ANY_COLUMN | SQL_GD_ANY_ORDER | SQL_GD_BOUND);
    source.AnyStatement()
        .AddColumn("a")
        .AddColumn("b")
        .AddRow({"long text", "7"})
        .AddRow({"p", Error("22003", "range")});
    const Session session(source.ConnectionString());
    session.Execute("any");
    char text[5] = "";
    SQLINTEGER number = 0;
    SQLLEN indicators[2] = {};
    SQLBindCol(session.stmt, 1, SQL_C_CHAR, text, sizeof text, &indicators[0]);
    SQLBindCol(session.stmt, 2, SQL_C_LONG, &number, 0, &indicators[1]);

    EXPECT_EQ(SQLFetch(session.stmt), SQL_SUCCESS_WITH_INFO);
    EXPECT_STREQ(text, "long");
    EXPECT_EQ(indicators[0], 9);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(session.Get(1), "0 9 long text");
    EXPECT_EQ(SQLFetch(session.stmt), SQL_ERROR);
    EXPECT_THAT(session.Errors(), ElementsAre("22003 0 range"));
    EXPECT_EQ(session.Get(2), "-1 -77 ");
    EXPECT_EQ(session.Get(1), "0 1 p");
    EXPECT_THAT(source.Calls("SQLBindCol"), Contains("SQLBindCol 1, type 1, size 5"));
}

TEST(ScriptedDriver, SQLGetDataIsRefusedWhereItIsNotAnnounced) {
    ScriptedSource source;
    source.GetDataExtensions(0);
    source.AnyStatement().AddColumn("a").AddColumn("b").AddColumn("c").AddRow({"1", "2", "3"});
    const Session session(source.ConnectionString());
    session.Execute("any");
    char text[5] = "";
    SQLBindCol(session.stmt, 2, SQL_C_CHAR, text, sizeof text, nullptr);
    SQLFetch(session.stmt);

    EXPECT_EQ(session.Get(1), "-1 -77 ");
    EXPECT_EQ(session.Get(2), "-1 -77 ");
    EXPECT_THAT(session.Errors(), ElementsAre("S1002 0 the column is bound"));
    EXPECT_EQ(session.Get(3), "0 1 3");
}

TEST(ScriptedDriver, FetchFailsInPlaceOfARowAndDeathIsForEver) {
    ScriptedSource source;
    source.AnyStatement()
        .AddColumn("a")
        .AddRow({"1"}, 2)
        .FetchFails(Error("40001", "deadlock"))
        .AddRow({"2"})
        .FetchFails(ConnectionDies())
        .AddRow({"3"});
    {
        const Session session(source.ConnectionString());
        session.Execute("any");
        const auto fetch = [&session] {
            const SQLRETURN code = SQLFetch(session.stmt);
            return std::to_string(code) + '|' + session.Get(1);
        };
        EXPECT_EQ(fetch(), "0|0 1 1");
        EXPECT_EQ(fetch(), "0|0 1 1");
        EXPECT_EQ(fetch(), "-1|-1 -77 ");
        EXPECT_EQ(fetch(), "0|0 1 2");
        EXPECT_EQ(fetch(), "-1|-1 -77 ");
        EXPECT_THAT(session.Errors(), ElementsAre(HasSubstr("08S01")));
        SQLHSTMT another = nullptr;
        EXPECT_EQ(SQLAllocHandle(SQL_HANDLE_STMT, session.dbc, &another), SQL_ERROR);
        EXPECT_EQ(source.OpenStatements(), 1);
        EXPECT_EQ(source.OpenConnections(), 1);
    }
    EXPECT_EQ(source.OpenStatements(), 0);
    EXPECT_EQ(source.OpenConnections(), 0);
}

TEST(ScriptedDriver, AnswersComeAfterStillExecuting) {
    ScriptedSource source;
    source.StillExecuting(2).AnyStatement().AddColumn("a").AddRow({"1"});
    const Session session(source.ConnectionString());
    const auto poll = [](auto call) {
        Strings codes;
        do {
            codes.push_back(std::to_string(call()));
        } while (codes.back() == "2");
        return codes;
    };
    EXPECT_THAT(poll([&] { return session.Execute("any"); }), ElementsAre("2", "2", "0"));
    EXPECT_THAT(poll([&] { return SQLFetch(session.stmt); }), ElementsAre("2", "2", "0"));
    EXPECT_EQ(session.Get(1), "2 -77 ");
    EXPECT_EQ(session.Get(1), "2 -77 ");
    EXPECT_EQ(session.Get(1), "0 1 1");
    EXPECT_THAT(poll([&] { return SQLFetch(session.stmt); }), ElementsAre("100"));
    EXPECT_EQ(SQLFreeStmt(session.stmt, SQL_CLOSE), SQL_SUCCESS);
    EXPECT_THAT(source.Calls("SQLExecDirect"), SizeIs(1));
}

TEST(ScriptedDriver, CatalogAnswersByTableAndLogsItsArguments) {
    ScriptedSource source;
    source.Columns("\xB1\xED").AddRow({Value::Null(), Value::Null(), "\xB1\xED", "A", "4"});
    source.Columns().Fails(Error("HYT00", "too late"));
    const Session session(source.ConnectionString());

    ASSERT_EQ(SQLColumns(session.stmt, nullptr, 0, nullptr, 0, Bytes("\xB1\xED"), SQL_NTS, nullptr, 0),
              SQL_SUCCESS);
    ASSERT_EQ(SQLFetch(session.stmt), SQL_SUCCESS);
    EXPECT_EQ(session.Get(2), "0 -1 ");
    EXPECT_EQ(session.Get(4), "0 1 A");
    EXPECT_EQ(session.Get(12), "0 -1 ");
    SQLFreeStmt(session.stmt, SQL_CLOSE);
    EXPECT_EQ(SQLColumns(session.stmt, nullptr, 0, Bytes("o"), SQL_NTS, Bytes("t"), SQL_NTS, nullptr, 0),
              SQL_ERROR);
    EXPECT_THAT(session.Errors(), ElementsAre("S1T00 0 too late"));
    EXPECT_THAT(source.Calls("SQLColumns"),
                ElementsAre("SQLColumns NULL, NULL, '\xB1\xED', NULL", "SQLColumns NULL, 'o', 't', NULL"));
}

TEST(ScriptedDriver, HandlesAndSettingsFailWhenScripted) {
    ScriptedSource source;
    source.Fails("SQLAllocHandle", Error("HY001", "no more").After(1));
    source.Fails("SQLSetStmtAttr", Warning("01S02", "changed").At(SQL_ATTR_QUERY_TIMEOUT));
    const Session session(source.ConnectionString());
    SQLHSTMT another = nullptr;
    EXPECT_EQ(SQLAllocHandle(SQL_HANDLE_STMT, session.dbc, &another), SQL_ERROR);
    EXPECT_THAT(Records(SQL_HANDLE_DBC, session.dbc), ElementsAre("S1001 0 no more"));
    EXPECT_EQ(SQLSetStmtOption(session.stmt, SQL_QUERY_TIMEOUT, 30), SQL_SUCCESS_WITH_INFO);
    EXPECT_THAT(source.Calls("SQLSetStmtAttr"), ElementsAre("SQLSetStmtAttr 0, 30"));
}

}  // namespace
}  // namespace kortavin::testing
