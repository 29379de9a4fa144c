#include <memory>

#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

class Connection : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Connection, kEveryBackend, BackendName);

class SqliteConnection : public DatabaseFixture {};

}  // namespace

TEST_P(Connection, ClosingOrGoingEndsItsOpenRecordsets) {
    const CString connectionString(Gbk(m_connectionString));
    auto database = std::make_unique<CDatabase>();
    database->Open(connectionString);
    _CRecordsetEx recordset(database.get());
    _CRecordsetEx another(database.get());
    recordset.OpenSql("SELECT 1");
    another.OpenSql("SELECT 1 UNION ALL SELECT 1");
    EXPECT_EQ(RestOf(recordset), std::vector<Row>{{"1"}});
    another.MoveNext();  // read side by side
    database->Close();
    EXPECT_FALSE(another.IsOpen());
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_TRUE(recordset.IsEOF());
    EXPECT_THROW(recordset.MoveNext(), CDBException);
    EXPECT_THROW(database->ExecuteSQL("SELECT 1"), CDBException);

    database->Open(connectionString);
    recordset.OpenSql("SELECT 2");
    EXPECT_EQ(RestOf(recordset), std::vector<Row>{{"2"}});
    database.reset();
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_FALSE(recordset.Open(CRecordset::forwardOnly, "SELECT 1", CRecordset::executeDirect));
}

TEST_P(Connection, RefusedOpeningTellsWhyWithoutThePasswordAndLeavesItClosed) {
    static const std::string kWrong = "GeheimesWort";
    std::string wrong = m_connectionString;
    if (const auto at = wrong.find("Pwd="); at != wrong.npos)
        wrong.replace(at, wrong.find(';', at) - at, "Pwd={" + kWrong + "}");
    else
        wrong = "Driver=SQLite3;Database=" + (m_folder / "missing/t.db") + ";PWD=" + kWrong;
    const CDBException error = ErrorOf([&] { m_database.Open(CString(Gbk(wrong))); });
    EXPECT_EQ(error.GetState().GetLength(), 5);
    EXPECT_EQ((error.m_strError + error.m_strStateNativeOrigin).Find(kWrong.c_str()), -1);
    EXPECT_FALSE(m_database.IsOpen());
}

TEST_P(Connection, TransactionsKeepWhatIsCommittedAndUndoTheRest) {
    const std::string table = MakeTable("a integer");
    const std::string insert = "INSERT INTO " + table + " VALUES ";
    m_database.BeginTrans();
    Execute(insert + "(1)");
    m_database.CommitTrans();
    m_database.BeginTrans();
    Execute(insert + "(2)");
    m_database.Rollback();
    Execute(insert + "(3)");  // outside a transaction: kept at once
    m_database.BeginTrans();
    Execute(insert + "(4)");
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT a FROM " + table)));
    Open();  // again: closing undoes an open transaction, also with a recordset in the middle
    EXPECT_EQ(Query("SELECT a FROM " + table + " ORDER BY a"), (std::vector<Row>{{"1"}, {"3"}}));
}

// 道路, the euro sign, 😀 and the rare 𠀀: two bytes a character in GBK, four where it has none.
TEST_P(Connection, FindsItsCharsetAndTextsAreGbkBytes) {
    EXPECT_EQ(m_database.GetNarrowCharset().GetName(), "UTF-8");
    EXPECT_EQ(Query("SELECT '道路', '€', '😀', '𠀀'"),
              (std::vector<Row>{{"\xB5\xC0\xC2\xB7", "\xA2\xE3", "\x94\x39\xFC\x36", "\x95\x32\x82\x36"}}));
    // The drivers that can be told to speak anything but UTF-8.
    if (m_backend != Backend::Mariadb && m_backend != Backend::PostgresqlAnsi)
        return;
    Open(m_backend == Backend::Mariadb ? ";CHARSET=gbk" : ";ConnSettings=SET client_encoding TO 'GBK'");
    EXPECT_NE(m_database.GetNarrowCharset().GetName(), "UTF-8");
    EXPECT_EQ(Query("SELECT '道路'"), std::vector<Row>{{"\xB5\xC0\xC2\xB7"}});
}

TEST_P(Connection, TextsThatCannotBeConvertedAreRefusedBeforeTheyReachTheDriver) {
    const std::string table = MakeTable("a varchar(20)");
    const std::string insert = Gbk("INSERT INTO " + table + " VALUES ('");
    for (const std::string& broken : {std::string("\xB5"), std::string("\xFF\xFF"), std::string("a\0b", 3)})
        EXPECT_EQ(ErrorOf([&] { m_database.ExecuteSQL(CString(insert + broken + "')")); }).m_nRetCode,
                  CDBException::kTextNotConvertible);
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{});
}

// Short and long values take different ways.
TEST_F(SqliteConnection, ValueThatCannotBeConvertedNamesItsColumnAndSparesTheOthers) {
    for (const int size : {1, 5000, 100000}) {
        const std::string broken = "'" + std::string(size, 'y') + "' || CAST(x'FF' AS text)";
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql(CString(Gbk("SELECT " + broken + " AS 名称, 'z'")));
        CString value;
        const CDBException error = ErrorOf([&] { recordset.ReadFieldText(0, value); });
        EXPECT_EQ(error.m_nRetCode, CDBException::kTextNotConvertible);
        EXPECT_GE(error.m_strError.Find(CString(Gbk("名称"))), 0) << error.m_strError;
        recordset.ReadFieldText(1, value);
        EXPECT_STREQ(value, "z");
    }
}

// After a refused opening too: that is when drivers quote the connection string.
TEST(Secrets, AreHiddenInWhatTheDriverSays) {
    static constexpr const char* kCases[][3] = {
        {"Server=s; pAsSwOrD = geheim ;x=y", "s geheim y", "s *** y"},
        {"PWD={a;b c};Server=host", "{a;b c} a;b c host", "*** *** host"},
        {"PWD={ge}}heim};Server=host", "ge}heim at host", "*** at host"},
        {"PWD={geheim;Server=host", "geheim;Server=host", "***"},
        {"NotPWD=geheim", "geheim", "geheim"},
        {"PWD=ab", "ab about grab 'ab'", "*** about grab '***'"},
        {"PWD=密码口令;UID=安娜", "安娜的密码口令。", "安娜的***。"},
        {"PWD=geheim;Token=geheimnis", "geheimnis", "***"},
    };
    for (const auto& [connectionString, text, shown] : kCases) {
        CDatabase database;
        EXPECT_THROW(database.Open(CString(Gbk("Driver=no such driver;" + std::string(connectionString)))),
                     CDBException);
        EXPECT_STREQ(database.MakeReadable(text), CString(Gbk(shown))) << connectionString;
    }
}
