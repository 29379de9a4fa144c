#include "kortavin/base/file.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <random>
#include <thread>

#include "tests/support/filelimit.h"
#include "tests/support/tempfolder.h"

namespace {

std::string ReadText(CFile& file, std::size_t count) {
    std::string text(count, '\0');
    text.resize(file.Read(text.data(), static_cast<UINT>(count)));
    return text;
}

void WriteText(CFile& file, std::string_view text) {
    file.Write(text.data(), static_cast<UINT>(text.size()));
}

auto FailsWith(CFileException::Cause cause) {
    return testing::Throws<CFileException>(testing::Field(&CFileException::m_cause, cause));
}

// What a file is, without a buffer or a system.
struct PlainFile {
    std::string content;
    std::size_t position = 0;

    std::string Read(std::size_t count) {
        const std::string text = position < content.size() ? content.substr(position, count) : "";
        position += text.size();
        return text;
    }
    void Write(std::string_view text) {
        if (text.empty())
            return;
        content.resize(std::max(content.size(), position + text.size()));
        content.replace(position, text.size(), text);
        position += text.size();
    }
};

// One random operation, the same on both files, which must look alike afterwards.
void DoTheSame(std::mt19937& random, CFile& file, PlainFile& plain) {
    constexpr std::array<UINT, 7> kSizes{0, 1, 7, 1000, 65535, 65536, 200000};
    const UINT size = kSizes[random() % kSizes.size()];
    const std::size_t offset = random() % 300000;
    const std::string text(size, static_cast<char>('a' + random() % 26));
    const std::array<std::size_t, 3> origins{0, plain.position, plain.content.size()};
    const UINT from = random() % 3;
    switch (random() % 4) {
        case 0:
            WriteText(file, text);
            plain.Write(text);
            break;
        case 1:
            EXPECT_TRUE(ReadText(file, size) == plain.Read(size));
            break;
        case 2:
            file.Seek(static_cast<LONGLONG>(offset - origins[from]), from);
            plain.position = offset;
            break;
        case 3:
            file.SetLength(offset);
            plain.content.resize(offset);
            break;
    }
    EXPECT_EQ(file.GetPosition(), plain.position);
    EXPECT_EQ(file.GetLength(), plain.content.size());
    EXPECT_THROW(file.Seek(-1 - static_cast<LONGLONG>(plain.position), CFile::current), CFileException);
}

void CompareWithPlainFile(CFile& file, unsigned seed) {
    std::mt19937 random(seed);
    PlainFile plain;
    for (int i = 0; i < 100 && !testing::Test::HasFailure(); ++i)
        DoTheSame(random, file, plain);
    file.Seek(0, CFile::begin);
    EXPECT_TRUE(ReadText(file, plain.content.size() + 1) == plain.content) << seed;
}

}  // namespace

TEST(File, AgreesWithAPlainFileWhateverIsDone) {
    const TempFolder folder;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        CFile file((folder / "f").c_str(), CFile::modeReadWrite | CFile::modeCreate);
        CompareWithPlainFile(file, seed);
        CMemFile memory;
        CompareWithPlainFile(memory, seed);
    }
}

TEST(File, CreatesTruncatesOrKeeps) {
    const TempFolder folder;
    const std::string path = folder / "f";
    MakeFile(path, "former");
    CFile file(path.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::modeNoTruncate);
    WriteText(file, "F");
    EXPECT_TRUE(file.Open(path.c_str(), CFile::modeRead));  // closes the first
    EXPECT_EQ(ReadText(file, 99), "Former");
    EXPECT_TRUE(file.Open(path.c_str(), CFile::modeWrite | CFile::modeCreate));
    WriteText(file, "dropped");
    file.Abort();
    EXPECT_EQ(ContentOf(path), "");
}

TEST(File, NonBlockingPipeIsWaitedForAndCountsPositions) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_NONBLOCK), 0);
    CFile in(ends[0]);
    CFile out(ends[1]);
    const std::string text(300000, 'p');
    std::thread writer([&] {
        WriteText(out, text);
        out.Close();
    });
    EXPECT_EQ(ReadText(in, 70001).size(), 70001U);  // a short count would mean the end
    EXPECT_THAT([&] { in.Seek(0, CFile::begin); }, FailsWith(CFileException::badSeek));
    EXPECT_EQ(ReadText(in, 400000).size(), text.size() - 70001);
    writer.join();
}

TEST(MemFile, TooLargeIsAMemoryError) {
    CMemFile file;
    WriteText(file, "abc");
    EXPECT_THROW(file.SetLength(UINT64_MAX), CMemoryException);
    file.Seek(INT64_MAX, CFile::begin);
    EXPECT_THROW(WriteText(file, "x"), CMemoryException);
    EXPECT_EQ(file.GetContent(), "abc");
}

TEST(FileFailure, OpeningTellsTheCauseAndThePath) {
    const TempFolder folder;
    MakeFile(folder / "f", "");
    const auto opening = [&](const std::string& name) {
        return [path = folder / name] { CFile file(path.c_str(), CFile::modeRead); };
    };
    EXPECT_THAT(opening("none"), FailsWith(CFileException::fileNotFound));
    EXPECT_THAT(opening("f/below"), FailsWith(CFileException::badPath));
    EXPECT_THAT(opening(std::string(300, 'n')), FailsWith(CFileException::badPath));
    EXPECT_THAT(opening(""), FailsWith(CFileException::accessDenied));
    CFileException error;
    EXPECT_FALSE(CFile().Open("/数据/\xFF", CFile::modeRead, &error));
    EXPECT_EQ(error.GetErrorMessage(), "/\xCA\xFD\xBE\xDD/\\xFF: No such file or directory");
}

TEST(FileFailure, WritingWhereNothingCanBeWrittenIsRefusedAtOnce) {
    const TempFolder folder;
    MakeFile(folder / "f", "abc");
    CFile file((folder / "f").c_str(), CFile::modeRead);
    EXPECT_THAT([&] { WriteText(file, "x"); }, FailsWith(CFileException::invalidFile));
    EXPECT_EQ(ReadText(file, 9), "abc");
    file.Close();
    EXPECT_THAT([&] { WriteText(file, "x"); }, FailsWith(CFileException::invalidFile));
}

// With a limit of 2 the system takes not even what was buffered before.
TEST(FileFailure, ShortWriteReportsDiskFullAndLeavesAUsableFile) {
    const TempFolder folder;
    for (const auto& [taken, size] : {std::pair{2U, 300000U}, {70U, 100U}, {70U, 65536U}}) {
        const std::string text = "head" + std::string(size, 'a');
        CFile file((folder / "f").c_str(), CFile::modeWrite | CFile::modeCreate);
        WriteText(file, "head");
        const auto write = [&] {
            WriteText(file, std::string_view(text).substr(4));
            file.Flush();
        };
        {
            const FileLimit limit(taken);
            EXPECT_THAT(write, FailsWith(CFileException::diskFull));
            EXPECT_NO_THROW(file.Flush());  // what could not be written is dropped, not tried again
        }
        EXPECT_EQ(file.GetPosition(), taken);
        WriteText(file, "b");
        file.Close();
        EXPECT_EQ(ContentOf(folder / "f"), text.substr(0, taken) + "b") << size;
    }
}

TEST(FileFailure, CloseReportsAFullDeviceAndIsClosed) {
    CFile file("/dev/full", CFile::modeWrite);
    WriteText(file, "abc");
    EXPECT_THAT([&] { file.Close(); }, FailsWith(CFileException::diskFull));
    EXPECT_TRUE(file.Open("/dev/full", CFile::modeWrite));
    WriteText(file, "abc");
    EXPECT_FALSE(file.Open("/dev/null", CFile::modeWrite));  // it closes first
}
