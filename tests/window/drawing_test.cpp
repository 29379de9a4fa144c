#include <gtest/gtest.h>

#include "kortavin/window/dc.h"
#include "kortavin/window/metrics.h"
#include "tests/support/memory/toolkit.h"

namespace kortavin::testing {
namespace {

constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kGrey = RGB(128, 128, 128);  // of the surface
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);

// Draws on a grey surface.
class Drawing : public ::testing::Test {
  protected:
    std::string Picture(const CRect& rect) const {
        return m_surface.Picture(rect,
                                 {{kGrey, '.'}, {kBlack, '#'}, {kWhite, '_'}, {kRed, 'r'}, {kBlue, 'b'}});
    }

    MemoryDesktop m_desktop;
    PixelSurface m_surface{64, 32, kGrey};
    CDC m_dc{std::make_unique<SurfacePainter>(m_surface)};
};

TEST_F(Drawing, ShapesAreFilledToTheirEdgesWithTheOutlineInside) {
    m_dc.Rectangle({0, 0, 5, 4});
    CBrush red(kRed);
    m_dc.SelectObject(&red);
    m_dc.Ellipse({23, 0, 30, 5});
    m_dc.SelectStockObject(NULL_PEN);
    m_dc.Rectangle({6, 0, 9, 4});
    m_dc.Ellipse({31, 0, 33, 5});
    m_dc.SelectStockObject(NULL_BRUSH);
    CPen wide(PS_DOT, 2, kBlue);
    m_dc.SelectObject(&wide);
    m_dc.Rectangle({10, 0, 16, 5});
    m_dc.Rectangle({17, 0, 20, 3});  // no inside is left
    m_dc.SelectStockObject(BLACK_PEN);
    m_dc.Rectangle({17, 4, 18, 5});
    m_dc.Rectangle({19, 4, 22, 5});
    EXPECT_EQ(Picture({0, 0, 33, 5}), R"(
#####.rrr.bbbbbb.bbb....#####..rr
#___#.rrr.bbbbbb.bbb...#rrrrr#.rr
#___#.rrr.bb..bb.bbb...#rrrrr#.rr
#####.rrr.bbbbbb.......#rrrrr#.rr
..........bbbbbb.#.###..#####..rr
)");
}

TEST_F(Drawing, LinesOmitTheirLastPixelAndTheNullPenDrawsNone) {
    m_dc.MoveTo(1, 0);
    m_dc.LineTo(5, 0);
    m_dc.LineTo(5, 3);
    m_dc.LineTo(1, 3);
    EXPECT_EQ(m_dc.MoveTo(0, 0), CPoint(1, 3));
    m_dc.LineTo(3, 3);
    const CPoint points[] = {{8, 3}, {8, 0}, {11, 3}};
    m_dc.Polyline(points);
    m_dc.SelectStockObject(NULL_PEN);
    m_dc.LineTo(12, 3);
    EXPECT_EQ(m_dc.MoveTo(0, 0), CPoint(12, 3));
    EXPECT_EQ(Picture({0, 0, 12, 4}), R"(
######..#...
.#...#..##..
..#..#..#.#.
..####..#...
)");
}

TEST_F(Drawing, DashGapsAreBackgroundInOpaqueModeAndRunRoundCorners) {
    m_dc.SetBkColor(kRed);
    for (const int style : {PS_DASH, PS_DOT, PS_DASHDOT, PS_DASHDOTDOT}) {
        CPen pen(style, 0, kBlack);
        m_dc.SelectObject(&pen);
        m_dc.MoveTo(0, style);
        m_dc.LineTo(36, style);
    }
    CPen dots(PS_DOT, 1, kBlack);
    m_dc.SelectObject(&dots);
    m_dc.SetBkMode(TRANSPARENT);
    const CPoint corner[] = {{0, 5}, {7, 5}, {7, 9}};
    m_dc.Polyline(corner);
    m_dc.SelectStockObject(BLACK_PEN);
    EXPECT_EQ(Picture({0, 1, 36, 7}), R"(
##################rrrrrr############
###rrr###rrr###rrr###rrr###rrr###rrr
#########rrrrrr###rrrrrr#########rrr
#########rrr###rrr###rrr#########rrr
###...##............................
.......#............................
)");
}

TEST_F(Drawing, HatchesRepeatEveryEightPixelsFromTheOrigin) {
    const CBrush falling(HS_FDIAGONAL, kBlack);
    const CBrush crossed(HS_CROSS, kBlack);
    m_dc.SetBkColor(kRed);
    m_dc.FillRect({4, 4, 12, 8}, &falling);
    m_dc.SetBkMode(TRANSPARENT);
    m_dc.FillRect({16, 8, 24, 15}, &crossed);
    const CBrush none(6, kBlack);
    m_dc.FillRect({0, 0, 64, 32}, &none);
    EXPECT_EQ(Picture({4, 4, 12, 9}), R"(
#rrrrrrr
r#rrrrrr
rr#rrrrr
rrr#rrrr
........
)");
    EXPECT_EQ(m_surface.CountOf(kBlack, {16, 8, 24, 15}), 14);  // a row of 8 and a column of 7 meet
    EXPECT_EQ(m_surface.CountOf(kGrey, {16, 8, 24, 15}), 42);
}

TEST_F(Drawing, EdgesTakeLightFromTheUpperLeft) {
    m_dc.DrawEdge({0, 0, 4, 4}, BDR_SUNKENINNER, BF_RECT);
    const COLORREF dark = GetSysColor(COLOR_3DDKSHADOW);
    const COLORREF light = m_surface.At(3, 3);
    EXPECT_GT(GetRValue(light), GetRValue(GetSysColor(COLOR_BTNFACE)));
    EXPECT_EQ(m_surface.Picture({0, 0, 4, 4}, {{dark, 'd'}, {light, 'l'}, {kGrey, '.'}}), R"(
dddl
d..l
d..l
llll
)");
    m_dc.DrawEdge({8, 0, 16, 8}, BDR_RAISEDOUTER | BDR_RAISEDINNER, BF_LEFT | BF_BOTTOM);
    EXPECT_EQ(m_surface.At(8, 0), light);
    EXPECT_EQ(m_surface.At(9, 0), GetSysColor(COLOR_3DHIGHLIGHT));
    EXPECT_EQ(m_surface.At(15, 6), GetSysColor(COLOR_BTNSHADOW));
    EXPECT_EQ(m_surface.CountOf(kGrey, {10, 0, 16, 6}), 36);
}

TEST_F(Drawing, SavedStatesAreRestoredByLevel) {
    CPen red(PS_SOLID, 1, kRed);
    EXPECT_EQ(m_dc.SaveDC(), 1);
    m_dc.SelectObject(&red);
    m_dc.FillSolidRect({0, 0, 2, 2}, kBlue);
    m_dc.IntersectClipRect({0, 0, 10, 10});
    EXPECT_EQ(m_dc.SaveDC(), 2);
    m_dc.IntersectClipRect({5, 5, 20, 20});
    m_dc.FillSolidRect({0, 0, 64, 32}, kWhite);
    EXPECT_EQ(m_surface.CountOf(kWhite), 25);
    EXPECT_FALSE(m_dc.RestoreDC(3) || m_dc.RestoreDC(0) || m_dc.RestoreDC(-2));
    EXPECT_TRUE(m_dc.RestoreDC(-1));
    CRect clip;
    EXPECT_TRUE(m_dc.GetClipBox(&clip) && clip == CRect(0, 0, 10, 10));
    EXPECT_EQ(m_dc.GetBkColor(), kBlue);
    EXPECT_EQ(m_dc.GetCurrentPen(), &red);
    EXPECT_TRUE(m_dc.RestoreDC(1) && !m_dc.RestoreDC(-1));
    m_dc.FillSolidRect({20, 20, 22, 22}, kRed);  // the painter has its clip back too
    EXPECT_EQ(m_surface.CountOf(kRed), 4);
    m_dc.IntersectClipRect({0, 0, 0, 9});
    EXPECT_FALSE(m_dc.GetClipBox(&clip));
}

TEST_F(Drawing, TextPaintsItsCellInOpaqueModeAndIsClippedToItsRectangle) {
    m_dc.SetTextColor(kRed);
    m_dc.TextOut(0, 0, "a b");
    EXPECT_EQ(m_surface.CountOf(kRed, {0, 0, 24, 16}), 2 * 6 * 9);
    EXPECT_EQ(m_surface.CountOf(kWhite), 24 * 16 - 2 * 6 * 9);
    m_dc.SetBkMode(TRANSPARENT);
    CRect cell(30, 0, 36, 10);
    EXPECT_EQ(m_dc.DrawText("ab", &cell, DT_SINGLELINE), 16);
    EXPECT_EQ(m_surface.CountOf(kRed, {24, 0, 64, 32}), 5 * 7);
    EXPECT_EQ(m_surface.CountOf(kGrey, cell), 60 - 5 * 7);
    m_dc.DrawText("ab", &cell, DT_SINGLELINE | DT_NOCLIP);  // and the former clip was put back
    EXPECT_EQ(m_surface.CountOf(kRed, {24, 0, 64, 32}), 2 * 6 * 9);
    m_dc.DrawText("abc", &cell, DT_SINGLELINE | DT_CALCRECT);
    EXPECT_EQ(cell, CRect(30, 0, 54, 16));
}

TEST_F(Drawing, EqualDescriptionsShareAFontForAsLongAsTheToolkitStays) {
    LOGFONT bold;
    bold.lfWeight = FW_SEMIBOLD;
    const CFont first(bold);
    const CFont second(bold);
    EXPECT_EQ(first.GetNative(), second.GetNative());
    EXPECT_NE(first.GetNative(), CFont(LOGFONT()).GetNative());
    auto mine = window::SetToolkit(std::make_unique<MemoryToolkit>());
    EXPECT_NE(CFont(bold).GetNative(), first.GetNative());
    window::SetToolkit(std::move(mine));

    CFont none;
    EXPECT_EQ(m_dc.SelectObject(&none), nullptr);
    EXPECT_EQ(m_dc.GetTextExtent("ab"), CSize(16, 16));
}

}  // namespace
}  // namespace kortavin::testing
