#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

class Transactions : public EveryDatabaseTest {
  protected:
    void SetUp() override {
        EveryDatabaseTest::SetUp();
        if (!IsSkipped() && !HasFatalFailure())
            m_table = MakeTable("t", "a integer");
    }
    void Insert(int value) { Execute("INSERT INTO " + m_table + " VALUES (" + std::to_string(value) + ")"); }
    std::vector<Row> Values() { return Query("SELECT a FROM " + m_table + " ORDER BY a"); }
    void Reopen() { m_database.Open(CString(Gbk(m_connectionString))); }

    std::string m_table;
};
INSTANTIATE_TEST_SUITE_P(On, Transactions, kEveryBackend, BackendName);

}  // namespace

TEST_P(Transactions, CommitKeepsAndRollbackUndoesWhatWasExecutedBetween) {
    m_database.BeginTrans();
    Insert(1);
    m_database.CommitTrans();
    m_database.BeginTrans();
    Insert(2);
    EXPECT_EQ(Values(), (std::vector<Row>{{"1"}, {"2"}}));
    m_database.Rollback();
    EXPECT_EQ(Values(), std::vector<Row>{{"1"}});

    Insert(3);  // the transaction is over: kept at once
    Reopen();
    EXPECT_EQ(Values(), (std::vector<Row>{{"1"}, {"3"}}));
}

TEST_P(Transactions, ClosingUndoesAnOpenOneWithARecordsetInTheMiddle) {
    Insert(1);
    Insert(2);
    m_database.BeginTrans();
    Insert(3);
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT a FROM " + m_table)));
    Reopen();
    EXPECT_EQ(Values(), (std::vector<Row>{{"1"}, {"2"}}));
}
