#include <memory>

#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

class Connection : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Connection, kEveryBackend, BackendName);

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
    recordset.MoveNext();
    EXPECT_THROW(database->ExecuteSQL("SELECT 1"), CDBException);

    database->Open(connectionString);
    recordset.OpenSql("SELECT 2");
    EXPECT_EQ(RestOf(recordset), std::vector<Row>{{"2"}});
    recordset.OpenSql("SELECT 2");
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
    const auto insert = [&](const char* value) {
        Execute("INSERT INTO " + table + " VALUES (" + value + ")");
    };
    m_database.BeginTrans();
    insert("1");
    m_database.CommitTrans();
    m_database.BeginTrans();
    insert("2");
    m_database.Rollback();
    insert("3");  // outside a transaction: kept at once
    m_database.BeginTrans();
    insert("4");
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT a FROM " + table)));
    Open();  // again: closing undoes an open transaction, also with a recordset in the middle
    EXPECT_EQ(Query("SELECT a FROM " + table + " ORDER BY a"), (std::vector<Row>{{"1"}, {"3"}}));
}

// After a refused opening too: that is when drivers quote the connection string.
TEST(Secrets, AreHiddenInWhatTheDriverSays) {
    static constexpr struct {
        const char* connectionString;
        const char* text;
        const char* shown;
    } kCases[] = {
        {"Server=s; pAsSwOrD = geheim ;x=y", "s geheim y", "s *** y"},
        {"PWD=geheim", "geheimgeheim/geheim", "******/***"},
        {"PWD={a;b c};Server=host", "{a;b c} a;b c host", "*** *** host"},
        {"PWD={ge}}heim};Server=host", "ge}heim at host", "*** at host"},
        {"PWD={geheim;Server=host", "geheim;Server=host", "***"},
        {"NotPWD=geheim", "geheim", "geheim"},
        {"PWD=ab", "ab about grab 'ab'", "*** about grab '***'"},
        {"PWD=;UID=anna", "anna PWD=;", "anna PWD=;"},
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
