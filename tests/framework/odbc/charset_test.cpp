#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

class Charset : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Charset, kEveryBackend, BackendName);

class SqliteCharset : public DatabaseFixture {};

}  // namespace

// 道路, the euro sign, 😀 and the rare 𠀀: two bytes a character in GBK, four where it has none.
TEST_P(Charset, IsFoundByItselfAndTextsAreGbkBytes) {
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

TEST_P(Charset, TextsThatCannotBeConvertedAreRefusedBeforeTheyReachTheDriver) {
    const std::string table = MakeTable("a varchar(20)");
    const std::string insert = Gbk("INSERT INTO " + table + " VALUES ('");
    for (const std::string& broken : {std::string("\xB5"), std::string("\xFF\xFF"), std::string("a\0b", 3)})
        EXPECT_EQ(ErrorOf([&] { m_database.ExecuteSQL(CString(insert + broken + "')")); }).m_nRetCode,
                  CDBException::kTextNotConvertible);
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{});
}

TEST_F(SqliteCharset, ThatIsSetBeforeOpeningStays) {
    m_database.Close();
    EXPECT_FALSE(m_database.SetNarrowCharset("no such charset"));
    EXPECT_TRUE(m_database.SetNarrowCharset("windows-1252"));
    Open();
    EXPECT_EQ(Query("SELECT CAST(x'A7' AS text)"), std::vector<Row>{{Gbk("§")}});
    EXPECT_EQ(ErrorOf([&] { Execute("SELECT '道路'"); }).m_nRetCode, CDBException::kTextNotConvertible);
}

// Short and long values take different ways.
TEST_F(SqliteCharset, ValueThatCannotBeConvertedNamesItsColumnAndSparesTheOthers) {
    Execute("CREATE TABLE t (名称 text, c text)");
    for (const int size : {1, 5000, 100000}) {
        Execute("DELETE FROM t");
        Execute("INSERT INTO t VALUES ('" + std::string(size, 'y') + "' || CAST(x'FF' AS text), 'z')");
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql("SELECT * FROM t");
        CString value;
        const CDBException error = ErrorOf([&] { recordset.ReadFieldText(0, value); });
        EXPECT_EQ(error.m_nRetCode, CDBException::kTextNotConvertible);
        EXPECT_GE(error.m_strError.Find(CString(Gbk("名称"))), 0) << error.m_strError;
        recordset.ReadFieldText(1, value);
        EXPECT_STREQ(value, "z");
    }
}
