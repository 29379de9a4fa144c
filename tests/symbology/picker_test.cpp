#include <algorithm>
#include <climits>

#include "kortavin/base/texts.h"
#include "kortavin/symbology/selareastyle.h"
#include "kortavin/symbology/selectcolor.h"
#include "kortavin/symbology/sellinestyle.h"
#include "kortavin/symbology/selsymstyle.h"
#include "kortavin/symbology/seltextsymbol.h"
#include "tests/support/memory/controls.h"
#include "tests/support/memory/input.h"

using kortavin::base::TextId;

namespace kortavin::testing {
namespace {

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kRed = RGB(255, 0, 0);
constexpr COLORREF kBlue = RGB(0, 0, 255);
constexpr int kSizes[] = {20, 50, 100, 150, 200};

// A visible window for pickers to stand in, which notes the notifications that it gets.
class Host : public CWnd {
  public:
    Host() {
        window::RegisterWindowClass("PickerHost");
        Create("PickerHost", "", WS_VISIBLE, {0, 0, 400, 300}, nullptr, 0);
    }
    std::vector<int> m_codes;

  protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        m_codes.push_back(HIWORD(wParam));
        return CWnd::OnCommand(wParam, lParam);
    }
};

// Counts the presses that reach the default handling.
class ObservedSwatch : public CSelectColor {
  public:
    int m_defaultPresses = 0;

  protected:
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        m_defaultPresses += message == WM_LBUTTONDOWN ? 1 : 0;
        return CSelectColor::DefWindowProc(message, wParam, lParam);
    }
};

int ChoiceOf(const CSelSymStyle& picker) {
    return static_cast<int>(std::ranges::find(kSizes, picker.GetSize()) - kSizes);
}
int ChoiceOf(const auto& picker) {
    return picker.GetStyle();
}

class Pickers : public ::testing::Test {
  protected:
    void Show(CComboBox& combo) {
        const DWORD style = WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;
        ASSERT_TRUE(combo.Create(style, {10, 10, 210, 200}, &m_host, 1));
    }
    void Show(CSelectColor& swatch) {
        ASSERT_TRUE(swatch.Create("", WS_CHILD | WS_VISIBLE | SS_NOTIFY, {10, 10, 40, 30}, &m_host));
    }

    // The selection changes to none; the host hears of that as little as of a choice.
    void SelectNothing(CComboBox& picker) {
        picker.SetCurSel(CB_ERR);
        window::ReportNotification(*window::RecordOf(&picker), CBN_SELCHANGE);
        EXPECT_THAT(m_host.m_codes, ::testing::Not(::testing::Contains(CBN_SELCHANGE)));
    }

    // The items are these texts; screen readers are told the named ones, which follow each other.
    static void ExpectItems(CComboBox& picker, const std::vector<CString>& texts, TextId firstName) {
        const auto& native = dynamic_cast<const MemoryCombo&>(NativeOf(picker));
        ASSERT_EQ(picker.GetCount(), static_cast<int>(texts.size()));
        for (int i = 0; i < picker.GetCount(); ++i) {
            EXPECT_EQ(native.ItemText(i), texts[static_cast<size_t>(i)]) << i;
            const auto name = static_cast<TextId>(static_cast<int>(firstName) + i);
            EXPECT_EQ(native.ItemAccessibleName(i), base::Text(name)) << i;
        }
    }

    template <class Picker>
    void ExpectToKeepTheStyle(int count, TextId firstName) {
        Picker drawn;
        Show(drawn);
        EXPECT_EQ(drawn.GetCount(), 0);
        Loop();
        PickItem(drawn, count - 1);
        EXPECT_EQ(ChoiceOf(drawn), count - 1);
        SelectNothing(drawn);
        EXPECT_EQ(ChoiceOf(drawn), 0);

        Picker set;
        EXPECT_EQ(ChoiceOf(set), 0);
        Show(set);
        for (const int style : {0, 3, 4, count - 1, 5, count, -1, INT_MAX, INT_MIN}) {
            set.SetStyle(1);
            set.SetStyle(style);
            const int expected = style >= 0 && style < count ? style : 0;
            EXPECT_EQ(ChoiceOf(set), expected) << style;
            EXPECT_EQ(set.GetCurSel(), expected) << style;
        }
        for (Picker* const picker : {&drawn, &set})
            ExpectItems(*picker, std::vector<CString>(static_cast<size_t>(count), " "), firstName);
    }

    template <class Picker>
    void ExpectSetterToRepaintTheHost(COLORREF initial, void (Picker::*set)(COLORREF),
                                      COLORREF (Picker::*get)() const) {
        Picker picker;
        EXPECT_EQ((picker.*get)(), initial);
        (picker.*set)(kRed);
        EXPECT_EQ((picker.*get)(), kRed) << "stored without a window";
        Show(picker);
        Loop();
        const int paints = NativeOf(m_host).PaintCount();
        (picker.*set)(kBlue);
        EXPECT_EQ((picker.*get)(), kBlue);
        EXPECT_EQ(NativeOf(m_host).PaintCount(), paints + 1);
    }

    void ExpectColorRequests(const std::vector<COLORREF>& initials) {
        std::vector<COLORREF> asked;
        for (const window::ColorRequest& request : m_desktop->ColorRequests()) {
            asked.push_back(request.initial);
            EXPECT_TRUE(request.preselect && request.fullOpen && request.parent == nullptr);
        }
        EXPECT_EQ(asked, initials);
    }

    MemoryDesktop m_desktop;
    Host m_host;
};

TEST_F(Pickers, KeepTheChosenStyleOfAListThatFillsItself) {
    ExpectToKeepTheStyle<CSelLineStyle>(5, TextId::LineSolid);
    ExpectToKeepTheStyle<CSelAreaStyle>(7, TextId::AreaHorizontal);
    ExpectToKeepTheStyle<CSelSymStyle>(5, TextId::SymbolTiny);
}

TEST_F(Pickers, SymbolSizeIsRaisedToTheNextAndTheItemsFitTheLargest) {
    CSelSymStyle picker;
    Show(picker);
    for (const auto& [size, index] : std::vector<std::pair<int, int>>{{INT_MIN, 0},
                                                                      {0, 0},
                                                                      {20, 0},
                                                                      {21, 1},
                                                                      {50, 1},
                                                                      {51, 2},
                                                                      {100, 2},
                                                                      {150, 3},
                                                                      {151, 4},
                                                                      {1000, 4}}) {
        picker.SetSize(size);
        EXPECT_EQ(picker.GetSize(), kSizes[index]) << size;
        EXPECT_EQ(picker.GetCurSel(), index) << size;
    }
    EXPECT_EQ(picker.GetItemHeight(0), 20);
    picker.SetItemHeight(-1, 30);
    MEASUREITEMSTRUCT request;
    picker.MeasureItem(&request);
    EXPECT_EQ(picker.GetItemHeight(-1), 24);
    EXPECT_EQ(request.itemWidth, 400U);
}

TEST_F(Pickers, TextSymbolIsOneOfTheTableAndNothingElse) {
    std::vector<CString> symbols;
    for (const char* symbol : {"●", "☆", "★", "○", "◎", "◇", "◆", "□", "■", "△", "▲", "⊙", "＋", "×"})
        symbols.push_back(CString::FromUtf8(symbol).value());
    CSelTextSymbol drawn;
    Show(drawn);
    EXPECT_EQ(drawn.GetCount(), 0);
    Loop();
    PickItem(drawn, 12);
    SelectNothing(drawn);
    EXPECT_EQ(drawn.GetSymbol(), "\xA3\xAB");

    CSelTextSymbol set;
    Show(set);
    set.SetSymbol("A");
    EXPECT_EQ(set.GetSymbol(), symbols[0]);
    EXPECT_EQ(set.GetCurSel(), CB_ERR);
    for (size_t i = 0; i < symbols.size(); ++i) {
        set.SetSymbol(symbols[i]);
        for (const CString& other : {CString(), CString("+"), symbols[i].Left(1), symbols[i] + " "})
            set.SetSymbol(other);
        EXPECT_EQ(set.GetSymbol(), symbols[i]);
        EXPECT_EQ(set.GetCurSel(), static_cast<int>(i));
    }
    for (CSelTextSymbol* const picker : {&drawn, &set})
        ExpectItems(*picker, symbols, TextId::TextBlackCircle);
}

TEST_F(Pickers, ColorSettersRepaintTheParentAtOnce) {
    ExpectSetterToRepaintTheHost(kBlack, &CSelectColor::SetColor, &CSelectColor::GetColor);
    ExpectSetterToRepaintTheHost(kBlack, &CSelAreaStyle::SetColor, &CSelAreaStyle::GetColor);
    ExpectSetterToRepaintTheHost(kWhite, &CSelAreaStyle::SetBGColor, &CSelAreaStyle::GetBGColor);
    ExpectSetterToRepaintTheHost(kBlack, &CSelAreaStyle::SetOutLineColor, &CSelAreaStyle::GetOutLineColor);
    ExpectSetterToRepaintTheHost(kBlack, &CSelSymStyle::SetColor, &CSelSymStyle::GetColor);
    ExpectSetterToRepaintTheHost(kWhite, &CSelSymStyle::SetBGColor, &CSelSymStyle::GetBGColor);
}

TEST_F(Pickers, PressOnColorSwatchOpensTheChooserAndGoesOn) {
    ObservedSwatch swatch;
    Show(swatch);
    swatch.SetColor(kRed);
    EXPECT_EQ(SurfaceOf(swatch).CountOf(kRed), 30 * 20);
    m_desktop->NextColor(kBlue);
    Press(swatch, {29, 19});
    EXPECT_EQ(SurfaceOf(swatch).CountOf(kBlue), 30 * 20) << SurfaceOf(swatch).Dump();

    const int paints = NativeOf(m_host).PaintCount();
    m_desktop->NextColor(std::nullopt);
    Press(swatch, {0, 0});
    m_desktop->LetNextColorChooserFail();
    EXPECT_THROW(swatch.SendMessage(WM_LBUTTONDOWN), CResourceException);
    EXPECT_EQ(swatch.GetColor(), kBlue);
    EXPECT_EQ(NativeOf(m_host).PaintCount(), paints);
    EXPECT_EQ(swatch.m_defaultPresses, 2);
    m_desktop->NextColor(kBlue);
    Press(swatch, {0, 0});
    EXPECT_EQ(NativeOf(m_host).PaintCount(), paints + 1) << "confirmed unchanged";
    ExpectColorRequests({kRed, kBlue, kBlue});
}

// The swatches of the selection field lie at (2, 4) and (17, 4), each 10 by 16 pixels.
TEST_F(Pickers, PressOnSymbolSwatchAsksForItsColorStartingFromTheSymbols) {
    CSelSymStyle picker;
    picker.SetColor(kRed);
    Show(picker);
    Loop();
    const int paints = NativeOf(m_host).PaintCount();
    m_desktop->NextColor(kBlue);
    Press(picker, {26, 19});
    EXPECT_EQ(SurfaceOf(picker).At(26, 19), kBlue) << SurfaceOf(picker).Dump();
    EXPECT_EQ(picker.GetColor(), kRed);
    m_desktop->NextColor(kWhite);
    Press(picker, {2, 4});
    EXPECT_EQ(SurfaceOf(picker).At(2, 4), kWhite) << SurfaceOf(picker).Dump();

    const int ownPaints = NativeOf(picker).PaintCount();
    for (const CPoint point : {CPoint(11, 19), CPoint(17, 4)}) {
        m_desktop->NextColor(std::nullopt);
        Press(picker, point);
        m_desktop->LetNextColorChooserFail();
        EXPECT_THROW(picker.SendMessage(WM_LBUTTONDOWN, 0, MakePointParam(point)), CResourceException);
    }
    EXPECT_EQ(picker.GetColor(), kWhite);
    EXPECT_EQ(picker.GetBGColor(), kBlue);
    EXPECT_EQ(NativeOf(picker).PaintCount(), ownPaints);
    EXPECT_EQ(NativeOf(m_host).PaintCount(), paints) << "only the control itself is painted";
    EXPECT_FALSE(picker.GetDroppedState());
    ExpectColorRequests({kRed, kRed, kWhite, kWhite});
}

TEST_F(Pickers, PressBesideSymbolSwatchesOpensAndClosesTheList) {
    CSelSymStyle picker;
    Show(picker);
    const auto expectToggle = [&](CPoint point) {
        const bool wasOpen = picker.GetDroppedState() != FALSE;
        Press(picker, point);
        EXPECT_NE(picker.GetDroppedState() != FALSE, wasOpen) << point.x << ", " << point.y;
    };
    for (const CPoint beforeTheFirstDrawing : {CPoint(0, 0), CPoint(5, 10)})
        expectToggle(beforeTheFirstDrawing);
    Loop();
    for (const CPoint point : {CPoint(1, 4), CPoint(2, 3), CPoint(12, 10), CPoint(16, 10), CPoint(27, 10),
                               CPoint(20, 20), CPoint(150, 10)})
        expectToggle(point);
    ExpectColorRequests({});
}

}  // namespace
}  // namespace kortavin::testing
