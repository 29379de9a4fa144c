#include "query/savedquery.h"

#include <filesystem>

#include "tests/framework/base/filelimit.h"
#include "tests/framework/base/tempfolder.h"

using kortavin::query::ReadSavedQuery;
using kortavin::query::SavedQueryFormatError;
using kortavin::query::WriteSavedQuery;
using namespace std::string_literals;

namespace {

const std::string kHeader = "VESKARDO QUERY FILE";

std::string Written(const std::string& sql) {
    CMemFile file;
    WriteSavedQuery(file, CString(sql));
    return std::string(file.GetContent());
}

std::string Read(const std::string& content) {
    CMemFile file;
    file.Write(content.data(), static_cast<UINT>(content.size()));
    file.Seek(0, CFile::begin);
    return std::string(ReadSavedQuery(file).View());
}

CFileException::Cause CauseOfReading(const std::string& path) {
    try {
        ReadSavedQuery(CString(path));
    } catch (const CFileException& error) {
        return error.m_cause;
    }
    return CFileException::none;
}

CFileException::Cause CauseOfWriting(const std::string& path, const CString& sql) {
    try {
        WriteSavedQuery(CString(path), sql);
    } catch (const CFileException& error) {
        return error.m_cause;
    }
    return CFileException::none;
}

}  // namespace

TEST(SavedQueryWriting, LengthCountsBytesAndTheTextFollowsUnchanged) {
    EXPECT_EQ(Written("SELECT * FROM A "), kHeader + "\x10\0\0\0SELECT * FROM A "s);
    EXPECT_EQ(Written("a\r\nb\n"), kHeader + "\x05\0\0\0a\r\nb\n"s);
    // 道路, a four-byte code, and a lone lead byte as a user's clipboard may hold it
    EXPECT_EQ(Written("\xB5\xC0\xC2\xB7"), kHeader + "\x04\0\0\0\xB5\xC0\xC2\xB7"s);
    EXPECT_EQ(Written("\x94\x39\xFC\x36\xB5"), kHeader + "\x05\0\0\0\x94\x39\xFC\x36\xB5"s);
    EXPECT_EQ(Written(std::string(0x012345, 'x')).substr(19, 5), "\x45\x23\x01\0x"s);
}

TEST(SavedQueryReading, GivesTheTextAndNothingBehindIt) {
    EXPECT_EQ(Read(kHeader + "\x04\0\0\0\xB5\xC0\xC2\xB7"s), "\xB5\xC0\xC2\xB7");
    EXPECT_EQ(Read(kHeader + "\x03\0\0\0abcdef"s), "abc");
    EXPECT_EQ(Read(kHeader + "\x06\0\0\0abc\0de"s), "abc");
    EXPECT_EQ(Read(kHeader + "\x02\0\0\0\0b"s), "");
    EXPECT_EQ(Read(kHeader + "\0\0\0\0"s), "");
    EXPECT_EQ(Read(kHeader + "\0\0\0\0abc"s), "");
    const std::string length = "\xC0\xD4\x01\0"s;  // 120,000
    const std::string text = std::string(65535, 'a') + "\xB5\xC0" + std::string(120000 - 65537, 'b');
    EXPECT_EQ(Read(kHeader + length + text + "c"), text);
}

TEST(SavedQueryReading, WhatIsNoWholeSavedQueryIsAFormatFailure) {
    for (const std::string& content : {
             ""s,
             kHeader.substr(0, 18),
             kHeader,
             kHeader + "\x03\0\0"s,
             kHeader + "\x03\0\0\0"s,
             kHeader + "\x03\0\0\0ab"s,
             kHeader + "\xFF\xFF\xFF\xFF"s + "abc",
             kHeader + "\xFF\xFF\xFF\x7F"s + "abc",
             kHeader + "\0\0\0\x80"s + "abc",
             kHeader + "\x71\x11\x01\0"s + std::string(70000, 'a'),  // 70,001
             "veskardo query file\x03\0\0\0abc"s,
             "VESKARDO QUERY FILe\x03\0\0\0abc"s,
             " "s + kHeader + "\x03\0\0\0abc"s,
             "VESKARDO\0QUERY FILE\x03\0\0\0abc"s,
         })
        EXPECT_THROW(Read(content), SavedQueryFormatError) << testing::PrintToString(content);
    EXPECT_EQ(SavedQueryFormatError().GetErrorMessage(), CString::FromUtf8("文件格式不正确"));
}

TEST(SavedQueryReading, WhatCannotBeOpenedIsAFileFailure) {
    const TempFolder folder;
    MakeFile(folder / "file", "");
    std::filesystem::create_symlink("loop", folder / "loop");
    EXPECT_EQ(CauseOfReading(folder / "missing"), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfReading(folder / "file/below"), CFileException::badPath);
    EXPECT_EQ(CauseOfReading(folder / "loop"), CFileException::badPath);
    EXPECT_EQ(CauseOfReading(folder / ""), CFileException::accessDenied);
}

TEST(SavedQueryFile, ShorterTextReplacesALongerFile) {
    const TempFolder folder;
    const std::string path = folder / "\xE6\x9F\xA5 \xE8\xAF\xA2.SQL";  // the system's bytes, not GBK
    WriteSavedQuery(CString(path), "SELECT a_long_name FROM t");
    WriteSavedQuery(CString(path), "SELECT 1");
    EXPECT_EQ(ContentOf(path), kHeader + "\x08\0\0\0SELECT 1"s);
    EXPECT_STREQ(ReadSavedQuery(CString(path)), "SELECT 1");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(SavedQueryFile, FailedWriteLeavesTheFormerFileAndNothingElse) {
    const TempFolder folder;
    const std::string path = folder / "q.SQL";
    WriteSavedQuery(CString(path), "SELECT former");
    for (const rlim_t limit : {0, 10, 22, 23, 100, 9000}) {
        SCOPED_TRACE(limit);
        CFileException::Cause cause;
        {
            const FileLimit full(limit);
            cause = CauseOfWriting(path, CString(std::string(10000, 'x')));
        }
        EXPECT_EQ(cause, CFileException::diskFull);
        EXPECT_STREQ(ReadSavedQuery(CString(path)), "SELECT former");
        EXPECT_EQ(folder.CountEntries(), 1);
    }
}

TEST(SavedQueryFile, TargetThatCannotBeWrittenIsAFileFailure) {
    const TempFolder folder;
    MakeFile(folder / "file", "");
    EXPECT_EQ(CauseOfWriting(folder / "missing/q.SQL", "SELECT 1"), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfWriting(folder / "file/q.SQL", "SELECT 1"), CFileException::badPath);
    EXPECT_EQ(CauseOfWriting(folder / "", "SELECT 1"), CFileException::accessDenied);
    EXPECT_EQ(CauseOfWriting("/dev/full", "SELECT 1"), CFileException::diskFull);
    EXPECT_EQ(folder.CountEntries(), 1);
}
