#include "kortavin/db/catalogrecordsets.h"
#include "tests/support/databases.h"

using namespace kortavin::test;
using testing::AnyOf;

namespace {

// Text of which every part differs, so that a piece that is lost, doubled or exchanged shows.
std::string Ascii(std::size_t bytes) {
    std::string text;
    for (int i = 0; text.size() < bytes; ++i)
        text += std::to_string(i) + ";";
    return text.substr(0, bytes);
}

// The same with characters of three bytes and some of four, so that characters lie across every border.
std::string Chinese(std::size_t utf8Bytes) {
    std::string text(utf8Bytes % 3, 'x');
    for (int i = 0; text.size() < utf8Bytes; ++i) {
        const bool four = i % 10 == 0 && utf8Bytes - text.size() >= 12;
        text += four ? "😀" + std::to_string(i / 10 % 90 + 10) : i % 2 == 0 ? "道" : "路";
    }
    return text;
}

class Recordset : public EveryDatabaseTest {
  protected:
    RETCODE CodeOfReading(short index) {
        CString value;
        return ErrorOf([&] { m_recordset.ReadFieldText(index, value); }).m_nRetCode;
    }

    _CRecordsetEx m_recordset{&m_database};
};
INSTANTIATE_TEST_SUITE_P(On, Recordset, kEveryBackend, BackendName);

}  // namespace

TEST_P(Recordset, DescribesItsColumnsAndReadsThemInTheDriversTextForm) {
    const std::string table =
        MakeTable("名称 varchar(20), b " + LongTextType() +
                  ", c char(3), d date, e time, f timestamp, g integer, h bigint, i double precision");
    Execute("INSERT INTO " + table + " VALUES ('道路', 'b', 'abc', '2024-02-29', '12:34:56', " +
            "'2024-02-29 12:34:56', -7, -9223372036854775808, 0.5), " +
            "('x', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)");
    m_recordset.OpenSql(CString(Gbk("SELECT * FROM " + table + " ORDER BY d IS NULL")));
    std::vector<int> types;
    CODBCFieldInfo info;
    for (short i = m_recordset.GetODBCFieldCount(); i-- > 0;) {
        m_recordset.GetODBCFieldInfo(i, info);
        types.insert(types.begin(), info.m_nSQLType);
    }
    EXPECT_THAT(types, testing::ElementsAre(12, -1, AnyOf(1, 12), 9, 10, 11, 4, -5, AnyOf(6, 8)));
    EXPECT_STREQ(info.m_strName, "\xC3\xFB\xB3\xC6");
    EXPECT_EQ(info.m_nPrecision, 20U);
    EXPECT_EQ(RestOf(m_recordset),
              (std::vector<Row>{{"\xB5\xC0\xC2\xB7", "b", "abc", "2024-02-29", "12:34:56",
                                 "2024-02-29 12:34:56", "-7", "-9223372036854775808", "0.5"},
                                {"x", "", "", "", "", "", "", "", ""}}));
}

// The borders are those of bound buffers, which double, and of the joined pieces of longer values. Each row
// is longer than the one before in its first column, and shorter in its second.
TEST_P(Recordset, ValuesOfEverySizeAroundTheBuffersComeWholeInWhateverOrderTheyAreRead) {
    std::vector<std::string> values = {""};
    for (const std::size_t border : {40, 256, 512, 1024, 4096, 8192, 16384, 20480, 86016})
        for (std::size_t size = border - 3; size <= border + 1; ++size) {
            values.push_back(Ascii(size));
            values.push_back(Chinese(size));
        }
    values.push_back(Chinese(3'000'000));
    const std::size_t last = values.size() - 1;

    const std::string table = MakeTable("id integer, a " + LongTextType() + ", b " + LongTextType());
    m_database.BeginTrans();
    for (std::size_t i = 0; i <= last; ++i)
        Execute("INSERT INTO " + table + " VALUES (" + std::to_string(i) + ", '" + values[i] + "', '" +
                values[last - i] + "')");
    m_database.CommitTrans();
    m_recordset.OpenSql(CString(Gbk("SELECT a, b FROM " + table + " ORDER BY id")));
    const auto expectValue = [&](short column, const std::string& expected) {
        CString value;
        m_recordset.ReadFieldText(column, value);
        // Compared without printing megabytes.
        EXPECT_TRUE(value.View() == Gbk(expected)) << expected.size() << " bytes in column " << column;
    };
    for (std::size_t i = 0; i <= last; ++i, m_recordset.MoveNext()) {
        if (i % 3 == 0)
            expectValue(0, values[i]);
        expectValue(1, values[last - i]);
        if (i % 3 == 1)  // backwards; every third row's first value stays unread
            expectValue(0, values[i]);
    }
    EXPECT_TRUE(m_recordset.IsEOF());
}

TEST_P(Recordset, BytesOfABinaryColumnAreNotTakenForText) {
    const std::string type = m_backend == Backend::Sqlite    ? "blob"
                             : m_backend == Backend::Mariadb ? "varbinary(20)"
                                                             : "bytea";
    const std::string bytes = m_backend == Backend::Sqlite || m_backend == Backend::Mariadb
                                  ? "x'e4b8adff'"
                                  : "decode('e4b8adff', 'hex')";
    const std::string table = MakeTable("a " + type);
    Execute("INSERT INTO " + table + " VALUES (" + bytes + "), (" + bytes + ")");
    const std::string expected = m_backend == Backend::Sqlite    ? "X'E4B8ADFF'"
                                 : m_backend == Backend::Mariadb ? "\xE4\xB8\xAD\xFF"
                                                                 : "e4b8adff";
    EXPECT_EQ(Query("SELECT a FROM " + table), (std::vector<Row>{{expected}, {expected}}));
}

TEST_P(Recordset, PreparedStatementIsReadLikeADirectOne) {
    const CString select(Gbk("SELECT a FROM " + MakeTable("a integer")));
    EXPECT_TRUE(m_recordset.Open(CRecordset::forwardOnly, select, CRecordset::none));
    EXPECT_TRUE(m_recordset.IsBOF() && m_recordset.IsEOF());
    EXPECT_TRUE(m_recordset.Open(CRecordset::forwardOnly, "SELECT 1", CRecordset::none));
    EXPECT_FALSE(m_recordset.IsBOF());
    EXPECT_EQ(RestOf(m_recordset), std::vector<Row>{{"1"}});
}

TEST_P(Recordset, IndexOutsideTheColumnsOfTheLatestResultIsError1026) {
    m_recordset.OpenSql("SELECT 1, 2, 3");
    for (const short index : {-1, 3, 32767})
        EXPECT_EQ(CodeOfReading(index), 1026);
    m_recordset.OpenSql("SELECT 'x' AS d");
    EXPECT_EQ(CodeOfReading(1), 1026);
    EXPECT_EQ(RestOf(m_recordset), std::vector<Row>{{"x"}});
}

TEST_P(Recordset, RejectedStatementClosesItForAnother) {
    for (const char* rejected : {"SELEKT 1", "SELECT 名称 FROM 没有此表"}) {
        m_recordset.OpenSql("SELECT 1");
        EXPECT_THROW(m_recordset.OpenSql(CString(Gbk(rejected))), CDBException) << rejected;
        EXPECT_FALSE(m_recordset.IsOpen());
        EXPECT_TRUE(m_recordset.IsEOF());
    }
    m_recordset.OpenSql("SELECT 2");
    EXPECT_EQ(RestOf(m_recordset), std::vector<Row>{{"2"}});
}

TEST(RunTimeClass, OfEveryRecordsetOfThisLayerIsTheStatementRecordset) {
    CDatabase database;
    _CRecordsetEx statement(&database);
    _CTables tables(&database);
    CColumns columns(&database);
    for (const CRecordset* recordset : std::initializer_list<CRecordset*>{&statement, &tables, &columns}) {
        EXPECT_STREQ(recordset->GetRuntimeClass()->m_lpszClassName, "_CRecordsetEx");
        EXPECT_TRUE(recordset->IsKindOf(&CRecordset::classCRecordset));
    }
}
