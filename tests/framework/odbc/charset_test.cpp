#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

class Charset : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Charset, kEveryBackend, BackendName);

// The drivers that can be told to speak anything but UTF-8.
class GbkClient : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, GbkClient, testing::Values(Backend::PostgresqlAnsi, Backend::Mariadb),
                         BackendName);

class SqliteCharset : public SqliteTest {};

RETCODE CodeOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const CDBException& error) {
        return error.m_nRetCode;
    }
    return 0;
}

}  // namespace

TEST_P(Charset, IsFoundByItself) {
    EXPECT_EQ(m_database.GetNarrowCharset().GetName(), "UTF-8");
}

// 道路, 😀 and the rare 𠀀: two bytes a character in GBK, four where it has none.
TEST_P(Charset, StatementsAndValuesAreGbkBytes) {
    EXPECT_EQ(Query("SELECT '道路'"), std::vector<Row>{{"\xB5\xC0\xC2\xB7"}});
    EXPECT_EQ(Query("SELECT '😀'"), std::vector<Row>{{"\x94\x39\xFC\x36"}});
    EXPECT_EQ(Query("SELECT 'a𠀀b'"), std::vector<Row>{{"a\x95\x32\x82\x36"
                                                        "b"}});
    EXPECT_EQ(Query("SELECT '€'"), std::vector<Row>{{"\xA2\xE3"}});
}

TEST_P(GbkClient, IsFoundByItself) {
    const char* const option =
        m_backend == Backend::Mariadb ? ";CHARSET=gbk" : ";ConnSettings=SET client_encoding TO 'GBK'";
    m_database.Open(CString(m_connectionString + option));
    EXPECT_NE(m_database.GetNarrowCharset().GetName(), "UTF-8");
    EXPECT_EQ(Query("SELECT '道路'"), std::vector<Row>{{"\xB5\xC0\xC2\xB7"}});
}

TEST_P(Charset, TextsThatCannotBeConvertedAreRefusedBeforeTheyReachTheDriver) {
    const std::string table = MakeTable("t", "a varchar(20)");
    const CString insert(Gbk("INSERT INTO " + table + " VALUES ('"));
    for (const char* broken : {"\xB5", "\xB5'", "\xFF\xFF", "\x81\x30\x81"})
        EXPECT_EQ(CodeOf([&] { m_database.ExecuteSQL(insert + broken + "')"); }),
                  CDBException::kTextNotConvertible);
    const std::string zero = std::string(insert.View()) + std::string("a\0b')", 5);
    EXPECT_EQ(CodeOf([&] { m_database.ExecuteSQL(CString(zero)); }), CDBException::kTextNotConvertible);
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{});
}

TEST_F(SqliteCharset, ThatIsSetBeforeOpeningStays) {
    EXPECT_FALSE(m_database.SetNarrowCharset("no such charset"));
    EXPECT_EQ(m_database.GetNarrowCharset().GetName(), "UTF-8");
    m_database.Close();
    EXPECT_TRUE(m_database.SetNarrowCharset("windows-1252"));
    m_database.Open(CString(Gbk(m_connectionString)));
    EXPECT_NE(m_database.GetNarrowCharset().GetName(), "UTF-8");
    EXPECT_EQ(Query("SELECT CAST(x'A7' AS text)"), std::vector<Row>{{Gbk("§")}});
    EXPECT_EQ(CodeOf([&] { Execute("SELECT '道路'"); }), CDBException::kTextNotConvertible);
    m_database.Close();
    EXPECT_TRUE(m_database.SetNarrowCharset(""));
    m_database.Open(CString(Gbk(m_connectionString)));
    EXPECT_EQ(m_database.GetNarrowCharset().GetName(), "UTF-8");
}

// Short and long values take different ways.
TEST_F(SqliteCharset, ValueThatCannotBeConvertedNamesItsColumnAndSparesTheOthers) {
    Execute("CREATE TABLE t (a text, 名称 text, c text)");
    for (const std::string size : {"1", "5000", "100000"}) {
        Execute("DELETE FROM t");
        Execute("INSERT INTO t VALUES ('x', replace(hex(zeroblob(" + size +
                ")), '00', 'y') || CAST(x'FF' AS text), 'z')");
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql("SELECT * FROM t");
        CString value("before");
        try {
            recordset.ReadFieldText(1, value);
            ADD_FAILURE() << size;
        } catch (const CDBException& error) {
            EXPECT_EQ(error.m_nRetCode, CDBException::kTextNotConvertible);
            EXPECT_GE(error.m_strError.Find(CString(Gbk("名称"))), 0) << error.m_strError;
        }
        recordset.ReadFieldText(2, value);
        EXPECT_STREQ(value, "z");
        recordset.MoveNext();
        EXPECT_TRUE(recordset.IsEOF());
    }
}
