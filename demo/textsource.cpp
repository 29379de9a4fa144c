#include "demo/textsource.h"

#include <fcntl.h>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <functional>
#include <string>

#include "demo/report.h"
#include "framework/base/cstring.h"

namespace kortavin::demo {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr UINT kBlock = 65536;

// Hands out the file in pieces that end behind a line feed, or at the file's end.
void ForEachPiece(CFile& file, const std::function<bool(std::string_view)>& take) {
    file.Seek(0, CFile::begin);
    std::string pending;
    std::string block(kBlock, '\0');
    for (bool isLast = false; !isLast;) {
        const UINT count = file.Read(block.data(), kBlock);
        isLast = count < kBlock;
        pending.append(block, 0, count);
        const std::size_t end = isLast ? pending.size() : pending.rfind('\n') + 1;
        if (!take(std::string_view(pending).substr(0, end)))
            return;
        pending.erase(0, end);
    }
}

bool IsUtf8(CFile& file) {
    bool isUtf8 = true;
    ForEachPiece(file,
                 [&isUtf8](std::string_view piece) { return isUtf8 = CString::FromUtf8(piece).has_value(); });
    return isUtf8;
}

bool BeginsWithMark(CFile& file) {
    std::string start(kMark.size(), '\0');
    file.Seek(0, CFile::begin);
    const UINT count = file.Read(start.data(), static_cast<UINT>(start.size()));
    return std::string_view(start).substr(0, count) == kMark;
}

// Line ends become CR LF. In GBK neither byte is ever part of another character.
std::string WithLineEnds(std::string_view text) {
    std::string lines;
    lines.reserve(text.size() + text.size() / 16);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') {
            lines += text[i];
            continue;
        }
        lines += "\r\n";
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
    }
    return lines;
}

std::unique_ptr<CFile> MakeNameless() {
    const QByteArray folder = QFile::encodeName(QDir::tempPath());
    const int descriptor = open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600);
    if (descriptor < 0)
        throw CFileException::FromErrno(errno, folder.constData());
    return std::make_unique<CFile>(descriptor);
}

CString GbkOf(std::string_view piece, bool isUtf8) {
    if (piece.find('\0') != std::string_view::npos)
        throw Failure("文件中有值为零的字节：它不是 GBK 或 UTF-8 文本。");
    if (!isUtf8)
        return CString(piece);
    const auto gbk = CString::FromUtf8(piece);
    return gbk ? *gbk : throw Failure("文件不是有效的 UTF-8 文本。");
}

}  // namespace

TextSource::TextSource(const QString& path, TextEncoding encoding) : m_text(MakeNameless()) {
    CFile file(QFile::encodeName(path).constData(), CFile::modeRead);
    const bool hasMark = BeginsWithMark(file);
    const bool isUtf8 =
        hasMark || encoding == TextEncoding::Utf8 || (encoding == TextEncoding::Detected && IsUtf8(file));
    bool isFirst = true;
    ForEachPiece(file, [&](std::string_view piece) {
        if (std::exchange(isFirst, false) && hasMark)
            piece.remove_prefix(kMark.size());
        const std::string lines = WithLineEnds(GbkOf(piece, isUtf8).View());
        m_text->Write(lines.data(), static_cast<UINT>(lines.size()));
        return true;
    });
    m_text->Seek(0, CFile::begin);
}

}  // namespace kortavin::demo
