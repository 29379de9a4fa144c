#include <algorithm>
#include <cerrno>
#include <cstring>
#include <new>
#include <stdexcept>

#include "kortavin/base/file.h"
#include "kortavin/base/seek.h"

namespace kortavin {

namespace {

// A file in memory that memory does not hold is out of memory, however the string says it.
template <class Change>
void Guarded(Change change) try {
    change();
} catch (const std::bad_alloc&) {
    throw CMemoryException();
} catch (const std::length_error&) {
    throw CMemoryException();
}

}  // namespace

constinit const CRuntimeClass CMemFile::classCMemFile{"CMemFile", &CFile::classCFile};

CMemFile::CMemFile() = default;
CMemFile::~CMemFile() = default;

const CRuntimeClass* CMemFile::GetRuntimeClass() const {
    return &classCMemFile;
}

BOOL CMemFile::Open(const char* path, UINT, CFileException* error) {
    if (error != nullptr)
        *error = CFileException(CFileException::invalidFile, 0, path);
    return FALSE;
}

void CMemFile::Close() {
    Abort();
}

void CMemFile::Abort() {
    m_content = std::string();
    m_position = 0;
}

UINT CMemFile::Read(void* buffer, UINT count) {
    if (m_position >= m_content.size())
        return 0;
    const std::size_t read = std::min<std::size_t>(count, m_content.size() - m_position);
    if (read > 0)
        std::memcpy(buffer, m_content.data() + m_position, read);
    m_position += read;
    return static_cast<UINT>(read);
}

void CMemFile::Write(const void* buffer, UINT count) {
    if (count == 0)
        return;
    if (m_position > m_content.max_size() - count)
        throw CMemoryException();
    if (m_position == m_content.size()) {
        Guarded([&] { m_content.append(static_cast<const char*>(buffer), count); });
    } else {
        if (m_position + count > m_content.size())
            Guarded([&] { m_content.resize(m_position + count); });
        std::memcpy(m_content.data() + m_position, buffer, count);
    }
    m_position += count;
}

void CMemFile::Flush() {}

ULONGLONG CMemFile::GetPosition() const {
    return m_position;
}

ULONGLONG CMemFile::Seek(LONGLONG offset, UINT from) {
    const auto target = base::SeekTarget(offset, from, m_position, m_content.size());
    if (!target)
        throw CFileException(CFileException::badSeek, EINVAL, CString());
    m_position = *target;
    return m_position;
}

ULONGLONG CMemFile::GetLength() const {
    return m_content.size();
}

void CMemFile::SetLength(ULONGLONG length) {
    Guarded([&] { m_content.resize(length); });
}

CString CMemFile::GetFilePath() const {
    return {};
}

std::string_view CMemFile::GetContent() const {
    return m_content;
}

}  // namespace kortavin
