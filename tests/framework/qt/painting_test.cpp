#include <QFontInfo>
#include <QImage>

#include "framework/window/metrics.h"
#include "tests/framework/qt/qttest.h"
#include "tests/support/memory/surface.h"

namespace kortavin::testing {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 128, 0), kBlue = RGB(0, 0, 255);
constexpr CSize kSize{120, 100};

// All that is drawn in whole pixels: fills, hatches, straight lines, rectangles, edges, under a clip.
void Draw(CDC& dc) {
    dc.FillSolidRect({0, 0, kSize.cx, kSize.cy}, RGB(255, 255, 200));
    for (int hatch = HS_HORIZONTAL; hatch <= HS_DIAGCROSS; ++hatch) {
        const CBrush brush(hatch, kRed);
        dc.SetBkMode(hatch % 2 == 0 ? OPAQUE : TRANSPARENT);
        dc.SetBkColor(kGreen);
        dc.FillRect({3 + hatch * 19, 3, 20 + hatch * 19, 22}, &brush);
    }
    for (int style = PS_SOLID; style <= PS_NULL; ++style) {
        CPen pen(style, 1, kBlue);
        const int saved = dc.SaveDC();
        dc.SelectObject(&pen);
        dc.SetBkMode(style % 2 == 0 ? TRANSPARENT : OPAQUE);
        dc.IntersectClipRect({5, 20, 70, 90});
        dc.MoveTo(2, 30 + 4 * style);
        dc.LineTo(80, 30 + 4 * style);
        dc.LineTo(80, 28);
        dc.Rectangle({10 + 9 * style, 56, 18 + 9 * style, 66});
        dc.RestoreDC(saved);
    }
    CPen wide(PS_DASH, 3, kGreen);
    dc.SelectObject(&wide);
    dc.Rectangle({80, 30, 110, 50});
    const CPoint angle[] = {{82, 55}, {105, 55}, {105, 70}};
    dc.Polyline(angle);
    dc.DrawEdge({5, 70, 40, 90}, BDR_RAISEDOUTER | BDR_RAISEDINNER, BF_RECT);
    dc.DrawEdge({45, 70, 75, 90}, BDR_SUNKENOUTER | BDR_SUNKENINNER, BF_LEFT | BF_BOTTOM);
    dc.InvertRect({100, 60, 115, 95});
    dc.SelectStockObject(BLACK_PEN);
}

// At one pixel for each, or at several.
QImage PictureOf(QWidget& widget, int scale) {
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::magenta);
    widget.render(&image);
    return image;
}

}  // namespace

class QtPainting : public QtTest {
  protected:
    static TEXTMETRIC MetricsOf(LONG height, const char* face = "Arial") {
        return MakeFont(height, face).GetNative()->Metrics();
    }
    static CFont MakeFont(LONG height, std::string_view face = "Arial") {
        LOGFONT description;
        description.lfHeight = height;
        face.copy(description.lfFaceName.data(), face.size());
        return CFont(description);
    }

    EventWindow m_window;
};

TEST_F(QtPainting, EveryPixelIsThatOfTheMemorySurfaceAtAnyScale) {
    m_window.script = [&](UINT message, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        CPaintDC dc(&m_window);
        Draw(dc);
        return 0;
    };
    EventWindow parent;
    parent.Open({0, 0, 300, 200});
    m_window.Open({20, 10, 150, 120}, &parent, 2, WS_BORDER);
    PixelSurface surface(kSize.cx, kSize.cy);
    CDC expected(std::make_unique<SurfacePainter>(surface));
    Draw(expected);

    CPoint client;
    m_window.ClientToScreen(&client);
    const QPoint origin = WidgetOf(m_window).mapFromGlobal(QPoint(client.x, client.y));
    ASSERT_GT(origin.x(), 0) << "hatches are aligned to the client area, which does not begin at the border";
    for (const int scale : {1, 2, 3}) {
        const QImage image = PictureOf(WidgetOf(m_window), scale);
        for (int y = 0; y < kSize.cy * scale; ++y)
            for (int x = 0; x < kSize.cx * scale; ++x) {
                const QColor color = image.pixelColor(QPoint(x, y) + origin * scale);
                ASSERT_EQ(RGB(BYTE(color.red()), BYTE(color.green()), BYTE(color.blue())),
                          surface.At(x / scale, y / scale))
                    << x << ", " << y << " at scale " << scale;
            }
    }
}

TEST_F(QtPainting, OnlyAPaintCanDraw) {
    m_window.Open();
    EXPECT_THROW(CPaintDC dc(&m_window), CResourceException);
    CClientDC dc(&m_window);
    EXPECT_FALSE(dc.CanDraw());
    EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSX), WidgetOf(m_window).logicalDpiX());
    EXPECT_GT(dc.GetTextExtent("text").cx, 0);
    dc.FillSolidRect({0, 0, 10, 10}, kRed);
}

TEST_F(QtPainting, FontsAreAsWideAndHighAsAskedFor) {
    constexpr std::string_view kText = "The quick brown fox, 0123456789";
    QFont liberation("Liberation Sans");
    ASSERT_EQ(QFontInfo(liberation).family(), "Liberation Sans") << "package fonts-liberation is missing";
    liberation.setPixelSize(40);
    liberation.setKerning(false);
    const CFont arial = MakeFont(-40);
    EXPECT_NEAR(arial.GetNative()->Width(kText),
                QFontMetricsF(liberation).horizontalAdvance(QString::fromUtf8(kText.data())), 1);
    EXPECT_EQ(arial.GetNative()->Width("\xD6\xD0\xB9\xFA"), 80) << "two Chinese characters of 40 pixels";

    const TEXTMETRIC em = MetricsOf(-40), cell = MetricsOf(40);
    EXPECT_GT(em.tmHeight, 40);
    EXPECT_EQ(em.tmHeight - em.tmInternalLeading, 40);
    EXPECT_EQ(em.tmHeight, em.tmAscent + em.tmDescent);
    EXPECT_LE(cell.tmHeight, 40);
    EXPECT_GE(cell.tmHeight, 38);
    EXPECT_EQ(MetricsOf(0).tmHeight, MetricsOf(window::MessageBoxFont().lfHeight).tmHeight);
    const TEXTMETRIC chinese = MetricsOf(-40, "\xCB\xCE\xCC\xE5");  // not installed under this name
    EXPECT_EQ(chinese.tmHeight - chinese.tmInternalLeading, 40);
    for (const LONG height : {INT_MIN, -100000, 100000, INT_MAX})
        EXPECT_GT(MetricsOf(height).tmHeight, 0);
}

}  // namespace kortavin::testing
