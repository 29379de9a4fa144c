#include "desktop/textsource.h"

#include <fcntl.h>
#include <QtCore/QFile>
#include <QtCore/QTemporaryFile>
#include <algorithm>
#include <cerrno>
#include <functional>
#include <optional>
#include <string>

#include "desktop/report.h"
#include "desktop/text.h"
#include "kortavin/base/codepage.h"

namespace kortavin::desktop {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr UINT kBlock = 65536;
constexpr int kShownLength = 80;  // characters of a bad line

// Where the last whole line ends that ends at `from` or later. A carriage return at the very end may have its
// line feed still to come.
std::size_t EndOfLines(std::string_view text, std::size_t from) {
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    const std::size_t end = text.substr(std::min(from, text.size())).find_last_of("\r\n");
    return end == std::string_view::npos ? 0 : from + end + 1;
}

// Hands out the file in pieces that end with a line, or at the file's end.
void ForEachPiece(CFile& file, const std::function<bool(std::string_view)>& take) {
    file.Seek(0, CFile::begin);
    std::string pending;
    std::string block(kBlock, '\0');
    for (bool isLast = false; !isLast;) {
        const std::size_t searched = pending.empty() ? 0 : pending.size() - 1;
        const UINT count = file.Read(block.data(), kBlock);
        isLast = count < kBlock;
        pending.append(block, 0, count);
        const std::size_t end = isLast ? pending.size() : EndOfLines(pending, searched);
        if (end > 0 && !take(std::string_view(pending).substr(0, end)))
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

// The file is gone with the last descriptor.
std::unique_ptr<CFile> MakeNameless() {
    QTemporaryFile file;
    if (!file.open())
        throw Failure(QStringLiteral("不能建立临时文件：%1").arg(file.errorString()).toStdString());
    const int descriptor = fcntl(file.handle(), F_DUPFD_CLOEXEC, 0);
    if (descriptor < 0)
        throw CFileException::FromErrno(errno, QFile::encodeName(file.fileName()).constData());
    return std::make_unique<CFile>(descriptor);
}

std::optional<CString> GbkOf(std::string_view text, bool isUtf8) {
    if (isUtf8)
        return CString::FromUtf8(text);
    CString gbk(text);
    return gbk.ToUtf8() ? std::optional(std::move(gbk)) : std::nullopt;
}

// The first line that is no text is told, by its number in the file.
[[noreturn]] void Refuse(std::string_view piece, bool isUtf8, ULONGLONG number) {
    const std::string lines = WithLineEnds(piece);
    std::string_view rest = lines;
    std::string_view line;
    do {
        const std::size_t end = std::min(rest.find("\r\n"), rest.size());
        line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 2, rest.size()));
        ++number;
    } while (GbkOf(line, isUtf8) && !rest.empty());
    RefuseLine(number, isUtf8 ? CString(base::Utf8ForMessage(line)) : CString(line),
               isUtf8 ? QStringLiteral("不是有效的 UTF-8 文本。") : QStringLiteral("不是有效的 GBK 文本。"));
}

CString Checked(std::string_view piece, bool isUtf8, ULONGLONG linesBefore) {
    if (piece.find('\0') != std::string_view::npos)
        throw Failure("文件中有值为零的字节：它不是 GBK 或 UTF-8 文本。");
    if (auto gbk = GbkOf(piece, isUtf8))
        return *std::move(gbk);
    Refuse(piece, isUtf8, linesBefore);
}

}  // namespace

void RefuseLine(ULONGLONG number, const CString& line, const QString& reason) {
    QString text = Shown(line);
    if (text.size() > kShownLength)
        text = text.left(kShownLength) + QStringLiteral("…");
    throw Failure(
        QStringLiteral("第 %1 行：%2\n%3").arg(QString::number(number), text, reason).toStdString());
}

TextSource::TextSource(const QString& path, TextEncoding encoding) : m_text(MakeNameless()) {
    CFile file(QFile::encodeName(path).constData(), CFile::modeRead);
    const bool hasMark = BeginsWithMark(file);
    const bool isUtf8 =
        hasMark || encoding == TextEncoding::Utf8 || (encoding == TextEncoding::Detected && IsUtf8(file));
    bool isFirst = true;
    ULONGLONG lineEnds = 0;
    ForEachPiece(file, [&](std::string_view piece) {
        if (std::exchange(isFirst, false) && hasMark)
            piece.remove_prefix(kMark.size());
        const std::string lines = WithLineEnds(Checked(piece, isUtf8, lineEnds).View());
        lineEnds += static_cast<ULONGLONG>(std::ranges::count(lines, '\n'));
        m_text->Write(lines.data(), static_cast<UINT>(lines.size()));
        return true;
    });
    m_text->Seek(0, CFile::begin);
}

}  // namespace kortavin::desktop
