#include <QAbstractItemView>
#include <QAccessible>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QPushButton>

#include "kortavin/base/texts.h"
#include "kortavin/symbology/selareastyle.h"
#include "kortavin/symbology/selectcolor.h"
#include "kortavin/symbology/sellinestyle.h"
#include "kortavin/symbology/selsymstyle.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255);

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

QRect RowOf(const QComboBox& combo, int row) {
    return combo.view()->visualRect(combo.model()->index(row, 0));
}

void Choose(QColorDialog& box, const QColor& color) {
    box.setCurrentColor(color);
    QTest::mouseClick(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

// A form of a host.
class QtPickers : public QtTest {
  protected:
    QtPickers() {
        m_form->resize(400, 300);
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
};

}  // namespace

TEST_F(QtPickers, ClosedBoxAndListShowThePixelsOfTheMemorySurface) {
    Drawn<CSelAreaStyle> picker;
    picker.SetColor(kRed);
    QComboBox& combo = Place(picker);
    for (int style = 0; picker.SetStyle(style), style < picker.GetCount(); ++style) {
        const QImage picture = PictureOf(combo);
        EXPECT_EQ(picture.copy(picker.Place()), picker.InMemory().copy(picker.Place())) << style;
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
}

TEST_F(QtPickers, SwatchChangesWhenTheChooserIsConfirmed) {
    Drawn<CSelSymStyle> picker;
    picker.SetColor(kRed);
    QComboBox& combo = Place(picker);
    picker.SetSize(151);
    EXPECT_EQ(combo.currentIndex(), 4);
    PictureOf(combo);
    EXPECT_EQ(picker.Place().height(), 24);
    InNextBox<QColorDialog>([](QColorDialog& box) {
        EXPECT_EQ(box.currentColor(), QColor(Qt::red)) << "the symbol's colour, whichever swatch was pressed";
        const auto* const buttons = box.findChild<QDialogButtonBox*>();
        EXPECT_EQ(buttons->button(QDialogButtonBox::Cancel)->text(), QString::fromUtf8("取消"));
        Choose(box, Qt::blue);
    });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, picker.Place().topLeft() + QPoint(20, 10));
    InNextBox<QColorDialog>([](QColorDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, picker.Place().topLeft() + QPoint(5, 10));
    EXPECT_EQ(picker.GetBGColor(), kBlue);
    EXPECT_EQ(picker.GetColor(), kRed);
    EXPECT_FALSE(picker.GetDroppedState());
    CSelectColor onFrame;
    QWidget& frame = Place<QFrame>(onFrame);
    InNextBox<QColorDialog>([](QColorDialog& chooser) { Choose(chooser, Qt::red); });
    QTest::mouseClick(&frame, Qt::LeftButton);
    EXPECT_EQ(PictureOf(frame).pixelColor(199, 29), Qt::red);
}

TEST_F(QtPickers, ScreenReadersHearTheNamesOfThePictures) {
    CSelLineStyle picker;
    QComboBox& combo = Place(picker);
    picker.SetStyle(1);
    const auto name = [](base::TextId id) {
        return QString::fromStdString(CString(base::Text(id)).ToUtf8().value());
    };
    EXPECT_EQ(combo.itemData(4, Qt::AccessibleTextRole).toString(), name(base::TextId::LineDashDotDot));
    EXPECT_EQ(combo.itemText(4), " ");
    const auto* const accessible = QAccessible::queryAccessibleInterface(&combo);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(base::TextId::LineDash));
    QTest::keyClick(&combo, Qt::Key_Down);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(base::TextId::LineDot));
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
}

}  // namespace kortavin::testing
