#include "kortavin/base/replacement.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "tests/support/filelimit.h"
#include "tests/support/tempfolder.h"

using kortavin::base::FileReplacement;
namespace fs = std::filesystem;

namespace {

void Replace(const std::string& path, std::string_view text) {
    FileReplacement replacement{CString(path)};
    replacement.File().Write(text.data(), static_cast<UINT>(text.size()));
    replacement.Commit();
}

void ExpectRefused(const std::string& path, CFileException::Cause cause) {
    EXPECT_THAT([&] { Replace(path, "text"); },
                testing::Throws<CFileException>(testing::Field(&CFileException::m_cause, cause)))
        << path;
}

}  // namespace

TEST(FileReplacement, FormerFileStaysUntilCommit) {
    const TempFolder folder;
    const std::string path = folder / std::string(255, 'n');  // the longest name there is
    MakeFile(path, "former");
    {
        FileReplacement replacement{CString(path)};
        replacement.File().Write("given up", 8);
        EXPECT_TRUE(fs::exists(replacement.GetUnfinishedPath().GetString()));
    }
    {
        const FileLimit limit(2);
        ExpectRefused(path, CFileException::diskFull);
    }
    EXPECT_EQ(ContentOf(path), "former");
    Replace(path, "new");
    EXPECT_EQ(ContentOf(path), "new");
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
    EXPECT_EQ(fs::status(folder / "old").permissions(), fs::perms{0606});
    EXPECT_EQ(fs::status(folder / "new").permissions(), fs::perms{0640});
}

TEST(FileReplacement, FollowsLinksThatEndSomewhereOrNowhere) {
    const TempFolder folder;
    fs::create_directory(folder / "sub");
    fs::create_symlink("sub/target", folder / "first");
    fs::create_symlink(folder / "first", folder / "second");
    Replace(folder / "second", "one");
    Replace(folder / "second", "two");
    EXPECT_EQ(ContentOf(folder / "sub/target"), "two");
    EXPECT_TRUE(fs::is_symlink(folder / "first"));
}

TEST(FileReplacement, TellsWhyTheTargetCannotBeWritten) {
    const TempFolder folder;
    ExpectRefused(folder / "none/f", CFileException::fileNotFound);
    ExpectRefused(folder / "", CFileException::accessDenied);
    ExpectRefused("/proc/self/exe", CFileException::accessDenied);  // running
    EXPECT_EQ(folder.CountEntries(), 0);
}

TEST(FileReplacement, WritesDevicesDirectly) {
    ExpectRefused("/dev/full", CFileException::diskFull);
    EXPECT_EQ(FileReplacement("/dev/null").GetUnfinishedPath(), "");
}
