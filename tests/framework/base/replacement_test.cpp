#include "framework/base/replacement.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>

#include "tests/framework/base/filelimit.h"
#include "tests/framework/base/tempfolder.h"

using kortavin::base::FileReplacement;
namespace fs = std::filesystem;

namespace {

void WriteText(FileReplacement& replacement, std::string_view text) {
    replacement.File().Write(text.data(), static_cast<UINT>(text.size()));
}

void Replace(const std::string& path, std::string_view text) {
    FileReplacement replacement{CString(path)};
    WriteText(replacement, text);
    replacement.Commit();
}

CFileException::Cause CauseOfReplacing(const std::string& path) {
    try {
        Replace(path, "text");
    } catch (const CFileException& error) {
        return error.m_cause;
    }
    return CFileException::none;
}

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

}  // namespace

TEST(FileReplacement, FormerFileStaysUntilCommit) {
    const TempFolder folder;
    const std::string path = folder / "f";
    MakeFile(path, "former");
    FileReplacement replacement{CString(path)};
    WriteText(replacement, "new");
    EXPECT_EQ(ContentOf(path), "former");
    EXPECT_TRUE(fs::exists(replacement.GetUnfinishedPath().GetString()));
    replacement.Commit();
    EXPECT_EQ(ContentOf(path), "new");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(FileReplacement, WithoutCommitNothingIsLeft) {
    const TempFolder folder;
    {
        FileReplacement replacement{CString(folder / "f")};
        WriteText(replacement, "new");
        EXPECT_FALSE(fs::exists(folder / "f"));
        EXPECT_EQ(folder.CountEntries(), 1);
    }
    EXPECT_EQ(folder.CountEntries(), 0);
}

TEST(FileReplacement, FailedWriteLeavesTheFormerFile) {
    const TempFolder folder;
    MakeFile(folder / "f", "former");
    {
        const FileLimit limit(2);
        EXPECT_EQ(CauseOfReplacing(folder / "f"), CFileException::diskFull);
    }
    EXPECT_EQ(ContentOf(folder / "f"), "former");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(FileReplacement, KeepsPermissionsAndHonoursTheUmask) {
    const TempFolder folder;
    const mode_t former = umask(027);
    MakeFile(folder / "old", "former");
    fs::permissions(folder / "old", fs::perms{0606});
    Replace(folder / "old", "x");
    Replace(folder / "new", "x");
    umask(former);
    EXPECT_EQ(ModeOf(folder / "old"), 0606U);
    EXPECT_EQ(ModeOf(folder / "new"), 0640U);
}

TEST(FileReplacement, FollowsLinksThatEndSomewhereOrNowhere) {
    const TempFolder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("sub/target", folder / "first");
    fs::create_symlink(folder / "first", folder / "second");
    Replace(folder / "second", "one");
    EXPECT_EQ(ContentOf(folder / "sub/target"), "one");
    Replace(folder / "second", "two");
    EXPECT_EQ(ContentOf(folder / "sub/target"), "two");
    EXPECT_TRUE(fs::is_symlink(folder / "first"));
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(CauseOfReplacing(folder / "loop"), CFileException::badPath);
}

TEST(FileReplacement, TellsWhyTheTargetCannotBeWritten) {
    const TempFolder folder;
    EXPECT_EQ(CauseOfReplacing(folder / "none/f"), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfReplacing(folder.Path().native()), CFileException::accessDenied);
    EXPECT_EQ(CauseOfReplacing(""), CFileException::fileNotFound);
    EXPECT_EQ(CauseOfReplacing("/proc/self/exe"), CFileException::accessDenied);  // running
    EXPECT_EQ(folder.CountEntries(), 0);
}

TEST(FileReplacement, TakesTheLongestNames) {
    const TempFolder folder;
    const std::string path = folder / std::string(255, 'n');
    Replace(path, "one");
    Replace(path, "two");
    EXPECT_EQ(ContentOf(path), "two");
}

TEST(FileReplacement, WritesDevicesAndPipesDirectly) {
    EXPECT_EQ(CauseOfReplacing("/dev/full"), CFileException::diskFull);
    EXPECT_EQ(CauseOfReplacing("/dev/null"), CFileException::none);
    const TempFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = ContentOf(folder / "pipe"); });
    {
        FileReplacement replacement{CString(folder / "pipe")};
        EXPECT_EQ(replacement.GetUnfinishedPath(), "");
        WriteText(replacement, "through");
        replacement.Commit();
    }
    reader.join();
    EXPECT_EQ(received, "through");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(FileReplacement, CommitRefusesAFileThatWasClosed) {
    const TempFolder folder;
    FileReplacement replacement{CString(folder / "f")};
    replacement.File().Close();
    EXPECT_THROW(replacement.Commit(), CFileException);
    EXPECT_FALSE(fs::exists(folder / "f"));
}
