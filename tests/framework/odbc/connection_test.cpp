#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

// The error of opening, for a connection string in UTF-8.
std::optional<CDBException> ErrorOfOpening(CDatabase& database, const std::string& connectionString) {
    try {
        database.Open(CString(Gbk(connectionString)));
    } catch (const CDBException& error) {
        return error;
    }
    return std::nullopt;
}

class Connection : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Connection, kEveryBackend, BackendName);

// The drivers that know a limit.
class LimitedStatement : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, LimitedStatement,
                         testing::Values(Backend::PostgresqlAnsi, Backend::PostgresqlUnicode), BackendName);

class SqliteConnection : public SqliteTest {};

}  // namespace

TEST_P(Connection, ClosingOrGoingEndsItsOpenRecordsets) {
    const std::string table = MakeTable("t", "a integer");
    Execute("INSERT INTO " + table + " VALUES (1)");
    const CString select(Gbk("SELECT a FROM " + table));
    const CString connectionString(Gbk(m_connectionString));

    auto database = std::make_unique<CDatabase>();
    database->Open(connectionString);
    _CRecordsetEx recordset(database.get());
    _CRecordsetEx another(database.get());
    recordset.OpenSql(select);
    another.OpenSql(select);
    database->Close();
    EXPECT_FALSE(database->IsOpen());
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_TRUE(recordset.IsEOF());
    recordset.MoveNext();
    EXPECT_FALSE(recordset.Open(CRecordset::forwardOnly, select, CRecordset::executeDirect));

    database->Open(connectionString);
    recordset.OpenSql(select);
    EXPECT_EQ(RestOf(recordset), std::vector<Row>{{"1"}});
    recordset.OpenSql(select);
    database->Open(connectionString);
    EXPECT_FALSE(recordset.IsOpen());
    recordset.OpenSql(select);
    database.reset();
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_FALSE(recordset.Open(CRecordset::forwardOnly, select, CRecordset::executeDirect));
}

TEST_P(Connection, RefusedOpeningTellsWhyWithoutThePasswordAndLeavesItClosed) {
    static const std::string kWrong = "GeheimesWort";
    std::string wrong = m_connectionString;
    if (const auto at = wrong.find("Pwd="); at != wrong.npos)
        wrong.replace(at, wrong.find(';', at) - at, "Pwd={" + kWrong + "}");
    else
        wrong = "Driver=SQLite3;Database=" + (m_folder / "missing/t.db") + ";PWD=" + kWrong;

    const auto error = ErrorOfOpening(m_database, wrong);
    ASSERT_TRUE(error);
    EXPECT_FALSE(m_database.IsOpen());
    EXPECT_FALSE(error->GetErrorMessage().IsEmpty());
    EXPECT_EQ(error->GetState().GetLength(), 5);
    const std::string told(error->m_strError + error->m_strStateNativeOrigin);
    EXPECT_EQ(told.find(kWrong), told.npos) << told;
    m_database.Open(CString(Gbk(m_connectionString)));
    EXPECT_EQ(Query("SELECT 1"), std::vector<Row>{{"1"}});
}

TEST_P(LimitedStatement, IsGivenUpAfterItsTimeout) {
    m_database.SetQueryTimeout(1);
    EXPECT_THROW(Query("SELECT pg_sleep(60)"), CDBException);
    EXPECT_THROW(Execute("SELECT pg_sleep(60)"), CDBException);
    EXPECT_EQ(Query("SELECT 1"), std::vector<Row>{{"1"}});
}

TEST_F(SqliteConnection, UnusableConnectionStringsAreRefused) {
    for (const char* unusable : {"", ";", "nonsense", "DSN=no such source", "Driver=no such driver",
                                 "Driver=/no/such/library.so;Database=x"}) {
        CDatabase database;
        EXPECT_TRUE(ErrorOfOpening(database, unusable)) << unusable;
        EXPECT_FALSE(database.IsOpen());
    }
}

TEST_F(SqliteConnection, ChinesePathReachesTheDriverInItsCharset) {
    const std::string path = m_folder / "数据 库.db";
    m_database.Open(CString(Gbk("Driver={SQLite3};Database=" + path)));
    Execute("CREATE TABLE t (a)");
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(SqliteConnection, FailedStatementsThrowWhatTheDriverSays) {
    try {
        Execute("SELEKT 错");
        FAIL();
    } catch (const CDBException& error) {
        EXPECT_GE(error.m_strError.Find("syntax error"), 0) << error.m_strError;
        EXPECT_EQ(error.m_strStateNativeOrigin.Find("State:"), 0) << error.m_strStateNativeOrigin;
        EXPECT_EQ(error.m_nRetCode, -1);
    }
    CDatabase closed;
    EXPECT_THROW(closed.ExecuteSQL("SELECT 1"), CDBException);
    EXPECT_THROW(closed.BeginTrans(), CDBException);
    EXPECT_THROW(closed.CommitTrans(), CDBException);
}

namespace {

struct SecretCase {
    const char* name;
    const char* connectionString;
    const char* text;
    const char* shown;
};

void PrintTo(const SecretCase& c, std::ostream* out) {
    *out << c.name;
}

class Secrets : public testing::TestWithParam<SecretCase> {};

}  // namespace

// After a refused opening too: that is when drivers quote the connection string.
TEST_P(Secrets, AreHiddenInWhatTheDriverSays) {
    CDatabase database;
    ErrorOfOpening(database, "Driver=no such driver;" + std::string(GetParam().connectionString));
    EXPECT_STREQ(database.MakeReadable(GetParam().text), CString(Gbk(GetParam().shown)));
}

INSTANTIATE_TEST_SUITE_P(
    In, Secrets,
    testing::Values(
        SecretCase{"Plain", "UID=anna;PWD=geheim", "anna, geheim!", "anna, ***!"},
        SecretCase{"AnyLetterCaseAndBlanks", "Server=s; pAsSwOrD = geheim ;x=y", "s geheim y", "s *** y"},
        SecretCase{"EveryOccurrence", "PWD=geheim", "geheimgeheim/geheim", "******/***"},
        SecretCase{"Braced", "PWD={a;b c};Server=host", "{a;b c} a;b c host", "*** *** host"},
        SecretCase{"BraceInBraces", "PWD={ge}}heim};Server=host", "ge}heim at host", "*** at host"},
        SecretCase{"OpenBrace", "PWD={geheim;Server=host", "geheim;Server=host", "***"},
        SecretCase{"KeyThatOnlyEndsAlike", "NotPWD=geheim", "geheim", "geheim"},
        SecretCase{"ShortOnesOnlyAsWords", "PWD=ab", "ab about grab 'ab'", "*** about grab '***'"},
        SecretCase{"Empty", "PWD=;UID=anna", "anna PWD=;", "anna PWD=;"},
        SecretCase{"Chinese", "PWD=密码口令;UID=安娜", "安娜的密码口令。", "安娜的***。"},
        SecretCase{"SeveralLongestFirst", "PWD=geheim;Token=geheimnis", "geheimnis", "***"}),
    [](const auto& info) { return info.param.name; });
