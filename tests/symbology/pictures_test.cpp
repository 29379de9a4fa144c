#include <algorithm>
#include <climits>

#include "kortavin/symbology/selareastyle.h"
#include "kortavin/symbology/sellinestyle.h"
#include "kortavin/symbology/selsymstyle.h"
#include "kortavin/symbology/seltextsymbol.h"
#include "tests/support/memory/toolkit.h"

namespace kortavin::testing {
namespace {

constexpr COLORREF kGrey = RGB(128, 128, 128);  // what was there before
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr int kAll = 80 * 40;
constexpr CRect kRect{8, 8, 48, 32};
constexpr int kArea = kRect.Width() * kRect.Height();

struct Drawn {
    PixelSurface surface{80, 40, kGrey};
    DrawingLog log;

    std::string Picture(const CRect& rect) const {
        return surface.Picture(rect, {{kGrey, '.'}, {kBlack, '#'}, {kWhite, '_'}, {kRed, 'r'}, {kBlue, 'b'}});
    }
};

// One item as a picker without a window draws it; what was selected before is selected again.
Drawn Draw(CComboBox& picker, int item, const CRect& rect, UINT state = 0, CSize pixelsPerInch = {96, 96}) {
    Drawn drawn;
    auto painter = std::make_unique<SurfacePainter>(drawn.surface, &drawn.log);
    painter->SetPixelsPerInch(pixelsPerInch);
    CDC dc(std::move(painter));
    dc.SetBkColor(kRed);
    CPen pen(PS_DOT, 1, kGrey);
    dc.SelectObject(&pen);
    const CBrush* const brush = dc.GetCurrentBrush();
    DRAWITEMSTRUCT request;
    request.itemID = static_cast<UINT>(item);
    request.itemState = state | ODS_SELECTED | ODS_FOCUS;
    request.hDC = &dc;
    request.rcItem = rect;
    picker.DrawItem(&request);
    EXPECT_EQ(dc.GetCurrentPen(), &pen);
    EXPECT_EQ(dc.GetCurrentBrush(), brush);
    return drawn;
}

class PickerPictures : public ::testing::Test {
  protected:
    void SetUp() override {
        m_area.SetColor(kRed);
        m_area.SetBGColor(kBlue);
        m_symbol.SetColor(kRed);
        m_symbol.SetBGColor(kBlue);
    }
    MemoryDesktop m_desktop;  // for the font of the contexts
    CSelAreaStyle m_area;
    CSelSymStyle m_symbol;
};

// The dashes of a pen style with white gaps.
std::string DashedLine(int penStyle, size_t length) {
    const auto dashes = window::DashesOf(penStyle);
    std::string line(dashes.empty() ? length : 0, '#');
    for (size_t part = 0; line.size() < length; ++part)
        line.append(static_cast<size_t>(dashes[part % dashes.size()]), part % 2 == 0 ? '#' : '_');
    return line.substr(0, length);
}

TEST_F(PickerPictures, LineRunsThroughTheMiddleOnWhite) {
    CSelLineStyle picker;
    for (int item = -1; item <= 5; ++item) {
        const std::string line = DashedLine(item == 5 ? PS_SOLID : item, 52);
        for (const int bottom : {24, 23}) {
            const CRect rect(10, 8, 66, bottom);
            const Drawn drawn = Draw(picker, item, rect, ODS_COMBOBOXEDIT);
            EXPECT_EQ(drawn.Picture({9, 16, 67, 17}), "\n.__" + line + "__.\n") << item;
            EXPECT_EQ(drawn.surface.CountOf(kBlack), std::ranges::count(line, '#')) << item;
            EXPECT_EQ(drawn.surface.CountOf(kGrey, rect), 0) << item;
            EXPECT_EQ(drawn.surface.CountOf(kGrey), kAll - rect.Width() * rect.Height()) << item;
        }
    }
}

TEST_F(PickerPictures, AreaIsHatchedOverItsBackgroundColor) {
    std::vector<PixelSurface> hatches;
    for (int item = 0; item <= 5; ++item) {
        hatches.push_back(Draw(m_area, item, kRect, item % 2 == 0 ? ODS_COMBOBOXEDIT : 0).surface);
        EXPECT_EQ(hatches.back().CountOf(kRed, kRect) + hatches.back().CountOf(kBlue, kRect), kArea);
        EXPECT_EQ(hatches.back().CountOf(kGrey), kAll - kArea);
    }
    for (int y = kRect.top; y < kRect.bottom - 1; ++y) {
        for (int x = kRect.left + 1; x < kRect.right - 1; ++x) {
            const auto is = [&](size_t item, int dx, int dy) {
                return hatches[item].At(x + dx, y + dy) == kRed;
            };
            ASSERT_EQ(is(0, 0, 0), is(0, 1, 0)) << "horizontal";
            ASSERT_EQ(is(1, 0, 0), is(1, 0, 1)) << "vertical";
            ASSERT_EQ(is(2, 0, 0), is(2, 1, 1)) << "falling";
            ASSERT_EQ(is(3, 0, 0), is(3, -1, 1)) << "rising";
            ASSERT_EQ(is(4, 0, 0), is(0, 0, 0) || is(1, 0, 0)) << "both straight ones";
            ASSERT_EQ(is(5, 0, 0), is(2, 0, 0) || is(3, 0, 0)) << "both diagonals";
        }
    }
    for (size_t item = 0; item < 4; ++item)
        for (const int corner : {0, 8, 16})
            EXPECT_EQ(hatches[item].CountOf(kRed, {{8 + corner, 8 + corner}, CSize(8, 8)}), 8) << item;
}

TEST_F(PickerPictures, AreaWithoutHatchShowsNoBackground) {
    const Drawn solid = Draw(m_area, 6, kRect);
    EXPECT_EQ(solid.surface.CountOf(kRed, kRect), kArea);
    EXPECT_EQ(solid.surface.CountOf(kGrey), kAll - kArea);
    for (const int item : {-1, 7, INT_MAX})
        EXPECT_EQ(Draw(m_area, item, kRect).surface.CountOf(kGrey), kAll) << item;
}

TEST_F(PickerPictures, CircleHasTheSizeAsItsRadius) {
    const CRect rect(1, 2, 42, 25);  // centre 21, 13
    const int radii[][2] = {{1, 1}, {2, 2}, {4, 5}, {6, 7}, {8, 9}};
    for (int item = -1; item <= 5; ++item) {
        const auto [at96, at120] = radii[item == -1 || item == 5 ? 1 : item];
        const auto upright = Draw(m_symbol, item, rect, 0, {96, 120}).log.back();
        EXPECT_EQ(upright.rect, CRect(21 - at96, 13 - at120, 21 + at96, 13 + at120)) << item;
        const auto lying = Draw(m_symbol, item, rect, ODS_COMBOBOXEDIT, {120, 96}).log.back();
        EXPECT_EQ(lying.rect, CRect(21 - at120, 13 - at96, 21 + at120, 13 + at96)) << item;
    }
}

TEST_F(PickerPictures, SizeIsFramedInTheListAndHasSwatchesInTheField) {
    EXPECT_EQ(Draw(m_symbol, 1, {1, 1, 14, 11}).Picture({2, 2, 13, 10}), R"(
...........
.bbbbbbbbb.
.b__bb___b.
.b_brrb__b.
.b_brrb__b.
.b__bb___b.
.bbbbbbbbb.
...........
)");
    EXPECT_EQ(Draw(m_symbol, 1, {1, 1, 45, 13}, ODS_COMBOBOXEDIT).Picture({1, 3, 30, 11}), R"(
.............................
.############...############.
.#rrrrrrrrrr#...#bbbbbbbbbb#.
.#rrrrrrrrrr#...#bbbbrrbbbb#.
.#rrrrrrrrrr#...#bbbbrrbbbb#.
.#rrrrrrrrrr#...#bbbbbbbbbb#.
.############...############.
.............................
)");
}

TEST_F(PickerPictures, CharacterStandsInItsCellOnly) {
    CSelTextSymbol picker;
    const Drawn drawn = Draw(picker, 2, kRect, ODS_COMBOBOXEDIT);
    const CRect cell({kRect.left + 10, kRect.top}, CSize(16, 16));
    EXPECT_EQ(drawn.log.back().text, "\xA1\xEF");
    EXPECT_EQ(drawn.log.back().rect, cell);
    EXPECT_EQ(drawn.surface.CountOf(kRed) + drawn.surface.CountOf(kBlack), 16 * 16)
        << "in the context's colours";
    EXPECT_EQ(drawn.surface.CountOf(kGrey, cell), 0);
    for (const int item : {-1, 14, INT_MAX})
        EXPECT_THAT(Draw(picker, item, kRect).log, ::testing::IsEmpty()) << item;
}

}  // namespace
}  // namespace kortavin::testing
