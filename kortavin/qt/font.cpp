#include "kortavin/qt/font.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QHash>
#include <algorithm>
#include <cmath>
#include <string_view>

#include "kortavin/base/codepage.h"
#include "kortavin/qt/text.h"

namespace kortavin::qt {
namespace {

// Fonts with Chinese characters in the forms of the mainland, the best first.
constexpr const char* kChineseFamilies[] = {
    "Noto Sans CJK SC",  "Source Han Sans SC",  "Source Han Sans CN", "WenQuanYi Micro Hei",
    "WenQuanYi Zen Hei", "Droid Sans Fallback", "AR PL UMing CN",     "AR PL UKai CN",
};

// Names of Chinese fonts of other desktops, besides those that are written in Chinese.
constexpr const char* kForeignChineseNames[] = {"SimSun",       "NSimSun",  "SimHei",         "KaiTi",
                                                "KaiTi_GB2312", "FangSong", "FangSong_GB2312"};

bool IsChineseName(const QString& family) {
    const auto isSame = [&](const char* name) {
        return family.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    };
    return std::ranges::any_of(kForeignChineseNames, isSame) ||
           std::ranges::any_of(family, [](QChar character) { return character.unicode() > 0x7F; });
}

QStringList InstalledChineseFamilies() {
    QStringList installed;
    for (const char* family : kChineseFamilies)
        if (QFontDatabase::hasFamily(QLatin1String(family)))
            installed += QLatin1String(family);
    return installed;
}

// A face that is not installed: the desktop knows a substitute with the same widths for a Latin one
// ("Arial"), but answers any font at all for a Chinese one.
QStringList FindFamilies(const QString& face) {
    QStringList families;
    if (QFontDatabase::hasFamily(face))
        families = QStringList{face};
    else if (!face.isEmpty() && !IsChineseName(face))
        families = QStringList{QFontInfo(QFont(face)).family()};
    return families + InstalledChineseFamilies();
}

// What was found before: the desktop takes milliseconds to look for a face.
QHash<QString, QStringList>& FoundFamilies() {
    static auto* found = new QHash<QString, QStringList>;
    return *found;
}

// An empty face stands for the application's own.
QStringList FamiliesFor(const QString& face) {
    auto found = FoundFamilies().constFind(face);
    if (found == FoundFamilies().constEnd())
        found = FoundFamilies().insert(face, FindFamilies(face));
    return face.isEmpty() ? QStringList{QFontInfo(QApplication::font()).family()} + *found : *found;
}

std::string_view FaceName(const LOGFONT& description) {
    const auto& face = description.lfFaceName;
    return {face.begin(), std::ranges::find(face, '\0')};
}

// The largest size whose lines are no higher than `height`, from an estimate just above it.
int PixelSizeForHeight(QFont font, int height) {
    font.setPixelSize(height);
    int size = height * height / std::max(QFontMetrics(font).height(), 1) + 1;
    for (font.setPixelSize(size); size > 1 && QFontMetrics(font).height() > height; font.setPixelSize(size))
        --size;
    return size;
}

void SetSize(QFont& font, const LOGFONT& description) {
    constexpr int kLargest = 4096;  // beyond this a size is a mistake, and would exhaust the memory
    const int height = std::clamp(description.lfHeight, -kLargest, kLargest);
    if (height < 0)
        font.setPixelSize(-height);
    else if (height > 0)
        font.setPixelSize(PixelSizeForHeight(font, height));
    else
        font.setPixelSize(QFontInfo(QApplication::font()).pixelSize());
}

void SetWidth(QFont& font, int averageWidth) {
    constexpr int kWidest = 4000;  // percent, the most that Qt takes
    const int natural = QFontMetrics(font).averageCharWidth();
    if (natural > 0)
        font.setStretch(static_cast<int>(std::clamp<LONGLONG>(100LL * averageWidth / natural, 1, kWidest)));
}

QFont MakeQFont(const LOGFONT& description) {
    QFont font;
    font.setFamilies(FamiliesFor(ToQt(FaceName(description))));
    if (description.lfWeight > 0)
        font.setWeight(static_cast<QFont::Weight>(std::min(description.lfWeight, LONG{1000})));
    font.setItalic(description.lfItalic != 0);
    font.setUnderline(description.lfUnderline != 0);
    font.setStrikeOut(description.lfStrikeOut != 0);
    // Without kerning and ligatures a text is as wide as its characters together, measured and painted, and
    // is laid out in a third of the time. Scripts that need shaping get it all the same.
    font.setKerning(false);
    font.setStyleStrategy(QFont::PreferNoShaping);
    SetSize(font, description);
    if (description.lfWidth > 0)
        SetWidth(font, description.lfWidth);
    return font;
}

TEXTMETRIC MetricOf(const QFont& font) {
    const QFontMetrics metrics(font);
    TEXTMETRIC metric;
    metric.tmAscent = metrics.ascent();
    metric.tmDescent = metrics.descent();
    metric.tmHeight = metric.tmAscent + metric.tmDescent;
    metric.tmInternalLeading = std::max(metric.tmHeight - font.pixelSize(), 0);
    metric.tmExternalLeading = std::max(metrics.leading(), 0);
    metric.tmAveCharWidth = metrics.averageCharWidth();
    return metric;
}

}  // namespace

void ForgetFamilies() {
    FoundFamilies().clear();
}

QtFont::QtFont(const LOGFONT& description)
    : m_font(MakeQFont(description)), m_metrics(m_font), m_textMetric(MetricOf(m_font)) {
    for (std::size_t i = 0; i < m_widths.size(); ++i)
        m_widths[i] = m_metrics.horizontalAdvance(QChar(static_cast<char16_t>(' ' + i)));
}

int QtFont::Width(std::string_view text) const {
    qreal width = 0;
    for (const char character : text) {
        const std::size_t index = static_cast<unsigned char>(character) - std::size_t{' '};
        if (index >= m_widths.size())
            return static_cast<int>(std::ceil(m_metrics.horizontalAdvance(ToQt(text))));
        width += m_widths[index];
    }
    return static_cast<int>(std::ceil(width));
}

QFont FontOf(const CFont& font) {
    const auto* native = static_cast<const QtFont*>(font.GetNative());
    return native != nullptr ? native->Get() : QApplication::font();
}

LOGFONT DescriptionOf(const QFont& font) {
    LOGFONT description;
    description.lfHeight = -QFontInfo(font).pixelSize();
    description.lfWeight = font.weight();
    description.lfItalic = font.italic();
    description.lfUnderline = font.underline();
    description.lfStrikeOut = font.strikeOut();
    const CString family = FromQt(font.family());
    const auto face = base::CutAtCharacter(family.View(), description.lfFaceName.size() - 1);
    std::ranges::copy(face, description.lfFaceName.begin());
    return description;
}

LOGFONT MessageBoxFont() {
    return DescriptionOf(QApplication::font("QMessageBox"));
}

}  // namespace kortavin::qt
