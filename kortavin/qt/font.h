#pragma once

#include <QFont>
#include <QFontMetrics>
#include <array>

#include "kortavin/window/toolkit.h"

namespace kortavin::qt {

// A font of the library. Latin letters come from the face that was asked for or from what the desktop puts in
// its place, Chinese characters from a Chinese font that is installed.
class QtFont : public window::NativeFont {
  public:
    explicit QtFont(const LOGFONT& description);

    TEXTMETRIC Metrics() const override { return m_textMetric; }
    int Width(std::string_view text) const override;

    const QFont& Get() const { return m_font; }

  private:
    QFont m_font;
    QFontMetricsF m_metrics;
    TEXTMETRIC m_textMetric;
    std::array<qreal, 95> m_widths{};  // of the printable ASCII characters, which make up most texts
};

// Has faces looked for anew: fonts were added or removed.
void ForgetFamilies();

// What the toolkit made for a CFont; Qt's default for one that was not created.
QFont FontOf(const CFont& font);

// The other way round: what MakeFont is given to come to this font.
LOGFONT DescriptionOf(const QFont& font);

// The font in which Qt writes its message boxes.
LOGFONT MessageBoxFont();

}  // namespace kortavin::qt
