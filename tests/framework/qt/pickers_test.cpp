#include <QAbstractItemView>
#include <QAccessible>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

#include "framework/window/dialog.h"
#include "resources/texts.h"
#include "symbology/selareastyle.h"
#include "symbology/selectcolor.h"
#include "symbology/sellinestyle.h"
#include "symbology/selsymstyle.h"
#include "symbology/seltextsymbol.h"
#include "tests/framework/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kWhite = RGB(255, 255, 255);

// Keeps the last request to draw.
template <class Picker>
struct Drawn : Picker {
    DRAWITEMSTRUCT request;

    void DrawItem(LPDRAWITEMSTRUCT wanted) override {
        request = *wanted;
        Picker::DrawItem(wanted);
    }
    // The same on a surface in memory.
    PixelSurface InMemory() {
        PixelSurface surface(request.rcItem.right, request.rcItem.bottom);
        CDC dc(std::make_unique<SurfacePainter>(surface));
        DRAWITEMSTRUCT copy = request;
        copy.hDC = &dc;
        Picker::DrawItem(&copy);
        return surface;
    }
};

// The part of the rectangle that is not white.
template <class ColorOf>
CRect InkIn(const CRect& rect, ColorOf colorOf) {
    CRect ink;
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            if (colorOf(x, y) != kWhite)
                ink = ink.IsRectEmpty() ? CRect(x, y, x + 1, y + 1)
                                        : CRect(std::min(ink.left, x), std::min(ink.top, y),
                                                std::max(ink.right, x + 1), std::max(ink.bottom, y + 1));
    return ink;
}
CRect InkIn(const CRect& rect, const QImage& image) {
    return InkIn(rect, [&](int x, int y) { return ColorAt(image, {x, y}); });
}

QRect RowOf(const QComboBox& combo, int row) {
    return combo.view()->visualRect(combo.model()->index(row, 0));
}

void Choose(QColorDialog& box, const QColor& color) {
    box.setCurrentColor(color);
    QTest::mouseClick(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* const popup = QApplication::activePopupWidget();
    QTest::keyClick(popup != nullptr ? popup->focusWidget() : QApplication::focusWidget(), key, modifiers);
}

// A form of a host, which hears of what its controls notify.
class QtPickers : public QtTest {
  protected:
    QtPickers() {
        m_form->resize(400, 300);
        EXPECT_TRUE(qt::AttachTo(m_parent, *m_form));
        m_parent.interest = {WM_COMMAND};
        Activate(*m_form);
    }

    template <class W = QComboBox>
    W& Place(CWnd& picker, const QRect& rect = {20, 20, 200, 30}) {
        auto* const widget = new W(m_form.get());
        widget->setGeometry(rect);
        widget->show();
        EXPECT_TRUE(qt::AttachTo(picker, *widget, 5));
        return *widget;
    }

    std::unique_ptr<QWidget> m_form = std::make_unique<QWidget>();
    TestWindow m_parent;
};

}  // namespace

TEST_F(QtPickers, ClosedBoxAndListShowThePixelsOfTheMemorySurface) {
    const auto expectSame = [](auto& picker, QComboBox& combo) {
        EXPECT_TRUE(InkIn((PictureOf(combo), picker.request.rcItem), PictureOf(combo)).IsRectEmpty() ||
                    picker.request.itemID != static_cast<UINT>(CB_ERR) || picker.GetCount() == 5)
            << "nothing is selected, and no area";
        for (int style = 0; picker.SetStyle(style), style < picker.GetCount(); ++style) {
            const QImage picture = PictureOf(combo, 1 + style % 2);
            EXPECT_EQ(picker.request.itemState & ODS_COMBOBOXEDIT, ODS_COMBOBOXEDIT);
            ExpectSame(picture, picker.InMemory(), picker.request.rcItem);
        }
        combo.showPopup();
        for (int style = 0; style < picker.GetCount(); ++style) {
            combo.view()->setCurrentIndex(combo.model()->index(style, 0));
            const QRect row = RowOf(combo, style);
            const QImage picture = PictureOf(*combo.view()->viewport());
            EXPECT_EQ(picture.pixelColor(row.topLeft()), QApplication::palette().highlight().color());
            picker.request.itemID = static_cast<UINT>(style);
            picker.request.rcItem = {row.left() + 2, row.top() + 2, row.right() - 1, row.bottom() - 1};
            ExpectSame(picture, picker.InMemory(), picker.request.rcItem);
        }
        combo.hidePopup();
    };
    Drawn<CSelLineStyle> line;
    Drawn<CSelAreaStyle> area;
    area.SetColor(kRed);
    area.SetBGColor(kBlue);
    expectSame(line, Place(line));
    expectSame(area, Place(area));
}

TEST_F(QtPickers, EachCharacterHasAPictureOfItsOwn) {
    Drawn<CSelTextSymbol> picker;
    QComboBox& combo = Place(picker);
    const QImage empty = PictureOf(combo);
    EXPECT_TRUE(InkIn(picker.request.rcItem, empty).IsRectEmpty()) << "nothing is selected";
    EXPECT_EQ(picker.GetCurSel(), CB_ERR);
    combo.setMaxVisibleItems(14);
    combo.showPopup();
    const QImage list = PictureOf(*combo.view()->viewport());
    std::vector<QImage> pictures;
    for (int i = 0; i < 14; ++i) {
        const QRect row = RowOf(combo, i).adjusted(2, 2, -2, -2);
        pictures.push_back(list.copy(row.x() + 10, row.y(), 30, row.height()));
        EXPECT_GT(InkIn({0, 0, 30, row.height()}, pictures.back()).Width(), 4) << i;
        EXPECT_EQ(std::ranges::count(pictures, pictures.back()), 1) << i;
    }
    combo.hidePopup();
    QImage missing(pictures.front().size(), list.format());  // how a character without a glyph looks
    missing.fill(Qt::white);
    QPainter painter(&missing);
    painter.setFont(combo.font());
    painter.drawText(QPoint(0, QFontMetrics(combo.font()).ascent()), QChar(0xE5E5));
    painter.end();
    EXPECT_EQ(std::ranges::count(pictures, missing), 0);
}

TEST_F(QtPickers, SizesSwatchChangesWhenTheChooserIsConfirmed) {
    Drawn<CSelSymStyle> picker;
    picker.SetColor(kRed);
    QComboBox& combo = Place(picker);
    picker.SetSize(151);
    EXPECT_EQ(combo.currentIndex(), 4);
    const auto expectSame = [&] {
        const QImage picture = PictureOf(combo);
        const PixelSurface surface = picker.InMemory();
        const CRect field = picker.request.rcItem,
                    swatches(field.left, field.top, field.left + 29, field.bottom);
        const CRect circle(swatches.right, field.top, field.right, field.bottom);
        EXPECT_EQ(field.Height(), 24);
        ExpectSame(picture, surface, swatches);
        EXPECT_EQ(InkIn(circle, picture), InkIn(circle, [&](int x, int y) { return surface.At(x, y); }));
    };
    expectSame();
    const QPoint field(picker.request.rcItem.left, picker.request.rcItem.top);
    InNextBox<QColorDialog>([](QColorDialog& box) {
        EXPECT_EQ(box.currentColor(), QColor(Qt::red)) << "the symbol's colour, whichever swatch was pressed";
        EXPECT_EQ(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->text(),
                  QString::fromUtf8("取消"));
        Choose(box, Qt::blue);
    });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, field + QPoint(20, 10));
    InNextBox<QColorDialog>([](QColorDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, field + QPoint(5, 10));
    EXPECT_EQ(picker.GetBGColor(), kBlue);
    EXPECT_EQ(picker.GetColor(), kRed);
    EXPECT_FALSE(picker.GetDroppedState());
    expectSame();
}

TEST_F(QtPickers, SwatchMayBeALabelOrAnyWidget) {
    CSelectColor onLabel, onFrame;
    QWidget* const widgets[] = {&Place<QLabel>(onLabel, {20, 100, 40, 20}),
                                &Place<QFrame>(onFrame, {20, 130, 40, 20})};
    for (CSelectColor* swatch : {&onLabel, &onFrame}) {
        swatch->SetColor(kBlue);
        InNextBox<QColorDialog>([](QColorDialog& box) { Choose(box, Qt::red); });
        QTest::mouseClick(widgets[swatch == &onFrame], Qt::LeftButton, {}, {39, 19});
        EXPECT_EQ(swatch->GetColor(), kRed);
        ExpectSame(PictureOf(WidgetOf(*swatch)), PixelSurface(40, 20, kRed), {0, 0, 40, 20});
    }
}

TEST_F(QtPickers, KeysWheelAndMouseChooseAndNobodyElseIsTold) {
    CSelLineStyle picker;
    QComboBox& combo = Place(picker);
    picker.SetStyle(1);
    picker.SetFocus();
    Key(Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(picker.GetDroppedState());
    Key(Qt::Key_Down), Key(Qt::Key_Down);
    EXPECT_EQ(picker.GetStyle(), 1) << "not chosen yet";
    Key(Qt::Key_Return);
    EXPECT_FALSE(picker.GetDroppedState());
    EXPECT_EQ(picker.GetStyle(), 3);
    Key(Qt::Key_Space), Key(Qt::Key_Up);
    ASSERT_TRUE(picker.GetDroppedState());
    Key(Qt::Key_Escape);
    EXPECT_EQ(picker.GetStyle(), 3) << "left without a choice";
    Key(Qt::Key_Up);
    EXPECT_EQ(picker.GetStyle(), 2);
    TurnWheel(combo, -120);
    EXPECT_EQ(picker.GetStyle(), 3);

    QTest::mousePress(&combo, Qt::LeftButton);
    ASSERT_TRUE(picker.GetDroppedState());
    QWidget& list = *combo.view()->viewport();
    QTest::mouseRelease(&list, Qt::LeftButton, {}, RowOf(combo, 3).center());
    MoveMouse(list, RowOf(combo, 0).center());
    QTest::mouseClick(&list, Qt::LeftButton, {}, RowOf(combo, 0).center());
    EXPECT_FALSE(picker.GetDroppedState());
    EXPECT_EQ(picker.GetStyle(), 0);
    EXPECT_THAT(m_parent.record, Not(::testing::Contains(Pair(WM_COMMAND, MakeWParam(5, CBN_SELCHANGE)))));
}

TEST_F(QtPickers, ScreenReadersHearTheNamesOfThePictures) {
    CSelLineStyle picker;
    QComboBox& combo = Place(picker);
    picker.SetStyle(1);
    const auto name = [](resources::TextId id) {
        return QString::fromStdString(CString(resources::Text(id)).ToUtf8().value());
    };
    EXPECT_EQ(combo.itemData(4, Qt::AccessibleTextRole).toString(), name(resources::TextId::LineDashDotDot));
    EXPECT_EQ(combo.itemText(4), " ");
    auto* const accessible = QAccessible::queryAccessibleInterface(&combo);
    EXPECT_EQ(accessible->role(), QAccessible::ComboBox);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(resources::TextId::LineDash));
    picker.SetFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(resources::TextId::LineDot));
}

TEST_F(QtPickers, HostsComboBoxIsItsOwnAgainAfterwards) {
    QComboBox combo(m_form.get());
    combo.addItems({"one", "two", "three", "four"});
    combo.setItemData(1, 42);
    combo.setCurrentIndex(3);
    const auto* const delegate = combo.view()->itemDelegate();
    const int height = combo.minimumHeight();
    for (int time = 0; time < 2; ++time) {
        CSelSymStyle picker, second;
        ASSERT_TRUE(qt::AttachTo(picker, combo));
        EXPECT_FALSE(qt::AttachTo(second, combo));
        EXPECT_EQ(picker.GetCount(), 4) << "its items stay";
        EXPECT_EQ(picker.GetCurSel(), 3 - time);
        picker.SetSize(100);
        if (time == 1)
            picker.m_hWnd->Destroy();
    }
    PictureOf(combo);
    EXPECT_EQ(combo.currentText(), "three");
    EXPECT_EQ(combo.itemData(1), 42);
    EXPECT_EQ(combo.view()->itemDelegate(), delegate);
    EXPECT_EQ(combo.minimumHeight(), height);
}

TEST_F(QtPickers, PickerWidgetAndFormMayGoInAnyOrder) {
    CSelLineStyle widgetFirst, formFirst, inOpenList;
    auto pickerFirst = std::make_unique<CSelLineStyle>();
    QComboBox& left = Place(*pickerFirst);
    pickerFirst.reset();
    PictureOf(left);
    QTest::mouseClick(&left, Qt::LeftButton);

    delete &Place(widgetFirst);
    EXPECT_EQ(widgetFirst.m_hWnd, nullptr);
    widgetFirst.SetStyle(2);
    EXPECT_EQ(widgetFirst.GetStyle(), 2) << "stored without a window";
    Place(formFirst);
    Place(inOpenList).showPopup();
    m_form.reset();
    EXPECT_EQ(formFirst.m_hWnd, nullptr);
    EXPECT_EQ(m_parent.m_hWnd, nullptr);
}

namespace {

constexpr DWORD kDrawn = WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;
constexpr window::ControlTemplate kControls[] = {
    {"ComboBox", 1001, 0, 10, 10, 100, 80, kDrawn},
    {"ComboBox", 1002, 0, 10, 40, 100, 80, kDrawn},
    {"Static", 1003, 0, 10, 70, 30, 12, WS_VISIBLE | SS_NOTIFY},
    {"Button", IDOK, 0, 10, 90, 40, 14, WS_VISIBLE | BS_DEFPUSHBUTTON}};
constexpr window::DialogTemplate kDialog{1, 0, 150, 120, WS_POPUP | WS_CAPTION, "Arial", 10, kControls};
const window::ResourceModule kModule{"test.dll", {}, nullptr, {}};

struct PickerDialog : CDialog {
    CSelAreaStyle area;
    Drawn<CSelSymStyle> symbol;
    CSelectColor swatch;

    PickerDialog() { InitModalIndirect(kDialog, nullptr, &kModule); }
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, 1001, area);
        DDX_Control(exchange, 1002, symbol);
        DDX_Control(exchange, 1003, swatch);
        if (exchange->m_bSaveAndValidate)
            return;
        area.SetStyle(6);
        symbol.SetSize(150);
        swatch.SetColor(kBlue);
    }
};

}  // namespace

TEST_F(QtPickers, DialogsPickersGiveTheirChoicesWhenItIsAccepted) {
    PickerDialog dialog;
    InNextBox<QDialog>([&](QDialog& box) {
        PictureOf(box);
        EXPECT_EQ(dialog.symbol.request.rcItem.Height(), 24);
        EXPECT_LE(dialog.symbol.request.rcItem.bottom, WidgetOf(dialog.symbol).height());
        EXPECT_EQ(CWnd::GetFocus(), &dialog.area);
        Key(Qt::Key_Up);
        InNextBox<QColorDialog>([](QColorDialog& chooser) { Choose(chooser, Qt::red); });
        QTest::mouseClick(&WidgetOf(dialog.swatch), Qt::LeftButton);
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.area.GetStyle(), 5);
    EXPECT_EQ(dialog.symbol.GetSize(), 150);
    EXPECT_EQ(dialog.swatch.GetColor(), kRed);
}

}  // namespace kortavin::testing
