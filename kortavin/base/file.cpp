#include "kortavin/base/file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "kortavin/base/file_stream.h"
#include "kortavin/base/system.h"

namespace kortavin {

namespace {

base::Descriptor OpenDescriptor(const CString& path, UINT flags) {
    int systemFlags = O_CLOEXEC | O_NOCTTY;
    systemFlags |= (flags & CFile::modeReadWrite) ? O_RDWR : (flags & CFile::modeWrite) ? O_WRONLY : O_RDONLY;
    if (flags & CFile::modeCreate)
        systemFlags |= (flags & CFile::modeNoTruncate) ? O_CREAT : O_CREAT | O_TRUNC;
    base::Descriptor descriptor(
        base::Uninterrupted([&] { return open(path.GetString(), systemFlags, 0666); }));
    struct stat status;
    if (descriptor.Get() < 0 || fstat(descriptor.Get(), &status) != 0)
        throw CFileException::FromErrno(errno, path);
    // The system opens a folder for reading, and only the first read would fail.
    if (S_ISDIR(status.st_mode))
        throw CFileException::FromErrno(EISDIR, path);
    return descriptor;
}

}  // namespace

constinit const CRuntimeClass CFile::classCFile{"CFile", &CObject::classCObject};

CFile::CFile() = default;

CFile::CFile(int descriptor, const char* path) : m_stream(std::make_unique<Stream>(descriptor, path)) {}

CFile::CFile(const char* path, UINT flags) {
    CFileException error;
    if (!CFile::Open(path, flags, &error))
        throw error;
}

CFile::~CFile() {
    try {
        CFile::Close();
    } catch (...) {  // nobody is left to be told
    }
}

const CRuntimeClass* CFile::GetRuntimeClass() const {
    return &classCFile;
}

BOOL CFile::Open(const char* path, UINT flags, CFileException* error) {
    try {
        CFile::Close();
        base::Descriptor descriptor = OpenDescriptor(path, flags);
        m_stream = std::make_unique<Stream>(descriptor.Get(), path);
        descriptor.Release();
        return TRUE;
    } catch (const CFileException& failure) {
        if (error != nullptr)
            *error = failure;
        return FALSE;
    }
}

// The stream goes, and its descriptor with it, also when closing fails.
void CFile::Close() {
    if (const auto stream = std::move(m_stream))
        stream->Close();
}

void CFile::Abort() {
    m_stream.reset();
}

UINT CFile::Read(void* buffer, UINT count) {
    return static_cast<UINT>(Opened().Read({static_cast<char*>(buffer), count}));
}

void CFile::Write(const void* buffer, UINT count) {
    Opened().Write({static_cast<const char*>(buffer), count});
}

void CFile::Flush() {
    Opened().Flush();
}

ULONGLONG CFile::GetPosition() const {
    return Opened().Position();
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
    return Opened().Seek(offset, from);
}

ULONGLONG CFile::GetLength() const {
    return Opened().Length();
}

void CFile::SetLength(ULONGLONG length) {
    Opened().SetLength(length);
}

CString CFile::GetFilePath() const {
    return m_stream ? m_stream->Path() : CString();
}

}  // namespace kortavin
