#include <QFontInfo>

#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 128, 0), kBlue = RGB(0, 0, 255);
constexpr CRect kArea{0, 0, 120, 100};

// What is drawn in whole pixels.
void Draw(CDC& dc) {
    dc.FillSolidRect(kArea, RGB(255, 255, 200));
    dc.SetBkColor(kGreen);
    for (int style = 0; style <= 5; ++style) {  // of hatches and pens
        const CBrush brush(style, kRed);
        CPen pen(style, 1, kBlue);
        const int saved = dc.SaveDC();
        dc.SetBkMode(style % 2 == 0 ? OPAQUE : TRANSPARENT);
        dc.FillRect({3 + style * 19, 3, 20 + style * 19, 22}, &brush);
        dc.SelectObject(&pen);
        dc.IntersectClipRect({5, 20, 70, 90});
        dc.MoveTo(2, 30 + 4 * style);
        dc.LineTo(80, 30 + 4 * style);
        dc.Rectangle({10 + 9 * style, 56, 18 + 9 * style, 66});
        dc.RestoreDC(saved);
    }
    CPen wide(PS_DASH, 3, kGreen);
    dc.SelectObject(&wide);
    dc.Rectangle({80, 30, 110, 50});
    dc.DrawEdge({5, 70, 40, 90}, BDR_RAISEDOUTER | BDR_RAISEDINNER, BF_RECT);
    dc.DrawEdge({45, 70, 75, 90}, BDR_SUNKENOUTER | BDR_SUNKENINNER, BF_LEFT | BF_BOTTOM);
    dc.InvertRect({100, 40, 115, 95});
    dc.SelectStockObject(BLACK_PEN);
}

CFont MakeFont(LONG height, std::string_view face) {
    LOGFONT description;
    description.lfHeight = height;
    face.copy(description.lfFaceName.data(), face.size());
    return CFont(description);
}

}  // namespace

class QtPainting : public QtTest {};

TEST_F(QtPainting, EveryPixelIsThatOfTheMemorySurfaceAtAnyScale) {
    EventWindow parent, bordered;
    bordered.script = [&](UINT message) -> std::optional<LRESULT> {
        if (message != WM_PAINT)
            return std::nullopt;
        CPaintDC dc(&bordered);
        return Draw(dc), 0;
    };
    parent.Open({0, 0, 300, 200});
    bordered.Open({20, 10, 150, 120}, &parent, 2, WS_BORDER);
    PixelSurface surface(kArea.right, kArea.bottom);
    CDC expected(std::make_unique<SurfacePainter>(surface));
    Draw(expected);
    CPoint client;
    bordered.ClientToScreen(&client);
    const QPoint origin = WidgetOf(bordered).mapFromGlobal(QPoint(client.x, client.y));
    ASSERT_GT(origin.x(), 0) << "hatches begin at the client area";
    for (const int scale : {1, 2, 3})
        EXPECT_EQ(PictureOf(WidgetOf(bordered), scale).copy(QRect(origin * scale, QSize(120, 100) * scale)),
                  PictureOf(surface).scaled(QSize(120, 100) * scale));

    EXPECT_THROW(CPaintDC dc(&parent), CResourceException);
    CClientDC measuring(&parent);
    EXPECT_FALSE(measuring.CanDraw());
    EXPECT_GT(measuring.GetTextExtent("text").cx, 0);
}

TEST_F(QtPainting, FontsAreAsWideAndHighAsAskedFor) {
    QFont liberation("Liberation Sans");
    ASSERT_EQ(QFontInfo(liberation).family(), "Liberation Sans") << "package fonts-liberation is missing";
    liberation.setPixelSize(40);
    liberation.setKerning(false);
    const char* const text = "The quick brown fox, 0123456789";
    const CFont arial = MakeFont(-40, "Arial");
    EXPECT_NEAR(arial.GetNative()->Width(text), QFontMetricsF(liberation).horizontalAdvance(text), 1);
    EXPECT_EQ(arial.GetNative()->Width("\xD6\xD0\xB9\xFA"), 80) << "two Chinese characters of 40 pixels";
    for (const char* face : {"Arial", "\xCB\xCE\xCC\xE5"}) {  // the latter is Chinese and not installed
        const TEXTMETRIC em = MakeFont(-40, face).GetNative()->Metrics();
        const TEXTMETRIC cell = MakeFont(40, face).GetNative()->Metrics();
        EXPECT_EQ(em.tmHeight - em.tmInternalLeading, 40);
        EXPECT_TRUE(cell.tmHeight <= 40 && cell.tmHeight >= 38) << cell.tmHeight;
    }
    for (const LONG height : {INT_MIN, 0, INT_MAX})
        EXPECT_GT(MakeFont(height, "Arial").GetNative()->Metrics().tmHeight, 0);
}

}  // namespace kortavin::testing
