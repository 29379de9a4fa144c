#include "kortavin/textimport/geotextfile.h"
#include "tests/support/scripted/scarcememory.h"
#include "tests/support/tempfolder.h"
#include "tests/textimport/hostfile.h"

using namespace ::testing;
using namespace std::string_literals;
using kortavin::testing::ScarceMemory;

namespace {

// Each line and the file's position behind it, at most ten.
std::vector<std::string> ReadAll(CFile& file) {
    std::vector<std::string> lines;
    for (CGeoTextFile reader(&file); lines.size() < 10 && reader.NextLine();)
        lines.push_back(std::string(reader.GetLine().View()) + "@" + std::to_string(file.GetPosition()));
    return lines;
}

class Reader : public Test {
  protected:
    ~Reader() override { CGeoTextFile::m_MaxBufSize = 1024; }

    std::string Path(std::string_view content) const {
        MakeFile(m_folder / "f", content);
        return m_folder / "f";
    }

  private:
    TempFolder m_folder;
};

}  // namespace

TEST_F(Reader, LinesEndAtACarriageReturnWhateverTheChunks) {
    const std::string x(65535, 'x');
    const std::string y(65536, 'y');
    const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
        {"", {}},
        {"abc\r\n\r\nlast", {"abc@5", "@7", "last@11"}},
        {"ab\rXcd\r\r", {"ab@4", "cd@8"}},
        {"a\nb\n", {"a\nb\n@4"}},
        {"ab\r", {"ab@3"}},
        {"a\0b\r\n\0c\r\nd\0"s, {"a@5", "@9", "d@11"}},
        {"\xB4\xF3\r\n\xB4", {"\xB4\xF3@4", "\xB4@5"}},
        {x + "\r\n" + y + "\r\nz", {x + "@65537", y + "@131075", "z@131076"}},
    };
    for (const UINT chunk : {0U, 1U, 2U, 3U, 1024U}) {
        CGeoTextFile::m_MaxBufSize = chunk;
        for (const auto& [content, lines] : cases) {
            CFile own(Path(content).c_str(), CFile::modeRead);
            HostFile hosts(content);
            for (CFile* file : {&own, static_cast<CFile*>(&hosts)})
                EXPECT_TRUE(ReadAll(*file) == lines) << content.substr(0, 20) << " in chunks of " << chunk;
        }
    }
}

TEST_F(Reader, HostsFileSeesChunksOfTheFirstSizeAndWholeLines) {
    CGeoTextFile::m_MaxBufSize = 4;
    HostFile file("abcd\r\nef");
    CGeoTextFile reader(&file);
    EXPECT_TRUE(reader.NextLine());
    CGeoTextFile::m_MaxBufSize = 400;  // the buffer is made
    EXPECT_TRUE(reader.NextLine());
    EXPECT_FALSE(reader.NextLine());
    EXPECT_EQ(file.log,
              "seek 0 position read 4 read 4 seek 0 read 6 position "
              "position read 4 seek 6 read 2 position ");
}

TEST_F(Reader, CopiesAndNewFilesKeepTheCurrentLine) {
    CFile file(Path("first\r\nsecond\r\nthird").c_str(), CFile::modeRead);
    CGeoTextFile reader(&file);
    EXPECT_TRUE(reader.NextLine());
    CGeoTextFile copy(reader);
    EXPECT_TRUE(copy.NextLine());
    EXPECT_EQ(reader.GetLine(), "first");
    copy = reader;
    EXPECT_EQ(copy.GetLine(), "first");
    EXPECT_TRUE(copy.NextLine());  // where the file stands
    copy.SetFile(nullptr);
    EXPECT_FALSE(copy.NextLine());
    EXPECT_EQ(copy.GetLine(), "third");
}

TEST_F(Reader, ShrinkingFileEndsEarlierAndGivesOnlyWhatItHeld) {
    HostFile file("abc\r\ndefgh\r\nrest");
    file.cutBehindRead = 7;  // between looking for the line's end and reading the line
    EXPECT_THAT(ReadAll(file), ElementsAre("abc@5", "de@7"));
    const std::string path = Path(std::string(70000, 'x') + "\r\n" + std::string(70000, 'y'));
    CFile own(path.c_str(), CFile::modeRead);
    CGeoTextFile reader(&own);
    std::filesystem::resize_file(path, 100);
    EXPECT_TRUE(reader.NextLine());
    EXPECT_FALSE(reader.NextLine());
    EXPECT_EQ(reader.GetLine(), std::string(100, 'x').c_str());
}

TEST_F(Reader, PositionsReachBeyondFourGiB) {
    constexpr ULONGLONG kFar = (4ULL << 30) + 100;
    const std::string path = Path("");
    CFile writer(path.c_str(), CFile::modeWrite);
    writer.Seek(kFar, CFile::begin);
    writer.Write("\r\nfar\r\nend", 10);
    writer.Close();
    class Derived : public CFile {
        using CFile::CFile;
    } hosts(path.c_str(), CFile::modeRead);
    CFile own(path.c_str(), CFile::modeRead);
    for (CFile* file : {&own, static_cast<CFile*>(&hosts)}) {
        CGeoTextFile reader(file);
        file->Seek(kFar + 2, CFile::begin);
        for (const char* line : {"far", "end"}) {
            EXPECT_TRUE(reader.NextLine());
            EXPECT_EQ(reader.GetLine(), line);
        }
        EXPECT_FALSE(reader.NextLine());
    }
}

TEST_F(Reader, FailuresReachTheCallerAndLeaveTheLine) {
    CFile file(Path("first\r\n" + std::string(200, 'x') + "\r\n").c_str(), CFile::modeRead);
    CGeoTextFile reader(&file);
    EXPECT_TRUE(reader.NextLine());
    const auto nextWithoutMemory = [&] {
        const ScarceMemory scarcity(0, ScarceMemory::kForEver);
        reader.NextLine();
    };
    EXPECT_THROW(nextWithoutMemory(), CMemoryException);
    file.Abort();
    EXPECT_THROW(reader.NextLine(), CFileException);
    EXPECT_THROW(reader.SetFile(&file), CFileException);
    EXPECT_FALSE(reader.NextLine());  // nothing is attached half
    EXPECT_EQ(reader.GetLine(), "first");
}
