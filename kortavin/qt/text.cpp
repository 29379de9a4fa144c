#include "kortavin/qt/text.h"

#include <algorithm>

#include "kortavin/base/codepage.h"

namespace kortavin::qt {
namespace {

struct Place {
    std::size_t bytes = 0;
    qsizetype shown = 0;
};

// The last beginning of a character that is not behind the place that is looked for.
template <class IsBehind>
Place LastPlace(std::string_view gbk, LineBreaks breaks, IsBehind isBehind) {
    Place place;
    while (place.bytes < gbk.size()) {
        const std::string_view rest = gbk.substr(place.bytes);
        const bool isBreak = breaks == LineBreaks::AsOne && rest.starts_with("\r\n");
        const auto character = rest.substr(0, isBreak ? 2 : base::CharacterLength(rest));
        const Place next{place.bytes + character.size(),
                         place.shown + (isBreak ? 1 : ToQt(character).size())};
        if (isBehind(next))
            break;
        place = next;
    }
    return place;
}

}  // namespace

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

int QtOffset(std::string_view gbk, int byteOffset, LineBreaks breaks) {
    const auto limit = static_cast<std::size_t>(std::max(byteOffset, 0));
    return static_cast<int>(
        LastPlace(gbk, breaks, [limit](const Place& place) { return place.bytes > limit; }).shown);
}

int ByteOffset(std::string_view gbk, int qtOffset, LineBreaks breaks) {
    return static_cast<int>(
        LastPlace(gbk, breaks, [qtOffset](const Place& place) { return place.shown > qtOffset; }).bytes);
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
