#pragma once

#include <memory>
#include <vector>

#include "kortavin/base/cstring.h"
#include "kortavin/base/exception.h"
#include "kortavin/base/object.h"

namespace kortavin {

namespace base {
class FileWindow;  // for this library's readers
}

// Why a file operation failed, the system's error number (errno, 0 where there was none) and the path.
class KORTAVIN_API CFileException : public CException {
  public:
    enum Cause {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        invalidFile,
        badSeek,
        hardIO,
        diskFull,
        endOfFile,
    };

    CFileException() = default;
    CFileException(Cause cause, int osError, const CString& fileName);
    // The cause that belongs to an errno value.
    static CFileException FromErrno(int osError, const CString& fileName);
    ~CFileException() override;

    // "PATH: REASON", the reason in English as the system words it.
    CString GetErrorMessage() const override;
    const char* what() const noexcept override;

    Cause m_cause = none;
    int m_lOsError = 0;
    CString m_strFileName;  // the system's own bytes; only the message is GBK
};

// A file of bytes. All operations are virtual, so a host may hand in a class of its own. Reads and writes go
// through one buffer; what was written reaches the system at the latest with Flush, Close or a Seek that
// leaves the buffer. Positions and lengths are 64 bits wide. Paths are the system's own bytes and are never
// converted. Errors are thrown as CFileException.
//
// A write that fails drops the bytes that could not be written: the position is then just behind what the
// system took, and the file can be used further.
class KORTAVIN_API CFile : public CObject {
  public:
    enum OpenFlags : UINT {
        modeRead = 0,
        modeWrite = 1,
        modeReadWrite = 2,
        modeCreate = 0x1000,      // made when missing, emptied when there
        modeNoTruncate = 0x2000,  // with modeCreate: kept when there
    };
    enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };

    static const CRuntimeClass classCFile;

    CFile();
    // Takes over an open descriptor and closes it in the end; when it throws, the descriptor is still the
    // caller's. The path only names the file, in errors and for GetFilePath.
    explicit CFile(int descriptor, const char* path = nullptr);
    // Opens, or throws.
    CFile(const char* path, UINT flags);
    CFile(const CFile&) = delete;
    CFile& operator=(const CFile&) = delete;
    // Closes; an error is lost here, so writers call Close themselves.
    ~CFile() override;
    const CRuntimeClass* GetRuntimeClass() const override;

    // TRUE when opened. Otherwise FALSE with the reason in `error`, if given. A folder cannot be opened.
    // A file that is already open here is closed first.
    virtual BOOL Open(const char* path, UINT flags, CFileException* error = nullptr);
    // Writes what is buffered and closes; a failure is thrown after the descriptor was closed.
    virtual void Close();
    // Closes without writing what is buffered and without errors.
    virtual void Abort();

    // A count below the one asked for means the end of the file.
    virtual UINT Read(void* buffer, UINT count);
    virtual void Write(const void* buffer, UINT count);
    virtual void Flush();

    virtual ULONGLONG GetPosition() const;
    // The new position. Before the beginning: badSeek, and the position stays.
    virtual ULONGLONG Seek(LONGLONG offset, UINT from);
    // Of a pipe or a device: what went through it so far.
    virtual ULONGLONG GetLength() const;
    // Cuts the file, or extends it by zero bytes. The position stays.
    virtual void SetLength(ULONGLONG length);
    virtual CString GetFilePath() const;

  private:
    friend class base::FileWindow;
    struct Stream;
    Stream& Opened() const;

    std::unique_ptr<Stream> m_stream;  // null while closed
};

// A file in memory, with the same rules. It always counts as open; Close and Abort empty it.
class KORTAVIN_API CMemFile : public CFile {
  public:
    static const CRuntimeClass classCMemFile;

    CMemFile();
    ~CMemFile() override;
    const CRuntimeClass* GetRuntimeClass() const override;

    // Not for a file in memory: always FALSE with invalidFile.
    BOOL Open(const char* path, UINT flags, CFileException* error = nullptr) override;
    void Close() override;
    void Abort() override;
    UINT Read(void* buffer, UINT count) override;
    void Write(const void* buffer, UINT count) override;
    void Flush() override;
    ULONGLONG GetPosition() const override;
    ULONGLONG Seek(LONGLONG offset, UINT from) override;
    ULONGLONG GetLength() const override;
    void SetLength(ULONGLONG length) override;
    CString GetFilePath() const override;

    // The content, valid until the next change.
    std::string_view GetContent() const;

  private:
    std::string m_content;
    std::size_t m_position = 0;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CFile;
using kortavin::CFileException;
using kortavin::CMemFile;
#endif
