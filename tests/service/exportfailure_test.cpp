#include "kortavin/service/exportrows.h"
#include "kortavin/service/querysql.h"
#include "kortavin/service/statement.h"
#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

struct HostsError {};

// A host's file on a disk with room for so many bytes.
class HostsFile : public CMemFile {
  public:
    explicit HostsFile(std::size_t room) : m_room(room) {}

    void Write(const void* buffer, UINT count) override {
        const std::size_t left = m_room - std::min<std::size_t>(m_room, GetPosition());
        CMemFile::Write(buffer, std::min(count, static_cast<UINT>(left)));
        if (count > left)
            throw HostsError();
    }

  private:
    std::size_t m_room;
};

constexpr std::size_t kHeaderSize = 48 + 118 * 2;  // of two columns
constexpr std::size_t kCountPosition = kHeaderSize - 4;
constexpr std::size_t kRecordSize = 4 + 1 + 4 + 2;  // of each row

class ExportFailure : public DatabaseFixture {
  protected:
    // The rows 1,xx 2,`second` 3,zz of columns a and b.
    int Export(CFile& file, int format, int header = 1, const std::string& second = "'yy'") {
        const std::string sql =
            "SELECT 1 AS a, 'xx' AS b UNION ALL SELECT 2, " + second + " UNION ALL SELECT 3, 'zz'";
        return CQuerySql(&m_database).QueryDataToFile(&file, format, 1, header, CString(sql));
    }
};

}  // namespace

TEST_F(ExportFailure, InAHostsFileReachesTheCallerFromTheHeaderOnly) {
    for (const int format : {1, 10}) {
        CMemFile whole;
        EXPECT_EQ(Export(whole, format), 1);
        const std::size_t headerSize = format == 10 ? kHeaderSize : std::string_view("a,b\r\n").size();
        for (std::size_t room = 0; room < whole.GetContent().size(); ++room) {
            SCOPED_TRACE(room);
            HostsFile file(room);
            std::string expected(whole.GetContent().substr(0, room));
            std::size_t begunRows = 0;
            if (room < headerSize) {
                EXPECT_THROW(Export(file, format), HostsError);
            } else {
                EXPECT_EQ(Export(file, format), 0);
                begunRows = (room - headerSize) / kRecordSize + 1;
            }
            if (format == 10 && room > kCountPosition)
                expected[kCountPosition] = static_cast<char>(begunRows);
            EXPECT_EQ(file.GetContent(), expected);
        }
    }
}

TEST_F(ExportFailure, OfTheDatabaseInTheRowsKeepsWhatCameBefore) {
    CMemFile text;
    EXPECT_EQ(Export(text, 1, 1, "CAST(x'FF' AS text)"), 0);
    EXPECT_EQ(text.GetContent(), "a,b\r\n1,xx\r\n2,");
    CMemFile binary;
    EXPECT_EQ(Export(binary, 10, 1, "CAST(x'FF' AS text)"), 0);
    EXPECT_EQ(binary.GetContent().size(), kHeaderSize + kRecordSize + 5);
    EXPECT_EQ(binary.GetContent()[kCountPosition], '\x02');
}

// Files buffer, so a full disk shows only when the export flushes.
TEST_F(ExportFailure, OfAFullDiskIsNotLostInTheFilesBuffer) {
    for (const int format : {1, 10}) {
        CFile headed("/dev/full", CFile::modeWrite);
        EXPECT_THROW(Export(headed, format, 1), CFileException);
        CFile bare("/dev/full", CFile::modeWrite);
        EXPECT_EQ(Export(bare, format, 0), 0);
    }
}

TEST_F(ExportFailure, AConnectionThatIsClosedMeanwhileIsNoEnd) {
    namespace service = kortavin::service;
    const auto rows = service::OpenStatement(m_database, "SELECT 1 UNION ALL SELECT 2 UNION ALL SELECT 3");
    CMemFile file;
    const auto close = [this](const service::ExportProgress& progress) {
        if (progress.rows == 2)
            m_database.Close();
    };
    EXPECT_THROW(service::ExportRows(file, {}, *rows, close), CDBException);
    EXPECT_THROW(service::ExportRows(file, {}, *rows), CDBException);
}
