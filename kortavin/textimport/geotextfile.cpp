#include "kortavin/textimport/geotextfile.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "kortavin/base/file_stream.h"

namespace kortavin {

using base::FileWindow;

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::size_t kLineEnd = 2;        // the carriage return and the byte behind it
constexpr std::size_t kKeptBlock = 65536;  // the block of a longer line is freed

// The only rule of where lines end: the index of the carriage return.
std::size_t FindLineEnd(std::string_view bytes) {
    return bytes.find('\r');
}

// A zero byte cuts the text of a line.
std::string_view UpToZero(std::string_view bytes) {
    return bytes.substr(0, bytes.find('\0'));
}

// Collects the text of a line from the line's bytes.
class LineText {
  public:
    explicit LineText(std::string& text) : m_text(text) { m_text.clear(); }

    void Append(std::string_view bytes) {
        if (m_isCut)
            return;
        const std::string_view part = UpToZero(bytes);
        m_isCut = part.size() < bytes.size();
        if (part.size() > INT_MAX - m_text.size())
            throw CMemoryException();
        m_text.append(part);
    }

  private:
    std::string& m_text;
    bool m_isCut = false;
};

// Takes a line that lies in the window as a whole, which nearly all do; answers its bytes. 0 for any other.
std::size_t TakeFromWindow(FileWindow& window, std::string& line) {
    const std::string_view bytes = window.Bytes();
    const std::size_t end = FindLineEnd(bytes);
    if (end == kNone || bytes.size() - end < kLineEnd)
        return 0;
    line.assign(UpToZero(bytes.substr(0, end)));
    window.Skip(end + kLineEnd);
    return end + kLineEnd;
}

void CollectFromWindows(FileWindow& window, std::string& text) {
    LineText line(text);
    for (std::string_view bytes = window.Bytes(); !bytes.empty(); bytes = window.Bytes()) {
        const std::size_t end = FindLineEnd(bytes);
        line.Append(bytes.substr(0, end));
        if (end == kNone) {
            window.Skip(bytes.size());
            continue;
        }
        window.Skip(end + 1);
        if (!window.Bytes().empty())
            window.Skip(1);
        return;
    }
}

}  // namespace

constinit UINT CGeoTextFile::m_MaxBufSize = 1024;

CGeoTextFile::CGeoTextFile() = default;

CGeoTextFile::CGeoTextFile(CFile* pFile) {
    SetFile(pFile);
}

CGeoTextFile::CGeoTextFile(const CGeoTextFile& other) {
    *this = other;
}

CGeoTextFile& CGeoTextFile::operator=(const CGeoTextFile& other) {
    m_Line = other.m_Line;
    m_pFile = other.m_pFile;
    m_Position = other.m_Position;
    m_LineStart = other.m_LineStart;
    m_Length = other.m_Length;
    m_offersWindow = other.m_offersWindow;
    return *this;
}

CGeoTextFile::~CGeoTextFile() = default;

// Until the file is known to be rewound there is nothing to read from it.
void CGeoTextFile::SetFile(CFile* pFile) {
    m_pFile = pFile;
    m_Position = 0;
    m_LineStart = 0;
    m_Length = 0;
    if (m_pFile == nullptr)
        return;
    m_offersWindow = FileWindow::IsOfferedBy(*m_pFile);
    m_pFile->Seek(0, CFile::begin);
    m_Length = m_pFile->GetLength();
}

CString CGeoTextFile::GetLine() const {
    return m_Line;
}

void CGeoTextFile::MakeBuffer() {
    const UINT size = std::max(m_MaxBufSize, 1U);
    m_pBuffer = std::make_unique_for_overwrite<char[]>(std::size_t{size} + 1);
    m_pBuffer[size] = '\0';
    m_bufferSize = size;
}

// Makes the block the current line. A file that was cut has nothing more, and would give empty lines for
// ever.
inline BOOL CGeoTextFile::UseBlock() {
    if (m_Position == m_LineStart && m_Position < m_Length)
        return FALSE;
    m_block.swap(m_Line.GetStorage());
    if (m_block.capacity() > kKeptBlock)
        m_block = std::string();
    return TRUE;
}

BOOL CGeoTextFile::FineCLPairs(UINT& nCount, long& nSkip) {
    const std::size_t end = FindLineEnd({m_pBuffer.get(), nCount});
    if (end == kNone)
        return FALSE;
    m_pBuffer[end] = '\0';
    nSkip = static_cast<long>(end + kLineEnd);
    return TRUE;
}

// Reads the whole line in one piece. One that no string holds may still have a short text before a zero byte,
// and goes through the chunk buffer.
inline void CGeoTextFile::ReadBack(std::string& text, ULONGLONG textLength, ULONGLONG length) {
    if (length <= INT_MAX) {
        text.resize(length);
        const UINT count = m_pFile->Read(text.data(), static_cast<UINT>(length));
        text.resize(UpToZero({text.data(), std::min<ULONGLONG>(count, textLength)}).size());
        return;
    }
    LineText line(text);
    for (UINT wanted = 0, count = 0; length > 0 && count == wanted; length -= count) {
        wanted = static_cast<UINT>(std::min<ULONGLONG>(length, m_bufferSize));
        count = std::min(m_pFile->Read(m_pBuffer.get(), wanted), wanted);
        const ULONGLONG ofText = std::min<ULONGLONG>(count, textLength);
        line.Append({m_pBuffer.get(), ofText});
        textLength -= ofText;
    }
}

inline void CGeoTextFile::ScanChunks(std::string& text) {
    m_LineStart = m_pFile->GetPosition();
    ULONGLONG end = m_LineStart;
    BOOL found = FALSE;
    bool atEnd = false;
    while (!atEnd && !found) {
        UINT count = std::min(m_pFile->Read(m_pBuffer.get(), m_bufferSize), m_bufferSize);
        long skip = 0;
        atEnd = count < m_bufferSize;
        found = FineCLPairs(count, skip);
        end += found ? static_cast<ULONGLONG>(skip) : count;
    }
    m_pFile->Seek(static_cast<LONGLONG>(m_LineStart), CFile::begin);
    const ULONGLONG length = end - m_LineStart;
    ReadBack(text, found ? length - kLineEnd : length, length);
    m_Position = m_pFile->GetPosition();
}

inline BOOL CGeoTextFile::ScanWindow() {
    FileWindow window(*m_pFile);
    m_LineStart = window.GetPosition();
    m_Position = m_LineStart + TakeFromWindow(window, m_Line.GetStorage());
    if (m_Position > m_LineStart)
        return TRUE;
    CollectFromWindows(window, m_block);
    m_Position = window.GetPosition();
    return UseBlock();
}

inline BOOL CGeoTextFile::ReadNextLine() {
    if (!m_pBuffer)
        MakeBuffer();
    if (m_pFile == nullptr || m_Position >= m_Length)
        return FALSE;
    if (m_offersWindow)
        return ScanWindow();
    ScanChunks(m_block);
    return UseBlock();
}

BOOL CGeoTextFile::NextLine() {
    return WithMemoryErrors([this] { return ReadNextLine(); });
}

}  // namespace kortavin
