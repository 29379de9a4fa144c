#include "tests/support/databases.h"

using namespace kortavin::test;

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
        text += four ? "😀1x" : i % 2 == 0 ? "道" : "路";
    }
    return text.substr(0, utf8Bytes);
}

class Values : public EveryDatabaseTest {
  protected:
    void SetUp() override {
        EveryDatabaseTest::SetUp();
        if (!IsSkipped() && !HasFatalFailure())
            m_table = MakeTable(
                "t", "id integer, a " + LongTextType() + ", b " + LongTextType() + ", c varchar(5000)");
    }
    void Insert(int id, const std::string& a, const std::string& b = "", const std::string& c = "") {
        Execute("INSERT INTO " + m_table + " VALUES (" + std::to_string(id) + ", '" + a + "', '" + b +
                "', '" + c + "')");
    }
    void ExpectRows(const std::string& order, const std::vector<std::string>& expected);

    std::string m_table;
};
INSTANTIATE_TEST_SUITE_P(On, Values, kEveryBackend, BackendName);

// Compares without printing megabytes.
void ExpectSame(const std::string& got, const std::string& expected) {
    ASSERT_EQ(got.size(), expected.size());
    EXPECT_TRUE(got == expected) << "of " << got.size() << " bytes";
}

void Values::ExpectRows(const std::string& order, const std::vector<std::string>& expected) {
    const std::vector<Row> rows = Query("SELECT a FROM " + m_table + " ORDER BY id " + order);
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        ExpectSame(rows[i][0], Gbk(expected[order == "ASC" ? i : rows.size() - 1 - i]));
}

}  // namespace

TEST_P(Values, OfEverySizeAroundTheBuffersComeWhole) {
    std::vector<std::string> values;
    for (const std::size_t border : {16, 40, 256, 512, 1024, 4096, 8192, 16384, 70000})
        for (std::size_t size = border - 3; size <= border + 3; ++size) {
            values.push_back(Ascii(size));
            values.push_back(Chinese(size));
        }
    m_database.BeginTrans();
    for (std::size_t i = 0; i < values.size(); ++i)
        Insert(static_cast<int>(i), values[i]);
    m_database.CommitTrans();
    ExpectRows("ASC", values);   // each longer than the ones before
    ExpectRows("DESC", values);  // and shorter
}

TEST_P(Values, OfMegabytesComeWhole) {
    const std::vector<std::string> values = {Ascii(3'000'000), "", Chinese(3'000'000), Chinese(2'097'151)};
    for (std::size_t i = 0; i < values.size(); ++i)
        Insert(static_cast<int>(i), values[i]);
    ExpectRows("ASC", values);
}

TEST_P(Values, OfSeveralLongColumnsKeepApart) {
    Insert(1, Ascii(70000), Chinese(90000), Chinese(4097));
    Insert(2, "short", Ascii(4096), "");
    Insert(3, Chinese(300), "", Ascii(5000));
    const std::vector<Row> rows = Query("SELECT a, id, b, NULL, c FROM " + m_table + " ORDER BY id");
    const std::vector<Row> expected = {{Ascii(70000), "1", Gbk(Chinese(90000)), "", Gbk(Chinese(4097))},
                                       {"short", "2", Ascii(4096), "", ""},
                                       {Gbk(Chinese(300)), "3", "", "", Ascii(5000)}};
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        for (std::size_t j = 0; j < rows[i].size(); ++j)
            ExpectSame(rows[i][j], expected[i][j]);
}

TEST_P(Values, ReadBackwardsAndOnlyInPartAreRight) {
    Insert(1, "first", Chinese(600), "c1");
    Insert(2, Ascii(5000), "second", "c2");
    Insert(3, "third", Ascii(300), "c3");
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT a, b, c FROM " + m_table + " ORDER BY id")));
    CString value;
    recordset.ReadFieldText(2, value);
    EXPECT_STREQ(value, "c1");
    recordset.ReadFieldText(0, value);
    EXPECT_STREQ(value, "first");
    recordset.MoveNext();  // past a long value that nobody read
    recordset.ReadFieldText(1, value);
    EXPECT_STREQ(value, "second");
    recordset.MoveNext();
    recordset.ReadFieldText(1, value);
    ExpectSame(std::string(value.View()), Ascii(300));
}

// A driver may refuse to give a value again, but then it is an error and not a part of the value.
TEST_P(Values, ReadAgainAreTheSameOrAnError) {
    const std::vector<std::string> texts = {"short", Chinese(1000), Ascii(100000), "short", Ascii(300)};
    for (std::size_t i = 0; i < texts.size(); ++i)
        Insert(static_cast<int>(i), texts[i]);
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT a, id FROM " + m_table + " ORDER BY id")));
    for (std::size_t i = 0; i < texts.size(); ++i, recordset.MoveNext()) {
        CString value;
        recordset.ReadFieldText(0, value);
        ExpectSame(std::string(value.View()), Gbk(texts[i]));
        for (const short between : {0, 1}) {
            if (between != 0)
                recordset.ReadFieldText(1, value);
            try {
                recordset.ReadFieldText(0, value);
                ExpectSame(std::string(value.View()), Gbk(texts[i]));
            } catch (const CDBException& error) {
                EXPECT_EQ(error.m_nRetCode, 100) << error.m_strError;
            }
        }
    }
}
