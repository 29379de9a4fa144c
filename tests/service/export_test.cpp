#include <map>

#include "kortavin/service/querysql.h"
#include "tests/support/databases.h"

using namespace kortavin::test;
using namespace std::string_literals;

namespace {

class Export : public EveryDatabaseTest {
  protected:
    void SetUp() override {
        EveryDatabaseTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        m_table = MakeTable("id integer, 名称 varchar(20), memo " + LongTextType() + ", day date");
        Execute("INSERT INTO " + m_table + " VALUES (7, '道''路\"', 'a,b', '2024-02-29'), " +
                "(8, '', NULL, NULL), (NULL, '😀', '', '1999-12-31')");
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

std::string Number(std::size_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

std::string Padded(const std::string& text, std::size_t size) {
    return text + std::string(size - text.size(), ' ');
}

}  // namespace

TEST_P(Export, TextLayoutsDifferInSeparatorAndQuotesOfTextsAndNames) {
    const std::string pattern =  // | is the separator, Q the quote
        "QidQ|Q名称Q|QmemoQ|QdayQ\r\n"
        "7|Q道'路\"Q|Qa,bQ|2024-02-29\r\n"
        "8|QQ|QQ|\r\n"
        "|Q😀Q|QQ|1999-12-31\r\n";
    using Texts = std::map<int, std::string>;
    for (const auto& [format, separator] : Texts{{1, ","}, {2, " "}, {3, "\t"}})
        for (const auto& [quoteMode, quote] : Texts{{2, "'"}, {3, "\""}, {1, ""}, {4, ""}}) {
            std::string expected;
            for (const char c : pattern)
                expected += c == '|' ? separator : c == 'Q' ? quote : std::string(1, c);
            expected = Gbk(expected);
            EXPECT_EQ(Exported(format, quoteMode, -1, m_select), expected);
            EXPECT_EQ(Exported(format, quoteMode, 0, m_select), expected.substr(expected.find('\n') + 1));
        }
}

TEST_P(Export, BinaryLayoutHasABytewiseHeaderAndBareValuesWithTheirLengths) {
    std::string header = "VESKARDO CORP QUERY DATA" + Number(1) + Number(4);
    for (const char* name : {"id", "\xC3\xFB\xB3\xC6", "memo", "day"})
        header += Padded(name, 32);
    header += "\x04\0\x0C\0\xFF\xFF\x09\0"s;
    for (const char* type : {"SQL_INTEGER", "SQL_VARCHAR", "SQL_LONGVARCHAR", "SQL_DATE"})
        header += Padded(type, 18) + "\0\0"s;
    header += Padded("", 4 * 64) + Number(0) + Number(10) + Number(2) + Number(3);
    std::string records;
    for (const std::string value : {"7", "\xB5\xC0'\xC2\xB7\"", "a,b", "2024-02-29", "8", "", "", "", "",
                                    "\x94\x39\xFC\x36", "", "1999-12-31"})
        records += Number(value.size()) + value;
    EXPECT_EQ(Exported(10, 2, 1, m_select), header + records);
    EXPECT_EQ(Exported(10, 3, 0, m_select), records);
}

TEST_P(Export, BinaryNamesAreCutAtByte32EvenInsideACharacter) {
    const std::string name31(31, 's');
    const std::string binary = Exported(10, 2, 1, "SELECT 1 AS " + name31 + "道, 2 AS " + name31 + "tt");
    EXPECT_EQ(binary.substr(32, 64), name31 + "\xB5" + name31 + "t");
}

TEST_P(Export, WithoutRowsOrColumnsIsTheHeaderOnly) {
    const std::string none = "SELECT id, 名称 FROM " + m_table + " WHERE id = 99";
    EXPECT_EQ(Exported(1, 2, 1, none), Gbk("'id','名称'\r\n"));
    EXPECT_EQ(Exported(10, 2, 1, none).size(), 284U);

    const std::string insert = "INSERT INTO " + m_table + " VALUES (1, '', '', NULL)";
    EXPECT_EQ(Exported(1, 2, 1, insert), "");
    EXPECT_EQ(Exported(10, 3, 1, insert).size(), 48U);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM " + m_table), std::vector<Row>{{"5"}});
}

TEST_P(Export, OtherFormatsExecuteAndWriteNothingAndANullFileNotEvenThat) {
    const std::string erase = "DELETE FROM " + m_table;
    EXPECT_EQ(m_query.QueryDataToFile(nullptr, 1, 2, 1, CString(erase)), 0);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM " + m_table), std::vector<Row>{{"3"}});
    for (const std::string& sql : {m_select, erase})
        EXPECT_EQ(Exported(4, 2, 1, sql), "");
    EXPECT_EQ(Query("SELECT COUNT(*) FROM " + m_table), std::vector<Row>{{"0"}});
}

TEST_P(Export, InTheMiddleOfAFileLeavesTheRestOfItAlone) {
    const std::string path = m_folder / "out";
    const std::string former(2000, '.');
    MakeFile(path, former);
    CFile file(path.c_str(), CFile::modeReadWrite);
    file.Seek(100, CFile::begin);
    EXPECT_EQ(m_query.QueryDataToFile(&file, 10, 2, 1, CString(Gbk(m_select))), 1);
    EXPECT_EQ(file.GetPosition(), 100U + 48 + 4 * 118);  // behind the count
    file.Close();
    const std::string exported = Exported(10, 2, 1, m_select);
    EXPECT_EQ(ContentOf(path), former.substr(0, 100) + exported + former.substr(100 + exported.size()));
}
