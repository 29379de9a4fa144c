#include "framework/qt/text.h"

#include <algorithm>

#include "framework/base/codepage.h"

namespace kortavin::qt {

QString ToQt(std::string_view gbk) {
    if (base::AsciiLength(gbk) == gbk.size())
        return QString::fromLatin1(gbk.data(), static_cast<qsizetype>(gbk.size()));
    return QString::fromStdString(base::GbkForDisplay(gbk));
}

CString FromQt(const QString& text) {
    // By way of UTF-32, since the direct way would make a question mark of half a pair.
    const QByteArray utf8 = QString::fromStdU32String(text.toStdU32String()).toUtf8();
    return CString(base::Utf8ForMessage({utf8.constData(), static_cast<std::size_t>(utf8.size())}));
}

int QtOffset(std::string_view gbk, int byteOffset) {
    const auto limit = std::min(gbk.size(), static_cast<std::size_t>(std::max(byteOffset, 0)));
    return static_cast<int>(ToQt(base::CutAtCharacter(gbk, limit)).size());
}

const QString& KeptText::Set(std::string_view gbk) {
    m_bytes = CString(gbk);
    m_shown = ToQt(gbk);
    return m_shown;
}

CString KeptText::Get(const QString& shown) const {
    return shown == m_shown ? m_bytes : FromQt(shown);
}

}  // namespace kortavin::qt
