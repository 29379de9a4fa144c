#include "kortavin/query/savedquery.h"

#include "tests/support/filelimit.h"
#include "tests/support/tempfolder.h"

using namespace kortavin::query;
using namespace std::string_literals;

namespace {

const std::string kHeader = "VESKARDO QUERY FILE";

std::string Read(const std::string& content) {
    CMemFile file;
    file.Write(content.data(), static_cast<UINT>(content.size()));
    file.Seek(0, CFile::begin);
    return std::string(ReadSavedQuery(file).View());
}

}  // namespace

TEST(SavedQuery, IsItsLengthInBytesAndTheTextUnchanged) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "\0\0\0\0"s},
        {"a\r\nb\n", "\x05\0\0\0a\r\nb\n"s},
        // 道路, a four-byte code, and a lone lead byte as a user's clipboard may hold it
        {"\xB5\xC0\xC2\xB7\x94\x39\xFC\x36\xB5", "\x09\0\0\0\xB5\xC0\xC2\xB7\x94\x39\xFC\x36\xB5"s},
        {std::string(0x012345, 'x'), "\x45\x23\x01\0"s + std::string(0x012345, 'x')},
    };
    for (const auto& [sql, bytes] : cases) {
        CMemFile file;
        WriteSavedQuery(file, CString(sql));
        EXPECT_EQ(file.GetContent(), kHeader + bytes);
        EXPECT_EQ(Read(kHeader + bytes), sql);
        EXPECT_EQ(Read(kHeader + bytes + "rest"), sql);
    }
    EXPECT_EQ(Read(kHeader + "\x06\0\0\0abc\0de"s), "abc");
}

TEST(SavedQuery, WhatIsNoWholeOneIsAFormatFailure) {
    for (const std::string& content : {
             ""s,
             kHeader.substr(0, 18),
             kHeader + "\x03\0\0"s,
             kHeader + "\x03\0\0\0ab"s,
             kHeader + "\xFF\xFF\xFF\xFFZ"s,
             kHeader + "\xFF\xFF\xFF\x7FZ"s,
             kHeader + "\x71\x11\x01\0"s + std::string(70000, 'a'),  // 70,001
             "veskardo query file\x03\0\0\0abc"s,
             "VESKARDO\0QUERY FILE\x03\0\0\0abc"s,
         })
        EXPECT_THROW(Read(content), SavedQueryFormatError) << testing::PrintToString(content);
}

TEST(SavedQuery, ReplacesALongerFileAndStaysWholeWhenTheDiskIsFull) {
    const TempFolder folder;
    const std::string path = folder / "查 询.SQL";  // the system's bytes, not GBK
    WriteSavedQuery(CString(path), "SELECT a_long_name FROM t");
    WriteSavedQuery(CString(path), "SELECT 1");
    const std::string former = kHeader + "\x08\0\0\0SELECT 1"s;
    EXPECT_EQ(ContentOf(path), former);
    for (const rlim_t limit : {0, 10, 22, 23, 9000}) {
        {
            const FileLimit full(limit);
            EXPECT_THROW(WriteSavedQuery(CString(path), CString('x', 10000)), CFileException) << limit;
        }
        EXPECT_EQ(ContentOf(path), former);
        EXPECT_EQ(folder.CountEntries(), 1);
    }
    EXPECT_THROW(ReadSavedQuery(CString(folder / "")), CFileException);
    EXPECT_THROW(WriteSavedQuery(CString(folder / ""), "SELECT 1"), CFileException);
}
