#include "kortavin/base/replacement.h"

#include <fcntl.h>
#include <limits.h>
#include <sys/random.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>

#include "kortavin/base/system.h"

namespace kortavin::base {
namespace {

namespace fs = std::filesystem;

constexpr mode_t kPermissions = 0777;  // a new content never inherits the right to run as somebody else

[[noreturn]] void Fail(int osError, const std::string& path) {
    throw CFileException::FromErrno(osError, CString(path));
}

// Where a chain of links ends, whether or not something is there.
fs::path Resolve(fs::path path) {
    constexpr int kMostLinks = 40;  // as the system counts
    std::error_code error;
    for (int i = 0; fs::is_symlink(fs::symlink_status(path, error)); ++i) {
        if (i == kMostLinks)
            Fail(ELOOP, path.native());
        const fs::path link = fs::read_symlink(path, error);
        if (error)
            Fail(error.value(), path.native());
        path = path.parent_path() / link;
    }
    return path;
}

fs::path UnfinishedName(const fs::path& target) {
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz012345";
    std::array<unsigned char, 6> random;
    if (getrandom(random.data(), random.size(), 0) != static_cast<ssize_t>(random.size()))
        Fail(errno, target.native());
    std::string ending = ".";
    for (const unsigned char byte : random)
        ending += kLetters[byte % kLetters.size()];
    const std::string name = target.filename().native().substr(0, NAME_MAX - 1 - ending.size());
    return target.parent_path() / ("." + name + ending);
}

// As mkostemp does it, but the system applies the umask and the folder's default permissions itself.
Descriptor MakeUnfinished(const fs::path& target, mode_t mode, fs::path& unfinished) {
    constexpr int kMostTries = 1000;
    for (int i = 0; i < kMostTries; ++i) {
        unfinished = UnfinishedName(target);
        Descriptor descriptor(open(unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
        if (descriptor.Get() >= 0)
            return descriptor;
        if (errno != EEXIST && errno != EINTR)
            break;
    }
    // It is the folder that refuses, and its name means more to the reader than the one we made up.
    const int error = errno;
    Fail(error, target.has_parent_path() ? target.parent_path().native() : ".");
}

// Owner and group as far as the system lets us: a missing right to give files away is no reason to refuse.
void TakeOver(const struct stat& former, int descriptor, const fs::path& unfinished) {
    [[maybe_unused]] const bool given = fchown(descriptor, former.st_uid, former.st_gid) == 0 ||
                                        fchown(descriptor, static_cast<uid_t>(-1), former.st_gid) == 0;
    if (fchmod(descriptor, former.st_mode & kPermissions) != 0)
        Fail(errno, unfinished.native());
}

}  // namespace

struct FileReplacement::State {
    std::unique_ptr<CFile> file;
    Descriptor disk;  // the same open file, for waiting until it is on the disk
    fs::path target;
    CString unfinished;  // empty once there is none

    ~State() {
        if (file)
            file->Abort();
        if (!unfinished.IsEmpty())
            unlink(unfinished);
    }
};

FileReplacement::FileReplacement(const CString& path) : m_state(std::make_unique<State>()) {
    const std::string name(path.View());
    Descriptor former(Uninterrupted([&] { return open(name.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY); }));
    struct stat status {};
    if (former.Get() < 0 ? errno != ENOENT : fstat(former.Get(), &status) != 0)
        Fail(errno, name);
    const bool exists = former.Get() >= 0;
    if (exists && !S_ISREG(status.st_mode)) {
        m_state->file = std::make_unique<CFile>(former.Get(), path);
        former.Release();
        return;
    }
    m_state->target = Resolve(name);
    fs::path unfinished;
    Descriptor made =
        MakeUnfinished(m_state->target, exists ? status.st_mode & kPermissions : 0666, unfinished);
    m_state->unfinished = CString(unfinished.native());
    if (exists)
        TakeOver(status, made.Get(), unfinished);
    m_state->disk = Descriptor(fcntl(made.Get(), F_DUPFD_CLOEXEC, 0));
    if (m_state->disk.Get() < 0)
        Fail(errno, name);
    m_state->file = std::make_unique<CFile>(made.Get(), path);
    made.Release();
}

FileReplacement::~FileReplacement() = default;

CFile& FileReplacement::File() {
    return *m_state->file;
}

const CString& FileReplacement::GetUnfinishedPath() const {
    return m_state->unfinished;
}

void FileReplacement::Commit() {
    State& state = *m_state;
    state.file->Flush();
    if (!state.unfinished.IsEmpty() && Uninterrupted([&] { return fsync(state.disk.Get()); }) != 0 &&
        errno != EINVAL)
        Fail(errno, state.target.native());  // EINVAL: a file system that cannot be waited for
    state.file->Close();
    if (state.unfinished.IsEmpty())
        return;
    if (const int error = state.disk.Close(); error != 0)
        Fail(error, state.target.native());
    if (rename(state.unfinished, state.target.c_str()) != 0)
        Fail(errno, state.target.native());
    state.unfinished.Empty();
    // The new name survives a power failure only when the folder is on the disk too; not every file system
    // can.
    const fs::path folder = state.target.has_parent_path() ? state.target.parent_path() : fs::path(".");
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (opened.Get() >= 0)
        fsync(opened.Get());
}

}  // namespace kortavin::base
