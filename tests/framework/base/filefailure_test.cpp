#include <fcntl.h>
#include <gtest/gtest.h>

#include <functional>

#include "framework/base/file.h"
#include "tests/framework/base/filelimit.h"
#include "tests/framework/base/tempfolder.h"

namespace {

CFileException::Cause CauseOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const CFileException& error) {
        return error.m_cause;
    }
    return CFileException::none;
}

CFileException::Cause CauseOfOpening(const std::string& path, UINT flags) {
    CFile file;
    CFileException error;
    EXPECT_FALSE(file.Open(path.c_str(), flags, &error));
    EXPECT_EQ(error.m_strFileName.View(), path);
    EXPECT_EQ(CauseOf([&] { CFile again(path.c_str(), flags); }), error.m_cause);
    return error.m_cause;
}

void WriteText(CFile& file, std::string_view text) {
    file.Write(text.data(), static_cast<UINT>(text.size()));
}

}  // namespace

TEST(FileFailure, OpeningTellsTheCause) {
    const TempFolder folder;
    MakeFile(folder / "f", "");
    EXPECT_EQ(CauseOfOpening(folder / "none", CFile::modeRead), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfOpening("", CFile::modeRead), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfOpening(folder / "f/below", CFile::modeWrite | CFile::modeCreate),
              CFileException::badPath);
    EXPECT_EQ(CauseOfOpening(folder / std::string(300, 'n'), CFile::modeRead), CFileException::badPath);
    EXPECT_EQ(CauseOfOpening(folder.Path().native(), CFile::modeRead), CFileException::accessDenied);
    EXPECT_EQ(CauseOfOpening(folder.Path().native(), CFile::modeReadWrite), CFileException::accessDenied);
    EXPECT_EQ(CauseOf([] { CFile file(-1); }), CFileException::invalidFile);
}

TEST(FileFailure, MessageNamesThePathInGbk) {
    const CFileException error = CFileException::FromErrno(ENOENT, CString("/数据/\xFF"));
    EXPECT_EQ(error.GetErrorMessage(), "/\xCA\xFD\xBE\xDD/\\xFF: No such file or directory");
    EXPECT_EQ(CFileException(CFileException::invalidFile, 0, "").GetErrorMessage(), "The file is not open");
}

TEST(FileFailure, DirectionThatWasNotAskedForIsRefusedAtOnce) {
    const TempFolder folder;
    MakeFile(folder / "f", "abc");
    char byte = 'x';
    CFile reader((folder / "f").c_str(), CFile::modeRead);
    EXPECT_EQ(CauseOf([&] { reader.Write(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(CauseOf([&] { reader.SetLength(0); }), CFileException::invalidFile);
    EXPECT_EQ(reader.Read(&byte, 1), 1U);
    CFile writer((folder / "f").c_str(), CFile::modeWrite);
    EXPECT_EQ(CauseOf([&] { writer.Read(&byte, 1); }), CFileException::invalidFile);
    writer.Close();
    EXPECT_EQ(CauseOf([&] { writer.Write(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(ContentOf(folder / "f"), "abc");
}

TEST(FileFailure, ShortWriteReportsDiskFullAndLeavesAUsableFile) {
    const TempFolder folder;
    for (const std::size_t size : {100U, 65536U, 200000U}) {
        const std::string path = folder / std::to_string(size);
        CFile file(path.c_str(), CFile::modeReadWrite | CFile::modeCreate);
        const std::string text(size, 'a');
        {
            const FileLimit limit(70);
            EXPECT_EQ(CauseOf([&] {
                          WriteText(file, text);
                          file.Flush();
                      }),
                      CFileException::diskFull);
            EXPECT_EQ(file.GetPosition(), 70U);
            EXPECT_EQ(file.GetLength(), 70U);
            EXPECT_NO_THROW(file.Flush());  // what could not be written is dropped, not tried again
        }
        WriteText(file, "b");
        file.Close();
        EXPECT_EQ(ContentOf(path), std::string(70, 'a') + 'b');
    }
}

TEST(FileFailure, BufferedBytesBeforeABigWriteAreNotSkipped) {
    const TempFolder folder;
    CFile file((folder / "f").c_str(), CFile::modeWrite | CFile::modeCreate);
    WriteText(file, "head");
    {
        const FileLimit limit(2);
        EXPECT_EQ(CauseOf([&] { WriteText(file, std::string(300000, 'x')); }), CFileException::diskFull);
    }
    file.Close();
    EXPECT_EQ(ContentOf(folder / "f"), "he");
}

TEST(FileFailure, CloseReportsAFullDeviceAndIsClosed) {
    CFile file("/dev/full", CFile::modeWrite);
    WriteText(file, "abc");
    EXPECT_EQ(CauseOf([&] { file.Close(); }), CFileException::diskFull);
    EXPECT_EQ(CauseOf([&] { file.Flush(); }), CFileException::invalidFile);
    CFileException error;
    ASSERT_TRUE(file.Open("/dev/full", CFile::modeWrite));
    WriteText(file, "abc");
    EXPECT_FALSE(file.Open("/dev/null", CFile::modeWrite, &error));  // it closes first
    EXPECT_EQ(error.m_cause, CFileException::diskFull);
}
