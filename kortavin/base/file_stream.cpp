#include "kortavin/base/file_stream.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <algorithm>

#include "kortavin/base/seek.h"

namespace kortavin {

using base::Uninterrupted;

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
constexpr std::size_t kKeptBehind = 4096;  // what stays of a window before the next, for going back a little

}  // namespace

CFile::Stream::Stream(int descriptor, const CString& path) : m_path(path) {
    struct stat status;
    const int flags = fcntl(descriptor, F_GETFL);
    if (flags < 0 || fstat(descriptor, &status) != 0)
        Fail(errno);
    m_readable = (flags & O_ACCMODE) != O_WRONLY;
    m_writable = (flags & O_ACCMODE) != O_RDONLY;
    m_appends = (flags & O_APPEND) != 0;
    m_seekable = S_ISREG(status.st_mode);
    if (m_seekable)
        m_systemPosition = static_cast<ULONGLONG>(lseek(descriptor, 0, SEEK_CUR));
    m_descriptor = base::Descriptor(descriptor);
}

ULONGLONG CFile::Stream::Length() const {
    if (!m_seekable)
        return Position();
    struct stat status;
    if (fstat(m_descriptor.Get(), &status) != 0)
        Fail(errno);
    const auto length = static_cast<ULONGLONG>(status.st_size);
    return Pending().empty() ? length : std::max(length, Position());
}

std::size_t CFile::Stream::Read(std::span<char> to) {
    std::size_t count = TakeReadAhead(to);
    if (count == to.size())
        return count;
    StartReading();
    while (count < to.size()) {
        const std::span<char> rest = to.subspan(count);
        std::size_t read = 0;
        if (rest.size() >= kBufferSize) {
            DropWindow();
            read = ReadFromSystem(rest);
        } else {
            FillWindow();
            read = TakeReadAhead(rest);
        }
        if (read == 0)
            break;
        count += read;
    }
    return count;
}

void CFile::Stream::StartReading() {
    if (!m_readable)
        Fail(EBADF);
    Flush();
}

// Once nothing is left of what was read ahead.
void CFile::Stream::FillWindow() {
    char* const buffer = Buffer();
    const std::span<const char> kept = m_window.last(std::min(m_window.size(), kKeptBehind));
    if (!kept.empty())
        std::memmove(buffer, kept.data(), kept.size());
    m_window = {buffer, kept.size()};
    m_readAt = kept.size();
    const std::size_t read = ReadFromSystem({buffer + kept.size(), kBufferSize});
    m_window = {buffer, kept.size() + read};
}

void CFile::Stream::ReadMoreAhead() {
    StartReading();
    FillWindow();
}

std::size_t CFile::Stream::TakeReadAhead(std::span<char> to) {
    const std::size_t count = std::min(to.size(), ReadAhead().size());
    if (count > 0)
        std::memcpy(to.data(), ReadAhead().data(), count);
    m_readAt += count;
    return count;
}

std::size_t CFile::Stream::ReadFromSystem(std::span<char> to) {
    while (true) {
        const auto count = Uninterrupted([&] { return read(m_descriptor.Get(), to.data(), to.size()); });
        if (count >= 0) {
            m_systemPosition += static_cast<ULONGLONG>(count);
            return static_cast<std::size_t>(count);
        }
        if (errno != EAGAIN)
            Fail(errno);
        Wait(POLLIN);
    }
}

void CFile::Stream::WriteMore(std::span<const char> from) {
    if (from.empty())
        return;
    if (!m_writable)
        Fail(EBADF);
    // Both directions of a terminal or a socket: there is no way back over what was read ahead.
    if (!m_seekable && !ReadAhead().empty())
        return WriteToSystem(from);
    if (!ReadAhead().empty())
        MoveSystemTo(Position());
    DropWindow();
    // Topping up the buffer first keeps the system's writes whole and aligned.
    if (!Pending().empty()) {
        from = Put(from);
        if (m_writeAt == m_writeEnd)
            Flush();
    }
    if (from.size() >= kBufferSize) {
        const std::size_t whole = from.size() - from.size() % kBufferSize;
        WriteToSystem(from.first(whole));
        from = from.subspan(whole);
    }
    if (!from.empty())
        Put(from);
}

// Adds to the pending bytes what there is room for; answers the rest.
std::span<const char> CFile::Stream::Put(std::span<const char> from) {
    if (m_writeAt == nullptr) {
        m_writeAt = Buffer();
        m_writeEnd = m_writeAt + kBufferSize;
    }
    const std::size_t count = std::min(from.size(), static_cast<std::size_t>(m_writeEnd - m_writeAt));
    std::memcpy(m_writeAt, from.data(), count);
    m_writeAt += count;
    return from.subspan(count);
}

void CFile::Stream::WriteToSystem(std::span<const char> from) {
    while (!from.empty()) {
        const auto count = Uninterrupted([&] { return write(m_descriptor.Get(), from.data(), from.size()); });
        if (count > 0) {
            from = from.subspan(static_cast<std::size_t>(count));
            m_systemPosition += static_cast<ULONGLONG>(count);
            if (m_appends && m_seekable)
                m_systemPosition = static_cast<ULONGLONG>(lseek(m_descriptor.Get(), 0, SEEK_CUR));
        } else if (count == 0) {
            Fail(EIO);  // the system neither took anything nor says why
        } else if (errno == EAGAIN) {
            Wait(POLLOUT);
        } else {
            Fail(errno);
        }
    }
}

void CFile::Stream::Flush() {
    if (m_writeAt == nullptr)
        return;
    const std::span<const char> pending = Pending();
    m_writeAt = nullptr;
    m_writeEnd = nullptr;
    WriteToSystem(pending);
}

ULONGLONG CFile::Stream::Seek(LONGLONG offset, UINT from) {
    const auto target = base::SeekTarget(offset, from, Position(), from == CFile::end ? Length() : 0);
    if (!target)
        throw CFileException(CFileException::badSeek, EINVAL, m_path);
    if (*target == Position())
        return *target;
    if (!m_seekable)
        throw CFileException(CFileException::badSeek, ESPIPE, m_path);
    Flush();
    if (*target <= m_systemPosition && m_systemPosition - *target <= m_window.size())
        m_readAt = m_window.size() - static_cast<std::size_t>(m_systemPosition - *target);
    else
        MoveSystemTo(*target);
    return *target;
}

void CFile::Stream::MoveSystemTo(ULONGLONG position) {
    if (lseek(m_descriptor.Get(), static_cast<off_t>(position), SEEK_SET) < 0)
        throw CFileException(CFileException::badSeek, errno, m_path);
    m_systemPosition = position;
    DropWindow();
}

void CFile::Stream::SetLength(ULONGLONG length) {
    if (!m_writable)
        Fail(EBADF);
    if (length > INT64_MAX)
        Fail(EFBIG);
    Flush();
    if (m_seekable)
        MoveSystemTo(Position());
    if (Uninterrupted([&] { return ftruncate(m_descriptor.Get(), static_cast<off_t>(length)); }) != 0)
        Fail(errno);
}

void CFile::Stream::Close() {
    Flush();
    if (const int error = m_descriptor.Close(); error != 0)
        Fail(error);
}

void CFile::Stream::Fail(int osError) const {
    throw CFileException::FromErrno(osError, m_path);
}

// For a descriptor that came to us non-blocking, as a terminal shared with another program may.
void CFile::Stream::Wait(short events) const {
    pollfd waiting{m_descriptor.Get(), events, 0};
    if (Uninterrupted([&] { return poll(&waiting, 1, -1); }) < 0)
        Fail(errno);
}

char* CFile::Stream::Buffer() {
    if (!m_buffer)
        m_buffer = std::make_unique_for_overwrite<char[]>(kKeptBehind + kBufferSize);
    return m_buffer.get();
}

void CFile::Stream::DropWindow() {
    m_window = {};
    m_readAt = 0;
}

}  // namespace kortavin
