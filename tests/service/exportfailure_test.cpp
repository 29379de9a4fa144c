#include "service/querysql.h"
#include "tests/framework/base/filelimit.h"
#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

// A host's file on a disk with room for so many bytes.
class FullFile : public CMemFile {
  public:
    explicit FullFile(std::size_t room) : m_room(room) {}

    void Write(const void* buffer, UINT count) override {
        const std::size_t left = m_room - std::min<std::size_t>(m_room, GetPosition());
        CMemFile::Write(buffer, std::min(count, static_cast<UINT>(left)));
        if (count > left)
            throw CFileException(CFileException::diskFull, 0, "host");
    }

  private:
    std::size_t m_room;
};

constexpr std::size_t kHeaderSize = 48 + 118 * 2;   // of two columns
constexpr std::size_t kRecordSize = 4 + 1 + 4 + 2;  // of each row

class ExportFailure : public SqliteTest {
  protected:
    void SetUp() override {
        SqliteTest::SetUp();
        Execute("CREATE TABLE t (a integer, b text)");
        Execute("INSERT INTO t VALUES (1, 'xx'), (2, 'yy'), (3, 'zz')");
    }
    int Export(CFile& file, int format, int header, const char* sql = "SELECT a, b FROM t") {
        return CQuerySql(&m_database).QueryDataToFile(&file, format, 1, header, sql);
    }
    std::string Whole(int format, int header) {
        CMemFile file;
        EXPECT_EQ(Export(file, format, header), 1);
        return std::string(file.GetContent());
    }
    // A statement that was left open would lock the table.
    void ExpectNothingIsLeftOpen() { EXPECT_NO_THROW(Execute("DROP TABLE t")); }
};

}  // namespace

TEST_F(ExportFailure, InTheHeaderReachesTheCaller) {
    const std::string whole = Whole(10, 1);
    for (const std::size_t room : {0, 1, 24, 31, 100, 279, 280, 283}) {
        FullFile file(room);
        EXPECT_THROW(Export(file, 10, 1), CFileException) << room;
        std::string expected = whole.substr(0, room);
        if (room > 280)
            expected[280] = '\0';  // the count is still 0 then
        EXPECT_EQ(file.GetContent(), expected);
    }
    FullFile file(4);
    EXPECT_THROW(Export(file, 1, 1), CFileException);
    EXPECT_EQ(file.GetContent(), "a,b\r");
    ExpectNothingIsLeftOpen();
}

TEST_F(ExportFailure, InTheRowsAnswers0AndKeepsWhatWasWritten) {
    for (const int format : {1, 2, 3, 10}) {
        const std::string whole = Whole(format, 0);
        for (std::size_t room = 0; room < whole.size(); ++room) {
            FullFile file(room);
            EXPECT_EQ(Export(file, format, 0), 0) << format << ", " << room;
            EXPECT_EQ(file.GetContent(), whole.substr(0, room));
        }
        FullFile enough(whole.size());
        EXPECT_EQ(Export(enough, format, 0), 1);
    }
    ExpectNothingIsLeftOpen();
}

TEST_F(ExportFailure, BinaryCountHasThePartlyWrittenRow) {
    const std::string whole = Whole(10, 1);
    ASSERT_EQ(whole.size(), kHeaderSize + 3 * kRecordSize);
    for (std::size_t written = 0; written < 3 * kRecordSize; ++written) {
        FullFile file(kHeaderSize + written);
        EXPECT_EQ(Export(file, 10, 1), 0);
        std::string expected = whole.substr(0, kHeaderSize + written);
        expected[kHeaderSize - 4] = static_cast<char>(written / kRecordSize + 1);
        EXPECT_EQ(file.GetContent(), expected) << written;
        EXPECT_EQ(file.GetPosition(), kHeaderSize);
    }
}

TEST_F(ExportFailure, OfAnyKindInAHostsFileIsTrapped) {
    class OddFile : public CMemFile {
      public:
        void Write(const void* buffer, UINT count) override {
            if (GetPosition() + count > 10)
                throw 42;
            CMemFile::Write(buffer, count);
        }
    };
    OddFile file;
    EXPECT_EQ(Export(file, 1, 0), 0);
    EXPECT_EQ(file.GetContent(), "1,xx\r\n2,yy");
    EXPECT_THROW(Export(file, 1, 1), int);
    ExpectNothingIsLeftOpen();
}

TEST_F(ExportFailure, OfTheDatabaseInTheRowsKeepsWhatCameBefore) {
    Execute("UPDATE t SET b = CAST(x'FF' AS text) WHERE a = 2");
    CMemFile text;
    EXPECT_EQ(Export(text, 1, 1), 0);
    EXPECT_EQ(text.GetContent(), "a,b\r\n1,xx\r\n2,");
    CMemFile binary;
    EXPECT_EQ(Export(binary, 10, 1), 0);
    ASSERT_EQ(binary.GetContent().size(), kHeaderSize + kRecordSize + 5);
    EXPECT_EQ(binary.GetContent().substr(kHeaderSize - 4, 4), std::string("\x02\0\0\0", 4));
    EXPECT_EQ(binary.GetPosition(), kHeaderSize);
    ExpectNothingIsLeftOpen();
}

// Files buffer, so a full disk shows only when the export flushes.
TEST_F(ExportFailure, OfAFullDiskIsNotLostInTheFilesBuffer) {
    const auto onFullDisk = [this](int format, int header, const char* sql) {
        CFile file("/dev/full", CFile::modeWrite);
        return Export(file, format, header, sql);
    };
    EXPECT_THROW(onFullDisk(1, 1, "SELECT 1 AS a"), CFileException);
    EXPECT_THROW(onFullDisk(10, 1, "SELECT 1 AS a"), CFileException);
    EXPECT_EQ(onFullDisk(1, 0, "SELECT 1 AS a"), 0);
    EXPECT_EQ(onFullDisk(10, 0, "SELECT 1 AS a"), 0);
    EXPECT_EQ(onFullDisk(1, 0, "SELECT a FROM t WHERE a = 99"), 1);
}

TEST_F(ExportFailure, OfALimitedDiskPatchesTheCountAndKeepsWhatFits) {
    const std::string path = m_folder / "out";
    const std::string whole = Whole(10, 1);
    CFile file(path.c_str(), CFile::modeCreate | CFile::modeReadWrite);
    int answer;
    {
        const FileLimit limit(kHeaderSize + kRecordSize + 3);
        answer = Export(file, 10, 1);
    }
    file.Close();
    EXPECT_EQ(answer, 0);
    const std::string content = ContentOf(path);
    ASSERT_EQ(content.size(), kHeaderSize + kRecordSize + 3);
    EXPECT_EQ(content.substr(kHeaderSize), whole.substr(kHeaderSize, kRecordSize + 3));
    EXPECT_EQ(content.substr(0, kHeaderSize - 4), whole.substr(0, kHeaderSize - 4));
    EXPECT_GE(content[kHeaderSize - 4], 2);  // begun until the buffer had to be written
}
