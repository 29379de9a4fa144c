#include "tests/support/databases.h"

using namespace kortavin::test;
using testing::AnyOf;

namespace {

class Recordset : public EveryDatabaseTest {
  protected:
    CODBCFieldInfo InfoOf(const _CRecordsetEx& recordset, short index) {
        CODBCFieldInfo info;
        recordset.GetODBCFieldInfo(index, info);
        return info;
    }
};
INSTANTIATE_TEST_SUITE_P(On, Recordset, kEveryBackend, BackendName);

class SqliteRecordset : public SqliteTest {};

RETCODE CodeOfReading(_CRecordsetEx& recordset, short index) {
    CString value("former");
    try {
        recordset.ReadFieldText(index, value);
    } catch (const CDBException& error) {
        EXPECT_STREQ(value, "former");
        return error.m_nRetCode;
    }
    return 0;
}

}  // namespace

TEST_P(Recordset, DescribesItsColumns) {
    const std::string table = MakeTable(
        "t", "名称 varchar(20), b " + LongTextType() +
                 ", c char(3), d date, e time, f timestamp, g integer, h smallint, i double precision");
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT * FROM " + table)));
    ASSERT_EQ(recordset.GetODBCFieldCount(), 9);
    EXPECT_STREQ(InfoOf(recordset, 0).m_strName, "\xC3\xFB\xB3\xC6");
    EXPECT_STREQ(InfoOf(recordset, 8).m_strName, "i");
    EXPECT_EQ(InfoOf(recordset, 0).m_nPrecision, 20U);
    std::vector<int> types;
    for (short i = 0; i < 9; ++i)
        types.push_back(InfoOf(recordset, i).m_nSQLType);
    EXPECT_THAT(types, testing::ElementsAre(12, -1, AnyOf(1, 12), 9, 10, 11, 4, 5, AnyOf(6, 8)));
    EXPECT_THROW(InfoOf(recordset, 9), CDBException);
    EXPECT_THROW(InfoOf(recordset, -1), CDBException);
}

TEST_P(Recordset, ReadsEveryRowInTheDriversTextForm) {
    const std::string table =
        MakeTable("t", "a integer, b varchar(20), c date, d time, e decimal(10,2), f bigint");
    Execute("INSERT INTO " + table + " VALUES (1, '道路', '2024-02-29', '12:34:56', 12.5, 9007199254740993)");
    Execute("INSERT INTO " + table + " VALUES (-2, '', NULL, NULL, NULL, -9223372036854775808)");
    Execute("INSERT INTO " + table + " VALUES (NULL, NULL, NULL, NULL, NULL, NULL)");
    const std::vector<Row> rows =
        Query("SELECT a, b, c, d, f FROM " + table + " ORDER BY coalesce(a, -3) DESC");
    EXPECT_THAT(
        rows, testing::ElementsAre(Row{"1", "\xB5\xC0\xC2\xB7", "2024-02-29", "12:34:56", "9007199254740993"},
                                   Row{"-2", "", "", "", "-9223372036854775808"}, Row{"", "", "", "", ""}));
    EXPECT_THAT(Query("SELECT e FROM " + table + " WHERE a = 1").at(0).at(0), AnyOf("12.5", "12.50"));
}

TEST_P(Recordset, MarksTellTheBeginningAndTheEnd) {
    const std::string table = MakeTable("t", "a integer");
    const CString select(Gbk("SELECT a FROM " + table));
    _CRecordsetEx recordset(&m_database);
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_EQ(recordset.GetODBCFieldCount(), -1);
    EXPECT_TRUE(recordset.Open(CRecordset::forwardOnly, select, CRecordset::executeDirect));
    EXPECT_TRUE(recordset.IsOpen());
    EXPECT_TRUE(recordset.IsBOF());
    EXPECT_TRUE(recordset.IsEOF());
    recordset.MoveNext();
    EXPECT_TRUE(recordset.IsEOF());

    Execute("INSERT INTO " + table + " VALUES (1)");
    EXPECT_TRUE(recordset.Open(CRecordset::forwardOnly, select, CRecordset::none));  // prepared
    EXPECT_FALSE(recordset.IsBOF());
    EXPECT_FALSE(recordset.IsEOF());
    recordset.MoveNext();
    EXPECT_FALSE(recordset.IsBOF());
    EXPECT_TRUE(recordset.IsEOF());
    recordset.Close();
    EXPECT_FALSE(recordset.IsOpen());
}

TEST_P(Recordset, StatementWithoutResultIsExecutedAndHasNothingToRead) {
    const std::string table = MakeTable("t", "a integer");
    _CRecordsetEx recordset(&m_database);
    for (const std::string& sql :
         {"INSERT INTO " + table + " VALUES (1)", "UPDATE " + table + " SET a = 2",
          "UPDATE " + table + " SET a = 3 WHERE a = 99", "DELETE FROM " + table + " WHERE a = 99"}) {
        EXPECT_TRUE(recordset.Open(CRecordset::forwardOnly, CString(Gbk(sql)), CRecordset::executeDirect));
        EXPECT_EQ(recordset.GetODBCFieldCount(), 0) << sql;
        EXPECT_TRUE(recordset.IsBOF());
        EXPECT_TRUE(recordset.IsEOF());
        CString value("former");
        recordset.ReadFieldText(0, value);
        recordset.ReadFieldText(-1, value);
        EXPECT_STREQ(value, "former");
    }
    recordset.Close();
    EXPECT_EQ(Query("SELECT a FROM " + table), std::vector<Row>{{"2"}});
}

TEST_P(Recordset, IndexOutsideTheColumnsIsError1026) {
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("SELECT 1, 2");
    EXPECT_EQ(CodeOfReading(recordset, -1), 1026);
    EXPECT_EQ(CodeOfReading(recordset, 2), 1026);
    EXPECT_EQ(CodeOfReading(recordset, 32767), 1026);
    CString value;
    recordset.ReadFieldText(1, value);
    EXPECT_STREQ(value, "2");
}

TEST_P(Recordset, ReopeningDescribesTheNewResult) {
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("SELECT 1 AS a, 2 AS b, 3 AS c");
    recordset.OpenSql("SELECT 'x' AS d");
    EXPECT_EQ(recordset.GetODBCFieldCount(), 1);
    EXPECT_STREQ(InfoOf(recordset, 0).m_strName, "d");
    EXPECT_EQ(CodeOfReading(recordset, 1), 1026);
    EXPECT_EQ(RestOf(recordset), std::vector<Row>{{"x"}});
    recordset.DescribeColumns();
    EXPECT_EQ(recordset.GetODBCFieldCount(), 1);
}

TEST_P(Recordset, RejectedStatementClosesItAndSparesTheConnection) {
    const std::string table = MakeTable("t", "a integer");
    _CRecordsetEx recordset(&m_database);
    for (const char* rejected : {"SELEKT 1", "SELECT a FROM nosuchtable", "SELECT 名称 FROM 没有此表"}) {
        recordset.OpenSql("SELECT 1");
        try {
            recordset.OpenSql(CString(Gbk(rejected)));
            ADD_FAILURE() << rejected;
        } catch (const CDBException& error) {
            EXPECT_FALSE(error.GetErrorMessage().IsEmpty());
            EXPECT_EQ(error.GetState().GetLength(), 5);
        }
        EXPECT_FALSE(recordset.IsOpen());
        EXPECT_TRUE(recordset.IsEOF());
    }
    recordset.OpenSql(CString(Gbk("SELECT a FROM " + table)));
    EXPECT_TRUE(recordset.IsOpen());
}

TEST_P(Recordset, SeveralAreReadSideBySide) {
    const std::string table = MakeTable("t", "a integer");
    Execute("INSERT INTO " + table + " VALUES (1), (2)");
    const CString select(Gbk("SELECT a FROM " + table + " ORDER BY a"));
    _CRecordsetEx first(&m_database);
    _CRecordsetEx second(&m_database);
    first.OpenSql(select);
    second.OpenSql(select);
    first.MoveNext();
    EXPECT_EQ(RestOf(second), (std::vector<Row>{{"1"}, {"2"}}));
    second.Close();
    EXPECT_EQ(RestOf(first), std::vector<Row>{{"2"}});
}

TEST_P(Recordset, FetchesAValueInPieces) {
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("SELECT 'abcdefg', NULL");
    char piece[4];
    const auto fetch = [&](SWORD column) {
        return _CRecordsetEx::FetchData(&m_database, recordset.m_hstmt, column, 1, piece, sizeof piece, 12);
    };
    EXPECT_THAT(fetch(1), AnyOf(7, -4));  // -4: the driver does not tell
    EXPECT_STREQ(piece, "abc");
    EXPECT_THAT(fetch(1), AnyOf(4, -4));
    EXPECT_STREQ(piece, "def");
    EXPECT_EQ(fetch(1), 1);
    EXPECT_STREQ(piece, "g");
    try {
        fetch(1);
        ADD_FAILURE();
    } catch (const CDBException& error) {
        EXPECT_EQ(error.m_nRetCode, 100);
    }
    EXPECT_EQ(fetch(2), -1);
    EXPECT_THROW(fetch(3), CDBException);
}

TEST_F(SqliteRecordset, ColumnNameIsCutAt256BytesAndNeverInsideACharacter) {
    std::string chinese = "x";
    for (int i = 0; i < 200; ++i)
        chinese += "路";
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT 1 AS " + std::string(256, 'a') + ", 2 AS " + std::string(300, 'b') +
                                  ", 3 AS " + chinese)));
    std::vector<std::string> names;
    for (short i = 0; i < 3; ++i) {
        CODBCFieldInfo info;
        recordset.GetODBCFieldInfo(i, info);
        names.emplace_back(info.m_strName.View());
    }
    EXPECT_THAT(names, testing::ElementsAre(std::string(256, 'a'), std::string(256, 'b'),
                                            Gbk(chinese).substr(0, 255)));
}

TEST_F(SqliteRecordset, AnswersItsRunTimeClass) {
    _CRecordsetEx recordset(&m_database);
    EXPECT_STREQ(recordset.GetRuntimeClass()->m_lpszClassName, "_CRecordsetEx");
    EXPECT_TRUE(recordset.IsKindOf(&_CRecordsetEx::class_CRecordsetEx));
    EXPECT_TRUE(recordset.IsKindOf(&CRecordset::classCRecordset));
    EXPECT_FALSE(CObject::classCObject.IsDerivedFrom(&CRecordset::classCRecordset));
}
