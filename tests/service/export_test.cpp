#include "service/querysql.h"
#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

class Export : public EveryDatabaseTest {
  protected:
    void SetUp() override {
        EveryDatabaseTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        m_table = MakeTable("t", "id integer, 名称 varchar(20), memo " + LongTextType() + ", day date");
        Execute("INSERT INTO " + m_table + " VALUES (7, '道''路\"', 'a,b', '2024-02-29')");
        Execute("INSERT INTO " + m_table + " VALUES (8, '', NULL, NULL)");
        Execute("INSERT INTO " + m_table + " VALUES (NULL, '😀', '', '1999-12-31')");
        m_select = "SELECT id, 名称, memo, day FROM " + m_table + " ORDER BY coalesce(id, 9)";
    }
    std::string Exported(int format, int quoteMode, int header, const std::string& sql) {
        CMemFile file;
        EXPECT_EQ(m_query.QueryDataToFile(&file, format, quoteMode, header, CString(Gbk(sql))), 1);
        return std::string(file.GetContent());
    }

    CQuerySql m_query{&m_database};
    std::string m_table;
    std::string m_select;
};
INSTANTIATE_TEST_SUITE_P(On, Export, kEveryBackend, BackendName);

}  // namespace

TEST_P(Export, TextLayoutsDifferInSeparatorAndQuotesOfTextsAndNames) {
    const std::string pattern =  // | is the separator, Q the quote
        "QidQ|Q名称Q|QmemoQ|QdayQ\r\n"
        "7|Q道'路\"Q|Qa,bQ|2024-02-29\r\n"
        "8|QQ|QQ|\r\n"
        "|Q😀Q|QQ|1999-12-31\r\n";
    static const std::map<int, std::string> kSeparators = {{1, ","}, {2, " "}, {3, "\t"}};
    static const std::map<int, std::string> kQuotes = {{2, "'"}, {3, "\""}, {1, ""},
                                                       {0, ""},  {-1, ""},  {4, ""}};
    for (const auto& [format, separator] : kSeparators)
        for (const auto& [quoteMode, quote] : kQuotes) {
            std::string expected;
            for (const char c : pattern)
                expected += c == '|' ? separator : c == 'Q' ? quote : std::string(1, c);
            expected = Gbk(expected);
            EXPECT_EQ(Exported(format, quoteMode, -1, m_select), expected);
            EXPECT_EQ(Exported(format, quoteMode, 0, m_select), expected.substr(expected.find('\n') + 1));
        }
}

TEST_P(Export, BinaryRecordsAreLengthsAndBareValues) {
    using namespace std::string_literals;
    std::string records;
    for (const std::string value : {"7", "\xB5\xC0'\xC2\xB7\"", "a,b", "2024-02-29", "8", "", "", "", "",
                                    "\x94\x39\xFC\x36", "", "1999-12-31"})
        records += static_cast<char>(value.size()) + "\0\0\0"s + value;
    for (const int quoteMode : {1, 2, 3})
        EXPECT_EQ(Exported(10, quoteMode, 0, m_select), records);
    const std::string whole = Exported(10, 2, 1, m_select);
    const std::size_t headerSize = 48 + 118 * 4;
    ASSERT_EQ(whole.size(), headerSize + records.size());
    EXPECT_EQ(whole.substr(headerSize), records);
    EXPECT_EQ(whole.substr(headerSize - 12, 12), "\x0A\0\0\0\x02\0\0\0\x03\0\0\0"s);
}

TEST_P(Export, ResultWithoutRowsIsTheHeaderOnly) {
    const std::string none = "SELECT id, 名称 FROM " + m_table + " WHERE id = 99";
    EXPECT_EQ(Exported(1, 2, 1, none), Gbk("'id','名称'\r\n"));
    EXPECT_EQ(Exported(1, 2, 0, none), "");
    EXPECT_EQ(Exported(10, 2, 0, none), "");
    EXPECT_EQ(Exported(10, 2, 1, none).size(), 284U);
}

TEST_P(Export, OtherFormatsExecuteAndWriteNothing) {
    for (const int format : {4, 0, -1, 11})
        for (const int header : {0, 1})
            EXPECT_EQ(Exported(format, 2, header, m_select), "");
    EXPECT_EQ(Exported(4, 2, 1, "DELETE FROM " + m_table), "");
    EXPECT_EQ(Query("SELECT id FROM " + m_table), std::vector<Row>{});
}

TEST_P(Export, StatementWithoutResultGivesAHeaderAndNoRecords) {
    const std::string insert = "INSERT INTO " + m_table + " VALUES (1, '', '', NULL)";
    EXPECT_EQ(Exported(1, 2, 1, insert), "");
    const std::string binary = Exported(10, 3, 1, insert);
    ASSERT_EQ(binary.size(), 48U);
    EXPECT_EQ(binary.substr(0, 24), "VESKARDO CORP QUERY DATA");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM " + m_table), std::vector<Row>{{"5"}});
}

TEST_P(Export, RejectedStatementAndMissingFileWriteAndExecuteNothing) {
    CMemFile file;
    for (const int format : {1, 10})
        EXPECT_EQ(m_query.QueryDataToFile(&file, format, 2, 1, "SELECT x FROM nosuchtable"), 0);
    EXPECT_EQ(file.GetContent(), "");
    const CString erase(Gbk("DELETE FROM " + m_table));
    EXPECT_EQ(m_query.QueryDataToFile(nullptr, 1, 2, 1, erase), 0);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM " + m_table), std::vector<Row>{{"3"}});
}

TEST(WriteByFormat, WritesAValueAndWhatFollowsIt) {
    struct Derived : CQuerySql {
        std::string Written(const char* text, int format, int isLast) {
            CMemFile file;
            CString value(text);
            WriteByFormat(&file, value, format, isLast);
            return std::string(file.GetContent());
        }
    } query;
    EXPECT_EQ(query.Written("a,", 1, 0), "a,,");
    EXPECT_EQ(query.Written("a", 2, 0), "a ");
    EXPECT_EQ(query.Written("", 3, 0), "\t");
    EXPECT_EQ(query.Written("", 2, -1), "\r\n");
    for (const int isLast : {0, 1}) {
        EXPECT_EQ(query.Written("ab", 10, isLast), std::string("\x02\0\0\0ab", 6));
        EXPECT_EQ(query.Written("", 10, isLast), std::string(4, '\0'));
        EXPECT_EQ(query.Written("a", 4, isLast), "");
    }
}

TEST_P(Export, ManyRowsOfGrowingLengthComeInOrder) {
    const std::string table = MakeTable("many", "id integer, a " + LongTextType());
    std::string expected;
    m_database.BeginTrans();
    for (int i = 0; i < 1500; ++i) {
        const std::string id = std::to_string(i);
        const std::string text(static_cast<std::size_t>(i) * 3, static_cast<char>('a' + i % 26));
        Execute("INSERT INTO " + table + " VALUES (" + id + ", '" + text + "')");
        expected += id + "\t" + text + "\r\n";
    }
    m_database.CommitTrans();
    EXPECT_TRUE(Exported(3, 1, 0, "SELECT id, a FROM " + table + " ORDER BY id") == expected);
}
