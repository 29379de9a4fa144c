#pragma once

#include <cstring>
#include <memory>
#include <span>
#include <string_view>
#include <typeinfo>

#include "kortavin/base/file.h"
#include "kortavin/base/system.h"

namespace kortavin {

// An open descriptor with the buffer that serves both directions: at any time it holds a window of bytes read
// from the system, or bytes to be written, or nothing. The system's position is behind the window, and before
// the bytes to be written.
struct __attribute__((visibility("hidden"))) CFile::Stream {
  public:
    // Throws for what is no open descriptor; it is taken over only on success.
    Stream(int descriptor, const CString& path);

    const CString& Path() const { return m_path; }
    ULONGLONG Position() const { return m_systemPosition + Pending().size() - ReadAhead().size(); }
    ULONGLONG Length() const;

    std::size_t Read(std::span<char> to);
    // What was read ahead and begins at the position: some bytes, or none at the end of the file. Valid until
    // the next operation.
    std::string_view Peek() {
        if (ReadAhead().empty())
            ReadMoreAhead();
        return {ReadAhead().data(), ReadAhead().size()};
    }
    // Passes over bytes that Peek told of.
    void Skip(std::size_t count) { m_readAt += count; }
    void Write(std::span<const char> from) {
        // An empty text wraps around and takes the long way as well: memcpy must not see its null pointer.
        if (from.size() - 1 < static_cast<std::size_t>(m_writeEnd - m_writeAt)) {
            std::memcpy(m_writeAt, from.data(), from.size());
            m_writeAt += from.size();
        } else {
            WriteMore(from);
        }
    }
    // Hands what is pending to the system. When that fails, what is left of it is dropped.
    void Flush();
    ULONGLONG Seek(LONGLONG offset, UINT from);
    void SetLength(ULONGLONG length);
    void Close();

  private:
    std::span<const char> ReadAhead() const { return m_window.subspan(m_readAt); }
    std::span<const char> Pending() const {
        if (m_writeAt == nullptr)
            return {};
        return {m_buffer.get(), m_writeAt};
    }

    [[noreturn]] void Fail(int osError) const;
    void Wait(short events) const;
    char* Buffer();
    void DropWindow();
    void MoveSystemTo(ULONGLONG position);
    void StartReading();
    void FillWindow();
    void ReadMoreAhead();
    std::size_t TakeReadAhead(std::span<char> to);
    std::size_t ReadFromSystem(std::span<char> to);
    void WriteMore(std::span<const char> from);
    void WriteToSystem(std::span<const char> from);
    std::span<const char> Put(std::span<const char> from);

    base::Descriptor m_descriptor;
    CString m_path;
    bool m_readable = false;
    bool m_writable = false;
    bool m_appends = false;   // the system writes at the end, wherever the position was
    bool m_seekable = false;  // a regular file
    ULONGLONG m_systemPosition = 0;

    std::unique_ptr<char[]> m_buffer;
    std::span<const char> m_window;
    std::size_t m_readAt = 0;   // in the window
    char* m_writeAt = nullptr;  // both null while nothing is pending
    char* m_writeEnd = nullptr;
};

inline CFile::Stream& CFile::Opened() const {
    if (!m_stream)
        throw CFileException(CFileException::invalidFile, 0, CString());
    return *m_stream;
}

namespace base {

// What a CFile has read ahead, for readers of this library that look at bytes in place instead of reading
// them twice. It works on the file's own position.
class FileWindow {
  public:
    // Not of a file of a derived class, whose own operations are what counts.
    static bool IsOfferedBy(const CFile& file) { return typeid(file) == typeid(CFile); }
    explicit FileWindow(const CFile& file) : m_stream(&file.Opened()) {}

    ULONGLONG GetPosition() const { return m_stream->Position(); }
    // The next bytes, read from the system if need be; none at the end of the file. Valid until they are
    // skipped or anything else is done to the file.
    std::string_view Bytes() { return m_stream->Peek(); }
    void Skip(std::size_t count) { m_stream->Skip(count); }

  private:
    CFile::Stream* m_stream;
};

}  // namespace base

}  // namespace kortavin
