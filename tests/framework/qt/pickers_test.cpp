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
#include "tests/support/memory/surface.h"

namespace kortavin::testing {
namespace {

using resources::TextId;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr COLORREF kRed = RGB(255, 0, 0), kBlue = RGB(0, 0, 255), kWhite = RGB(255, 255, 255);

// Keeps the last request to draw.
template <class Picker>
struct Drawn : Picker {
    DRAWITEMSTRUCT request;

    void DrawItem(LPDRAWITEMSTRUCT wanted) override {
        request = *wanted;
        Picker::DrawItem(wanted);
    }
};

// What the request draws on a surface in memory that begins where the request's coordinates do.
PixelSurface InMemory(CComboBox& picker, DRAWITEMSTRUCT request) {
    PixelSurface surface(request.rcItem.right, request.rcItem.bottom);
    CDC dc(std::make_unique<SurfacePainter>(surface));
    request.hDC = &dc;
    picker.DrawItem(&request);
    return surface;
}

COLORREF At(const QImage& image, int x, int y) {
    const QColor color = image.pixelColor(x, y);
    return RGB(static_cast<BYTE>(color.red()), static_cast<BYTE>(color.green()),
               static_cast<BYTE>(color.blue()));
}

void ExpectSame(const QImage& image, const PixelSurface& surface, const CRect& rect) {
    ASSERT_FALSE(rect.IsRectEmpty());
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            ASSERT_EQ(At(image, x, y), surface.At(x, y)) << x << ", " << y << "\n" << surface.Dump(rect);
}

// The part of the rectangle that is not white.
template <class ColorAt>
CRect InkIn(const CRect& rect, ColorAt colorAt) {
    CRect ink;
    for (int y = rect.top; y < rect.bottom; ++y)
        for (int x = rect.left; x < rect.right; ++x)
            if (colorAt(x, y) != kWhite)
                ink = ink.IsRectEmpty() ? CRect(x, y, x + 1, y + 1)
                                        : CRect(std::min(ink.left, x), std::min(ink.top, y),
                                                std::max(ink.right, x + 1), std::max(ink.bottom, y + 1));
    return ink;
}

// A form of a host, which hears of what its controls notify.
class QtPickers : public QtTest {
  protected:
    QtPickers() {
        m_form->resize(400, 300);
        m_form->setPalette(QPalette(Qt::lightGray));
        EXPECT_TRUE(qt::AttachTo(m_parent, *m_form));
        m_parent.interest = {WM_COMMAND};
    }

    template <class W = QComboBox>
    W& Place(CWnd& picker, const QRect& rect = {20, 20, 200, 30}) {
        auto* const widget = new W(m_form.get());
        widget->setGeometry(rect);
        EXPECT_TRUE(qt::AttachTo(picker, *widget, 5));
        Activate(*m_form);
        widget->show();
        return *widget;
    }
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* const popup = QApplication::activePopupWidget();
        QTest::keyClick(popup != nullptr ? popup->focusWidget() : QApplication::focusWidget(), key,
                        modifiers);
    }
    // In the list of an open combo box.
    static QRect RowOf(const QComboBox& combo, int row) {
        return combo.view()->visualRect(combo.model()->index(row, 0));
    }
    static QImage ListOf(const QComboBox& combo) { return combo.view()->viewport()->grab().toImage(); }

    std::unique_ptr<QWidget> m_form = std::make_unique<QWidget>();
    TestWindow m_parent;
};

void Choose(QColorDialog& box, const QColor& color) {
    box.setCurrentColor(color);
    QTest::mouseClick(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

}  // namespace

TEST_F(QtPickers, ClosedBoxAndListShowThePixelsOfTheMemorySurface) {
    Drawn<CSelLineStyle> line;
    Drawn<CSelAreaStyle> area;
    area.SetColor(kRed);
    area.SetBGColor(kBlue);
    Place(line);
    Place(area, {20, 60, 200, 30});
    const auto expectSame = [](auto& picker) {
        auto& combo = dynamic_cast<QComboBox&>(WidgetOf(picker));
        for (int style = 0; picker.SetStyle(style), style < picker.GetCount(); ++style) {
            ASSERT_EQ(combo.currentIndex(), style);
            const QImage closed = combo.grab().toImage();
            EXPECT_EQ(picker.request.itemState & ODS_COMBOBOXEDIT, ODS_COMBOBOXEDIT);
            ExpectSame(closed, InMemory(picker, picker.request), picker.request.rcItem);
        }
        combo.showPopup();
        for (int style = 0; style < picker.GetCount(); ++style) {
            combo.view()->setCurrentIndex(combo.model()->index(style, 0));
            const QRect row = RowOf(combo, style);
            const QImage list = ListOf(combo);
            EXPECT_EQ(list.pixelColor(row.topLeft()), QApplication::palette().highlight().color());
            picker.request.itemID = static_cast<UINT>(style);
            picker.request.rcItem = {row.left() + 2, row.top() + 2, row.right() - 1, row.bottom() - 1};
            ExpectSame(list, InMemory(picker, picker.request), picker.request.rcItem);
        }
        combo.hidePopup();
    };
    expectSame(line);
    expectSame(area);
}

TEST_F(QtPickers, SizePickerShowsSwatchesAndACircleOfItsSize) {
    Drawn<CSelSymStyle> picker;
    picker.SetColor(kRed);
    picker.SetBGColor(kBlue);
    const QComboBox& combo = Place(picker);
    for (const auto& [size, index] : {std::pair(-5, 0), std::pair(51, 2), std::pair(1000, 4)}) {
        picker.SetSize(size);
        EXPECT_EQ(combo.currentIndex(), index);
        const QImage image = WidgetOf(picker).grab().toImage();
        const CRect field = picker.request.rcItem;
        EXPECT_EQ(field.Height(), 24);
        const PixelSurface surface = InMemory(picker, picker.request);
        ExpectSame(image, surface, {field.left, field.top, field.left + 29, field.bottom});
        const CRect circle(field.left + 30, field.top, field.right, field.bottom);
        const auto onSurface = [&](int x, int y) { return surface.At(x, y); };
        EXPECT_EQ(InkIn(circle, [&](int x, int y) { return At(image, x, y); }), InkIn(circle, onSurface));
    }
    EXPECT_GE(combo.height(), 24);
    EXPECT_EQ(picker.GetItemHeight(0), 20);
}

TEST_F(QtPickers, NothingSelectedShowsNothing) {
    Drawn<CSelAreaStyle> area;
    Drawn<CSelTextSymbol> symbol;
    Place(area).show();
    const QComboBox& combo = Place(symbol, {20, 60, 200, 30});
    for (const auto* picker : {static_cast<CComboBox*>(&area), static_cast<CComboBox*>(&symbol)}) {
        const QImage image = WidgetOf(*picker).grab().toImage();
        const CRect field = picker == &area ? area.request.rcItem : symbol.request.rcItem;
        ASSERT_FALSE(field.IsRectEmpty());
        EXPECT_EQ(picker->GetCurSel(), CB_ERR);
        EXPECT_TRUE(InkIn(field, [&](int x, int y) { return At(image, x, y); }).IsRectEmpty());
    }
    EXPECT_EQ(symbol.GetSymbol(), "\xA1\xF1");
    EXPECT_EQ(combo.count(), 14) << "filled by the first drawing";
}

TEST_F(QtPickers, EachCharacterHasAPictureOfItsOwn) {
    Drawn<CSelTextSymbol> picker;
    QComboBox& combo = Place(picker);
    picker.SetSymbol("\xA1\xEF");
    QImage unassigned(100, 40, QImage::Format_RGB32);
    std::vector<QImage> pictures;
    combo.setMaxVisibleItems(20);
    combo.showPopup();
    const QImage list = ListOf(combo);
    for (int i = 0; i < combo.count(); ++i) {
        const QRect cell = RowOf(combo, i).adjusted(12, 2, 0, -2);
        pictures.push_back(list.copy(QRect(cell.topLeft(), QSize(30, cell.height()))));
        const QImage& last = pictures.back();
        const CRect ink =
            InkIn({0, 0, last.width(), last.height()}, [&](int x, int y) { return At(last, x, y); });
        EXPECT_GT(ink.Width(), 4) << i;
        EXPECT_EQ(std::ranges::count(pictures, last), 1) << i << " looks like another one";
    }
    combo.hidePopup();
    // What a character without a glyph would look like.
    const QSize size = pictures.front().size();
    QImage missing(size, list.format());
    missing.fill(Qt::white);
    QPainter painter(&missing);
    painter.setFont(combo.font());
    painter.drawText(QPoint(0, QFontMetrics(combo.font()).ascent()), QChar(0xE5E5));
    painter.end();
    EXPECT_EQ(std::ranges::count(pictures, missing), 0);
}

TEST_F(QtPickers, KeyboardOpensMovesAndChooses) {
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
    Key(Qt::Key_Space);
    ASSERT_TRUE(picker.GetDroppedState());
    Key(Qt::Key_Up);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(picker.GetDroppedState());
    EXPECT_EQ(picker.GetStyle(), 3) << "left without a choice";
    Key(Qt::Key_Up);
    EXPECT_EQ(picker.GetStyle(), 2);
    Turn(combo, -120);
    EXPECT_EQ(picker.GetStyle(), 3);
    EXPECT_TRUE(combo.view()->isHidden() || !picker.GetDroppedState());
    for (const auto& [message, wParam] : m_parent.record)
        EXPECT_NE(HIWORD(wParam), CBN_SELCHANGE) << "the picker keeps its choice to itself";
}

TEST_F(QtPickers, MouseChoosesFromTheListAndPressesBesideTheSwatchesOpenIt) {
    CSelSymStyle picker;
    QComboBox& combo = Place(picker);
    picker.SetSize(20);
    combo.grab();
    QTest::mousePress(&combo, Qt::LeftButton, {}, {120, 15});
    ASSERT_TRUE(picker.GetDroppedState());
    QWidget& list = *combo.view()->viewport();
    QTest::mouseRelease(&list, Qt::LeftButton, {}, RowOf(combo, 0).center());
    const QPoint third = RowOf(combo, 2).center();
    MoveMouse(list, third);
    QTest::mouseClick(&list, Qt::LeftButton, {}, third);
    EXPECT_FALSE(picker.GetDroppedState());
    EXPECT_EQ(picker.GetSize(), 100);
}

TEST_F(QtPickers, SwatchChangesWhenTheChooserIsConfirmed) {
    Drawn<CSelSymStyle> picker;
    CSelectColor onLabel, onFrame;
    QComboBox& combo = Place(picker);
    picker.SetColor(kRed);
    combo.grab();
    const CRect field = picker.request.rcItem;
    InNextBox<QColorDialog>([](QColorDialog& box) {
        EXPECT_EQ(box.currentColor(), QColor(Qt::red)) << "the symbol's colour, whichever swatch was pressed";
        EXPECT_EQ(box.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->text(),
                  QString::fromUtf8("取消"));
        Choose(box, Qt::blue);
    });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, {field.left + 20, field.top + 10});
    EXPECT_EQ(picker.GetBGColor(), kBlue);
    EXPECT_EQ(picker.GetColor(), kRed);
    EXPECT_FALSE(picker.GetDroppedState());
    EXPECT_EQ(At(combo.grab().toImage(), field.left + 20, field.top + 10), kBlue);
    InNextBox<QColorDialog>([](QColorDialog& box) { QTest::keyClick(&box, Qt::Key_Escape); });
    QTest::mouseClick(&combo, Qt::LeftButton, {}, {field.left + 5, field.top + 10});
    EXPECT_EQ(picker.GetColor(), kRed);

    for (CSelectColor* swatch : {&onLabel, &onFrame}) {
        QWidget& widget = swatch == &onLabel
                              ? static_cast<QWidget&>(Place<QLabel>(*swatch, {20, 100, 40, 20}))
                              : Place<QFrame>(*swatch, {20, 130, 40, 20});
        swatch->SetColor(kBlue);
        InNextBox<QColorDialog>([](QColorDialog& box) {
            EXPECT_EQ(box.currentColor(), QColor(Qt::blue));
            Choose(box, Qt::red);
        });
        QTest::mouseClick(&widget, Qt::LeftButton, {}, {39, 19});
        EXPECT_EQ(swatch->GetColor(), kRed);
        const QImage image = widget.grab().toImage();
        PixelSurface filled(40, 20, kRed);
        ExpectSame(image, filled, filled.Bounds());
    }
}

TEST_F(QtPickers, ScreenReadersHearTheNamesOfThePictures) {
    CSelLineStyle picker;
    QComboBox& combo = Place(picker);
    picker.SetStyle(1);
    const auto name = [](TextId id) {
        return QString::fromStdString(CString(resources::Text(id)).ToUtf8().value());
    };
    EXPECT_EQ(combo.itemData(4, Qt::AccessibleTextRole).toString(), name(TextId::LineDashDotDot));
    EXPECT_EQ(combo.itemText(4), " ");
    auto* const accessible = QAccessible::queryAccessibleInterface(&combo);
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->role(), QAccessible::ComboBox);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(TextId::LineDash));
    picker.SetFocus();
    Key(Qt::Key_Down);
    EXPECT_EQ(accessible->text(QAccessible::Value), name(TextId::LineDot));
    picker.SetAccessibleText("Line");
    EXPECT_EQ(accessible->text(QAccessible::Name), "Line");
}

TEST_F(QtPickers, HostsComboBoxIsItsOwnAgainAfterwards) {
    QComboBox combo(m_form.get());
    combo.addItems({"one", "two", "three", "four"});
    combo.setItemData(1, 42);
    combo.setCurrentIndex(3);
    const auto* const delegate = combo.view()->itemDelegate();
    const int height = combo.minimumHeight();
    {
        CSelSymStyle picker, second;
        ASSERT_TRUE(qt::AttachTo(picker, combo));
        EXPECT_FALSE(qt::AttachTo(second, combo));
        EXPECT_FALSE(qt::AttachTo(picker, *m_form));
        Activate(*m_form);
        EXPECT_EQ(picker.GetCount(), 4) << "its items stay";
        EXPECT_EQ(picker.GetCurSel(), 3);
        picker.SetSize(100);
        EXPECT_EQ(combo.currentText(), "three");
        EXPECT_EQ(combo.itemData(1), 42);
    }
    EXPECT_EQ(combo.count(), 4);
    combo.grab();
    CSelTextSymbol other;
    ASSERT_TRUE(qt::AttachTo(other, combo)) << "for another picker";
    other.m_hWnd->Destroy();
    EXPECT_EQ(combo.view()->itemDelegate(), delegate);
    EXPECT_EQ(combo.minimumHeight(), height);
}

TEST_F(QtPickers, PickerWidgetAndFormMayGoInAnyOrder) {
    CSelLineStyle widgetFirst, formFirst, inOpenList;
    auto pickerFirst = std::make_unique<CSelLineStyle>();
    QPointer<QComboBox> left = &Place(*pickerFirst);
    pickerFirst.reset();
    ASSERT_NE(left, nullptr);
    left->grab();
    QTest::mouseClick(left, Qt::LeftButton);

    delete &Place(widgetFirst);
    EXPECT_EQ(widgetFirst.m_hWnd, nullptr);
    widgetFirst.SetStyle(2);
    EXPECT_EQ(widgetFirst.GetStyle(), 2) << "stored without a window";

    Place(formFirst);
    Place(inOpenList).showPopup();
    m_form.reset();
    EXPECT_EQ(formFirst.m_hWnd, nullptr);
    EXPECT_EQ(m_parent.m_hWnd, nullptr);
    EXPECT_EQ(inOpenList.GetCount(), 0);
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
    Drawn<CSelAreaStyle> area;
    Drawn<CSelSymStyle> symbol;
    CSelectColor swatch;

    PickerDialog() { InitModalIndirect(kDialog, nullptr, &kModule); }
    void DoDataExchange(CDataExchange* exchange) override {
        DDX_Control(exchange, 1001, area);
        DDX_Control(exchange, 1002, symbol);
        DDX_Control(exchange, 1003, swatch);
    }
    BOOL OnInitDialog() override {
        const BOOL result = CDialog::OnInitDialog();
        area.SetStyle(6);
        symbol.SetSize(150);
        swatch.SetColor(kBlue);
        return result;
    }
};

}  // namespace

TEST_F(QtPickers, DialogsPickersGiveTheirChoicesWhenItIsAccepted) {
    PickerDialog dialog;
    InNextBox<QDialog>([&](QDialog& box) {
        Activate(box);
        auto& area = dynamic_cast<QComboBox&>(WidgetOf(dialog.area));
        EXPECT_EQ(area.currentIndex(), 6);
        box.grab();
        EXPECT_EQ(dialog.symbol.request.rcItem.Height(), 24);
        EXPECT_LT(dialog.symbol.request.rcItem.bottom, WidgetOf(dialog.symbol).height() + 1);
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
