#include <QAbstractItemView>
#include <QAccessible>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
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

constexpr COLORREF kRed = RGB(255, 0, 0), kGreen = RGB(0, 255, 0), kBlue = RGB(0, 0, 255);

// Keeps the last request to draw.
template <class Picker>
struct Drawn : Picker {
    DRAWITEMSTRUCT request;

    void DrawItem(LPDRAWITEMSTRUCT wanted) override {
        request = *wanted;
        Picker::DrawItem(wanted);
    }
    QRect Place() const {
        return {request.rcItem.left, request.rcItem.top, request.rcItem.Width(), request.rcItem.Height()};
    }
    // What the same draws in memory, with all that lies to its left and above.
    QImage InMemory() {
        PixelSurface surface(request.rcItem.right, request.rcItem.bottom);
        CDC dc(std::make_unique<SurfacePainter>(surface));
        DRAWITEMSTRUCT copy = request;
        copy.hDC = &dc;
        Picker::DrawItem(&copy);
        return PictureOf(surface);
    }
};

// The part of the picture that is not white.
QRect InkIn(const QImage& picture) {
    QRect ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y) != Qt::white)
                ink |= QRect(x, y, 1, 1);
    return ink;
}

QRect RowOf(const QComboBox& combo, int row) {
    return combo.view()->visualRect(combo.model()->index(row, 0));
}

void Choose(QColorDialog& box, const QColor& color) {
    box.setCurrentColor(color);
    QTest::mouseClick(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
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
    W& Place(CWnd& picker) {
        auto* const widget = new W(m_form.get());
        widget->setGeometry(20, 20, 200, 30);
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
        for (int style = 0; picker.SetStyle(style), style < picker.GetCount(); ++style) {
            const QImage picture = PictureOf(combo);
            EXPECT_EQ(picture.copy(picker.Place()), picker.InMemory().copy(picker.Place())) << style;
            EXPECT_EQ(picker.request.itemState & ODS_COMBOBOXEDIT, ODS_COMBOBOXEDIT);
        }
        combo.showPopup();
        for (int style = 0; style < picker.GetCount(); ++style) {
            combo.view()->setCurrentIndex(combo.model()->index(style, 0));
            const QRect row = RowOf(combo, style), item = row.adjusted(2, 2, -2, -2);
            const QImage picture = PictureOf(*combo.view()->viewport());
            EXPECT_EQ(picture.pixelColor(row.topLeft()), QApplication::palette().highlight().color());
            picker.request.itemID = static_cast<UINT>(style);
            picker.request.rcItem = {item.left(), item.top(), item.right() + 1, item.bottom() + 1};
            EXPECT_EQ(picture.copy(item), picker.InMemory().copy(item)) << style;
        }
        combo.hidePopup();
    };
    Drawn<CSelLineStyle> line;
    Drawn<CSelAreaStyle> area;
    area.SetColor(kRed);
    area.SetBGColor(kBlue);
    expectSame(line, Place(line));
    QComboBox& combo = Place(area);
    const QImage unselected = PictureOf(combo);
    EXPECT_TRUE(InkIn(unselected.copy(area.Place())).isEmpty());
    expectSame(area, combo);
}

TEST_F(QtPickers, EachCharacterHasAPictureOfItsOwn) {
    CSelTextSymbol picker;
    QComboBox& combo = Place(picker);
    picker.SetSymbol("\xA1\xEF");
    combo.setMaxVisibleItems(14);
    combo.showPopup();
    const QImage list = PictureOf(*combo.view()->viewport());
    QImage missing(30, RowOf(combo, 0).height() - 4, list.format());  // how a character without a glyph looks
    missing.fill(Qt::white);
    QPainter painter(&missing);
    painter.setFont(combo.font());
    painter.drawText(QPoint(0, QFontMetrics(combo.font()).ascent()), QChar(0xE5E5));
    painter.end();
    std::vector<QImage> pictures = {missing};
    for (int i = 0; i < 14; ++i) {
        pictures.push_back(list.copy(QRect(RowOf(combo, i).topLeft() + QPoint(12, 2), missing.size())));
        EXPECT_GT(InkIn(pictures.back()).width(), 4) << i;
        EXPECT_EQ(std::ranges::count(pictures, pictures.back()), 1) << i;
    }
}

TEST_F(QtPickers, SwatchChangesWhenTheChooserIsConfirmed) {
    Drawn<CSelSymStyle> picker;
    picker.SetColor(kRed);
    picker.SetBGColor(kGreen);
    QComboBox& combo = Place(picker);
    picker.SetSize(151);
    EXPECT_EQ(combo.currentIndex(), 4);
    const auto expectSame = [&] {
        const QImage picture = PictureOf(combo), expected = picker.InMemory();
        const QRect field = picker.Place(), swatches(field.topLeft(), QSize(29, 24));
        EXPECT_EQ(field.height(), 24);
        EXPECT_EQ(picture.copy(swatches), expected.copy(swatches));
        const QRect circle = field.adjusted(29, 0, 0, 0);  // smooth here
        EXPECT_EQ(InkIn(picture.copy(circle)), InkIn(expected.copy(circle)));
    };
    PictureOf(combo);
    expectSame();
    InNextBox<QColorDialog>([](QColorDialog& box) {
        EXPECT_EQ(box.currentColor(), QColor(Qt::red)) << "the symbol's colour, whichever swatch was pressed";
        EXPECT_EQ(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->text(),
                  QString::fromUtf8("取消"));
        Choose(box, Qt::blue);
    });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, picker.Place().topLeft() + QPoint(20, 10));
    InNextBox<QColorDialog>([](QColorDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, picker.Place().topLeft() + QPoint(5, 10));
    EXPECT_EQ(picker.GetBGColor(), kBlue);
    EXPECT_EQ(picker.GetColor(), kRed);
    EXPECT_FALSE(picker.GetDroppedState());
    expectSame();
}

TEST_F(QtPickers, KeysWheelAndMouseChooseAndNobodyElseIsTold) {
    CSelLineStyle picker;
    QComboBox& combo = Place(picker);
    picker.SetStyle(1);
    picker.SetFocus();
    PressKey(Qt::Key_Down, Qt::AltModifier);
    ASSERT_TRUE(picker.GetDroppedState());
    PressKey(Qt::Key_Down), PressKey(Qt::Key_Down);
    EXPECT_EQ(picker.GetStyle(), 1) << "not chosen yet";
    PressKey(Qt::Key_Return);
    EXPECT_FALSE(picker.GetDroppedState());
    EXPECT_EQ(picker.GetStyle(), 3);
    PressKey(Qt::Key_Space), PressKey(Qt::Key_Up);
    ASSERT_TRUE(picker.GetDroppedState());
    PressKey(Qt::Key_Escape);
    EXPECT_EQ(picker.GetStyle(), 3) << "left without a choice";
    PressKey(Qt::Key_Up);
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
    EXPECT_EQ(std::ranges::count(m_parent.record, std::pair(WM_COMMAND, MakeWParam(5, CBN_SELCHANGE))), 0);
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
    const auto* const accessible = QAccessible::queryAccessibleInterface(&combo);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(resources::TextId::LineDash));
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(resources::TextId::LineDot));
}

TEST_F(QtPickers, HostsComboBoxIsItsOwnAgainAfterwards) {
    QComboBox combo(m_form.get());
    combo.addItems({"one", "two", "three"});
    combo.setCurrentIndex(1);
    const auto* const delegate = combo.view()->itemDelegate();
    const int height = combo.minimumHeight();
    for (const bool destroysWindow : {false, true}) {
        CSelSymStyle picker, second;
        ASSERT_TRUE(qt::AttachTo(picker, combo));
        EXPECT_FALSE(qt::AttachTo(second, combo));
        EXPECT_EQ(picker.GetCurSel(), destroysWindow ? 2 : 1);
        picker.SetSize(100);
        if (destroysWindow)
            picker.m_hWnd->Destroy();
    }
    EXPECT_EQ(combo.currentText(), "three") << "its items stay";
    EXPECT_EQ(combo.view()->itemDelegate(), delegate);
    EXPECT_EQ(combo.minimumHeight(), height);
}

TEST_F(QtPickers, PickerWidgetAndFormMayGoInAnyOrder) {
    CSelLineStyle widgetFirst, formFirst;
    auto pickerFirst = std::make_unique<CSelLineStyle>();
    QComboBox& left = Place(*pickerFirst);
    pickerFirst.reset();
    PictureOf(left);
    QTest::mouseClick(&left, Qt::LeftButton);
    delete &Place(widgetFirst);
    EXPECT_EQ(widgetFirst.m_hWnd, nullptr);
    Place(formFirst).showPopup();
    m_form.reset();
    EXPECT_EQ(formFirst.m_hWnd, nullptr);
    EXPECT_EQ(m_parent.m_hWnd, nullptr);
}

namespace {

constexpr DWORD kDrawn = WS_VISIBLE | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS;
constexpr window::ControlTemplate kControls[] = {
    {"ComboBox", 1001, 0, 10, 10, 100, 80, kDrawn},
    {"Static", 1002, 0, 10, 70, 30, 12, WS_VISIBLE | SS_NOTIFY},
    {"Button", IDOK, 0, 10, 90, 40, 14, WS_VISIBLE | BS_DEFPUSHBUTTON}};
constexpr window::DialogTemplate kDialog{1, 0, 150, 120, WS_POPUP | WS_CAPTION, "Arial", 10, kControls};
const window::ResourceModule kModule{"test.dll", {}, nullptr, {}};

struct PickerDialog : CDialog {
    Drawn<CSelSymStyle> symbol;
    CSelectColor swatch;

    PickerDialog() { InitModalIndirect(kDialog, nullptr, &kModule); }
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, 1001, symbol);
        DDX_Control(exchange, 1002, swatch);
    }
};

}  // namespace

TEST_F(QtPickers, DialogsPickersGiveTheirChoicesWhenItIsAccepted) {
    PickerDialog dialog;
    InNextBox<QDialog>([&](QDialog& box) {
        dialog.symbol.SetSize(150);
        dialog.swatch.SetColor(kBlue);
        EXPECT_LE(dialog.symbol.Place().bottom(), WidgetOf(dialog.symbol).height());
        EXPECT_EQ(dialog.symbol.Place().height(), 24);
        PressKey(Qt::Key_Up);
        InNextBox<QColorDialog>([](QColorDialog& chooser) { Choose(chooser, Qt::red); });
        QTest::mouseClick(&WidgetOf(dialog.swatch), Qt::LeftButton);
        EXPECT_EQ(PictureOf(WidgetOf(dialog.swatch)).pixelColor(0, 0), Qt::red);
        QTest::keyClick(box.focusWidget(), Qt::Key_Return);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(dialog.symbol.GetSize(), 100);
    EXPECT_EQ(dialog.swatch.GetColor(), kRed);
    CSelectColor onFrame;
    QWidget& frame = Place<QFrame>(onFrame);
    InNextBox<QColorDialog>([](QColorDialog& chooser) { Choose(chooser, Qt::red); });
    QTest::mouseClick(&frame, Qt::LeftButton);
    EXPECT_EQ(PictureOf(frame).pixelColor(199, 29), Qt::red);
}

}  // namespace kortavin::testing
