#include <cerrno>
#include <cstring>

#include "kortavin/base/codepage.h"
#include "kortavin/base/file.h"

namespace kortavin {

namespace {

CFileException::Cause CauseOf(int osError) {
    switch (osError) {
        case 0:
            return CFileException::none;
        case ENOENT:
            return CFileException::fileNotFound;
        case ENOTDIR:
        case ENAMETOOLONG:
        case ELOOP:
            return CFileException::badPath;
        case EACCES:
        case EPERM:
        case EROFS:
        case EISDIR:
        case ETXTBSY:
            return CFileException::accessDenied;
        case EMFILE:
        case ENFILE:
            return CFileException::tooManyOpenFiles;
        case EBADF:
            return CFileException::invalidFile;
        case ESPIPE:
            return CFileException::badSeek;
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return CFileException::diskFull;
        case EIO:
            return CFileException::hardIO;
        default:
            return CFileException::genericException;
    }
}

// For errors that the system did not report.
const char* ReasonOf(CFileException::Cause cause) {
    switch (cause) {
        case CFileException::none:
            return "No error";
        case CFileException::fileNotFound:
            return "File not found";
        case CFileException::badPath:
            return "Invalid path";
        case CFileException::tooManyOpenFiles:
            return "Too many open files";
        case CFileException::accessDenied:
            return "Access denied";
        case CFileException::invalidFile:
            return "The file is not open";
        case CFileException::badSeek:
            return "Position outside the file";
        case CFileException::hardIO:
            return "Input/output error";
        case CFileException::diskFull:
            return "Disk full";
        case CFileException::endOfFile:
            return "End of file";
        case CFileException::genericException:
            break;
    }
    return "Unknown file error";
}

}  // namespace

CFileException::CFileException(Cause cause, int osError, const CString& fileName)
    : m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

CFileException CFileException::FromErrno(int osError, const CString& fileName) {
    return {CauseOf(osError), osError, fileName};
}

CFileException::~CFileException() = default;

CString CFileException::GetErrorMessage() const {
    const char* const described = m_lOsError != 0 ? strerrordesc_np(m_lOsError) : nullptr;
    CString reason(described != nullptr ? described : ReasonOf(m_cause));
    if (m_strFileName.IsEmpty())
        return reason;
    return CString(base::Utf8ForMessage(m_strFileName.View())) + ": " + reason;
}

const char* CFileException::what() const noexcept {
    return "file error";
}

}  // namespace kortavin
