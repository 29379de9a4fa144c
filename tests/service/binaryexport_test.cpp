#include "service/querysql.h"
#include "tests/support/databases.h"

using namespace kortavin::test;
using namespace std::string_literals;

namespace {

std::string Number(unsigned value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    return bytes;
}

std::string Padded(const std::string& text, std::size_t size) {
    return text + std::string(size - text.size(), ' ');
}

class BinaryExport : public SqliteTest {
  protected:
    int Export(CFile& file, const std::string& sql, int format = 10) {
        return CQuerySql(&m_database).QueryDataToFile(&file, format, 2, 1, CString(Gbk(sql)));
    }
};

const std::string kEnd = Number(0) + Number(10) + Number(2);

}  // namespace

TEST_F(BinaryExport, IsLaidOutByteForByte) {
    Execute("CREATE TABLE t (名称 varchar(20), day date, n integer)");
    Execute("INSERT INTO t VALUES ('道路', '2024-02-29', -12), (NULL, NULL, NULL)");
    CMemFile file;
    EXPECT_EQ(Export(file, "SELECT 名称, day, n FROM t"), 1);
    const std::string expected =
        "VESKARDO CORP QUERY DATA" + Number(1) + Number(3) + Padded("\xC3\xFB\xB3\xC6", 32) +
        Padded("day", 32) + Padded("n", 32) + "\x0C\0\x09\0\x04\0"s + Padded("SQL_VARCHAR", 18) + "\0\0"s +
        Padded("SQL_DATE", 18) + "\0\0"s + Padded("SQL_INTEGER", 18) + "\0\0"s + Padded("", 3 * 64) + kEnd +
        Number(2) + Number(4) + "\xB5\xC0\xC2\xB7" + Number(10) + "2024-02-29" + Number(3) + "-12" +
        Number(0) + Number(0) + Number(0);
    EXPECT_EQ(file.GetContent(), expected);
    EXPECT_EQ(file.GetPosition(), 48U + 118 * 3);
}

TEST_F(BinaryExport, NegativeTypeCodesAndEmptyResult) {
    Execute("CREATE TABLE t (a text, b bigint)");
    CMemFile file;
    EXPECT_EQ(Export(file, "SELECT a, b FROM t"), 1);
    const std::string content(file.GetContent());
    ASSERT_EQ(content.size(), 284U);
    EXPECT_EQ(content.substr(96, 4), "\xFF\xFF\xFB\xFF");
    EXPECT_EQ(content.substr(100, 40),
              Padded("SQL_LONGVARCHAR", 18) + "\0\0"s + Padded("SQL_BIGINT", 18) + "\0\0"s);
    EXPECT_EQ(content.substr(280), Number(0));
}

TEST_F(BinaryExport, NamesAreCutAtByte32EvenInsideACharacter) {
    const std::string name40(40, 'n');
    const std::string name32(32, 'm');
    const std::string split = std::string(31, 's') + "道";
    CMemFile file;
    EXPECT_EQ(Export(file, "SELECT 1 AS " + name40 + ", 2 AS " + name32 + ", 3 AS " + split + ", 4 AS abc"),
              1);
    EXPECT_EQ(file.GetContent().substr(32, 4 * 32),
              name40.substr(0, 32) + name32 + std::string(31, 's') + "\xB5" + Padded("abc", 32));
}

TEST_F(BinaryExport, InTheMiddleOfAFileLeavesTheRestOfItAlone) {
    const std::string path = m_folder / "out";
    const std::string former(1000, '.');
    MakeFile(path, former);
    std::string exported;
    {
        CFile file(path.c_str(), CFile::modeReadWrite);
        file.Seek(100, CFile::begin);
        EXPECT_EQ(Export(file, "SELECT 1 AS a UNION ALL SELECT 2"), 1);
        EXPECT_EQ(file.GetPosition(), 100U + 48 + 118);
        file.Close();
        CMemFile alone;
        Export(alone, "SELECT 1 AS a UNION ALL SELECT 2");
        exported = alone.GetContent();
    }
    EXPECT_EQ(exported.substr(162), Number(2) + Number(1) + "1" + Number(1) + "2");
    EXPECT_EQ(ContentOf(path), former.substr(0, 100) + exported + former.substr(100 + exported.size()));
}

TEST_F(BinaryExport, TextExportLeavesTheFileBehindItsLastLine) {
    Execute("CREATE TABLE t (a integer, b integer)");
    Execute("INSERT INTO t VALUES (1, 2)");
    CMemFile file;
    file.Write("before ", 7);
    EXPECT_EQ(Export(file, "SELECT a FROM t", 1), 1);
    EXPECT_EQ(Export(file, "SELECT b FROM t", 1), 1);
    EXPECT_EQ(file.GetContent(), "before 'a'\r\n1\r\n'b'\r\n2\r\n");
}
