#include "framework/base/file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <random>
#include <thread>

#include "tests/framework/base/tempfolder.h"

namespace {

std::string ReadText(CFile& file, UINT count) {
    std::string text(count, '\0');
    text.resize(file.Read(text.data(), count));
    return text;
}

void WriteText(CFile& file, std::string_view text) {
    file.Write(text.data(), static_cast<UINT>(text.size()));
}

// One random operation, the same on both files, which must look alike afterwards.
void DoTheSame(std::mt19937& random, CFile& a, CFile& b) {
    constexpr std::array<UINT, 7> kSizes{0, 1, 7, 1000, 65535, 65536, 200000};
    const UINT size = kSizes[random() % kSizes.size()];
    const LONGLONG offset = random() % 300000;
    switch (random() % 8) {
        case 0:
        case 1:
        case 2: {
            const std::string text(size, static_cast<char>('a' + random() % 26));
            WriteText(a, text);
            WriteText(b, text);
            break;
        }
        case 3:
        case 4:
            ASSERT_TRUE(ReadText(a, size) == ReadText(b, size));
            break;
        case 5:
            ASSERT_EQ(a.Seek(offset, CFile::begin), b.Seek(offset, CFile::begin));
            break;
        case 6: {
            const LONGLONG step = -static_cast<LONGLONG>(a.GetPosition()) / 2;
            ASSERT_EQ(a.Seek(step, CFile::current), b.Seek(step, CFile::current));
            break;
        }
        case 7:
            a.SetLength(static_cast<ULONGLONG>(offset));
            b.SetLength(static_cast<ULONGLONG>(offset));
            break;
    }
    ASSERT_EQ(a.GetPosition(), b.GetPosition());
    ASSERT_EQ(a.GetLength(), b.GetLength());
}

}  // namespace

TEST(File, AgreesWithAFileInMemoryWhateverIsDone) {
    const TempFolder folder;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        const std::string path = folder / std::to_string(seed);
        CFile file(path.c_str(), CFile::modeReadWrite | CFile::modeCreate);
        CMemFile memory;
        for (int i = 0; i < 60; ++i) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", operation " << i);
            ASSERT_NO_FATAL_FAILURE(DoTheSame(random, file, memory));
        }
        file.Close();
        ASSERT_TRUE(ContentOf(path) == memory.GetContent()) << seed;
    }
}

TEST(File, SeekBeforeTheBeginningChangesNothing) {
    const TempFolder folder;
    CFile file((folder / "f").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    CMemFile memory;
    for (CFile* each : {&file, static_cast<CFile*>(&memory)}) {
        WriteText(*each, "abcdef");
        each->Seek(4, CFile::begin);
        for (const auto& [offset, from] : {std::pair<LONGLONG, UINT>{-1, CFile::begin},
                                           {-5, CFile::current},
                                           {-7, CFile::end},
                                           {INT64_MAX, CFile::current},
                                           {0, 3}}) {
            try {
                each->Seek(offset, from);
                ADD_FAILURE() << offset << " from " << from;
            } catch (const CFileException& error) {
                EXPECT_EQ(error.m_cause, CFileException::badSeek);
            }
        }
        EXPECT_EQ(ReadText(*each, 9), "ef");
        EXPECT_EQ(each->Seek(-2, CFile::end), 4U);
    }
}

TEST(File, CreatesTruncatesOrKeeps) {
    const TempFolder folder;
    const std::string path = folder / "f";
    MakeFile(path, "former");
    CFile file(path.c_str(), CFile::modeWrite | CFile::modeCreate | CFile::modeNoTruncate);
    EXPECT_EQ(file.GetLength(), 6U);
    WriteText(file, "F");
    ASSERT_TRUE(file.Open(path.c_str(), CFile::modeReadWrite | CFile::modeCreate));  // closes the first
    EXPECT_EQ(file.GetLength(), 0U);
    WriteText(file, "dropped");
    file.Abort();
    EXPECT_EQ(ContentOf(path), "");
    EXPECT_EQ(file.GetFilePath(), "");
}

TEST(File, ReadsWhatIsStillBuffered) {
    const TempFolder folder;
    CFile file((folder / "f").c_str(), CFile::modeReadWrite | CFile::modeCreate);
    WriteText(file, "0123456789");
    EXPECT_EQ(file.GetLength(), 10U);
    file.Seek(3, CFile::begin);
    EXPECT_EQ(ReadText(file, 2), "34");
    WriteText(file, "__");  // what was read ahead must not move it
    EXPECT_EQ(ReadText(file, 99), "789");
    file.Close();
    EXPECT_EQ(ContentOf(folder / "f"), "01234__789");
}

TEST(File, PipeCountsPositionsAndRefusesToSeek) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    CFile in(ends[0]);
    CFile out(ends[1]);
    const std::string text(300000, 'p');
    std::thread writer([&] {
        for (std::size_t at = 0; at < text.size(); at += 1000) {
            WriteText(out, std::string_view(text).substr(at, 1000));
            out.Flush();
        }
        EXPECT_THROW(out.Seek(0, CFile::begin), CFileException);
        EXPECT_EQ(out.GetPosition(), text.size());
        out.Close();
    });
    EXPECT_EQ(ReadText(in, 70001).size(), 70001U);  // a short count would mean the end
    EXPECT_EQ(ReadText(in, 500).size(), 500U);
    EXPECT_EQ(in.GetPosition(), 70501U);
    EXPECT_EQ(in.Seek(0, CFile::current), 70501U);
    EXPECT_EQ(ReadText(in, 400000).size(), text.size() - 70501);
    writer.join();
}

TEST(File, WaitsForANonBlockingPipe) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_NONBLOCK), 0);
    CFile in(ends[0]);
    CFile out(ends[1]);
    std::thread writer([&] {
        WriteText(out, std::string(1000000, 'n'));
        out.Close();
    });
    EXPECT_EQ(ReadText(in, 2000000).size(), 1000000U);
    writer.join();
}

TEST(File, SocketKeepsWhatWasReadAheadWhileWriting) {
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    CFile near(ends[0]);
    CFile far(ends[1]);
    WriteText(far, "question");
    far.Flush();
    EXPECT_EQ(ReadText(near, 2), "qu");
    WriteText(near, "answer");
    EXPECT_EQ(ReadText(near, 6), "estion");
    EXPECT_EQ(ReadText(far, 6), "answer");
}

TEST(File, AppendingDescriptorTellsItsRealPosition) {
    const TempFolder folder;
    const std::string path = folder / "log";
    MakeFile(path, "12345");
    CFile file(open(path.c_str(), O_WRONLY | O_APPEND));
    WriteText(file, "67");
    file.Flush();
    EXPECT_EQ(file.GetPosition(), 7U);
    EXPECT_EQ(ContentOf(path), "1234567");
}

TEST(MemFile, FillsGapsWithZeroBytesAndIsEmptyAfterClose) {
    CMemFile file;
    file.Seek(3, CFile::begin);
    EXPECT_EQ(ReadText(file, 5), "");
    EXPECT_EQ(file.GetLength(), 0U);
    WriteText(file, "abc");
    EXPECT_EQ(file.GetContent(), std::string_view("\0\0\0abc", 6));
    file.Seek(4, CFile::begin);
    WriteText(file, "XYZ");
    EXPECT_EQ(file.GetContent().substr(3), "aXYZ");
    CFileException error;
    EXPECT_FALSE(file.Open("/dev/null", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::invalidFile);
    file.Close();
    EXPECT_EQ(file.GetPosition() + file.GetLength(), 0U);
    EXPECT_TRUE(file.IsKindOf(&CFile::classCFile));
    EXPECT_FALSE(CFile().IsKindOf(&CMemFile::classCMemFile));
}

TEST(MemFile, TooLargeIsAMemoryError) {
    CMemFile file;
    WriteText(file, "abc");
    EXPECT_THROW(file.SetLength(UINT64_MAX), CMemoryException);
    file.Seek(INT64_MAX, CFile::begin);
    EXPECT_THROW(WriteText(file, "x"), CMemoryException);
    EXPECT_EQ(file.GetContent(), "abc");
}
