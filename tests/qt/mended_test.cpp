#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>

#include "kortavin/symbology/seltextsymbol.h"
#include "kortavin/window/dialog.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr window::DialogTemplate kDialog{1, 0, 150, 120, WS_POPUP | WS_CAPTION, "Arial", 10, {}};
const window::ResourceModule kModule{"test.dll", {}, nullptr, {}};

// Ends while its widget comes to be shown.
struct HastyDialog : QObject, CDialog {
    HastyDialog() { InitModalIndirect(kDialog, nullptr, &kModule); }
    BOOL OnInitDialog() override { return WidgetOf(*this).installEventFilter(this), TRUE; }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show)
            EndDialog(7);
        return false;
    }
};

// The host's widgets, of objects that come and go.
struct QtGuests : QtTest {
    QtGuests() { m_combo.setGeometry(10, 10, 200, 30); }
    QWidget m_form;
    QComboBox m_combo{&m_form};
};

}  // namespace

TEST_F(QtGuests, DialogThatEndsWhileItIsShownDoesNotStay) {
    HastyDialog dialog;
    EXPECT_EQ(dialog.DoModal(), 7);
}

TEST_F(QtGuests, ComboBoxIsTheHostsAloneWhenTheObjectGoesFirst) {
    m_combo.setEditable(true);
    const QPointer<QCompleter> completer(m_combo.completer());
    ASSERT_TRUE(qt::AttachTo(*std::make_unique<CComboBox>(), m_combo));
    EXPECT_TRUE(completer != nullptr && m_combo.completer() == completer);
    m_combo.setEditable(false);
    const auto* const delegate = m_combo.view()->itemDelegate();
    CSelTextSymbol drawing;
    ASSERT_TRUE(qt::AttachTo(drawing, m_combo));
    EXPECT_NE(drawing.GetStyle() & CBS_OWNERDRAWFIXED, 0U) << "not as the one before it was";
    EXPECT_EQ(drawing.UnsubclassWindow(), nullptr);
    EXPECT_EQ(m_combo.view()->itemDelegate(), delegate);
}

TEST_F(QtGuests, WindowFollowsItsWidgetFromFormToForm) {
    auto first = std::make_unique<QWidget>();
    QLabel label;
    EventWindow guest;
    ASSERT_TRUE(qt::AttachTo(guest, label));
    label.setParent(first.get());
    EXPECT_EQ(guest.GetParent(), qt::WindowOf(first.get()));
    label.setParent(&m_form);
    EXPECT_TRUE(qt::WindowOf(&m_form)->IsChild(&guest));
    first.reset();
    EXPECT_EQ(qt::WidgetOf(guest), &label);
}

TEST_F(QtGuests, PickerHasTheColorsAndTheFontOfItsComboBox) {
    CSelTextSymbol picker;
    ASSERT_TRUE(qt::AttachTo(picker, m_combo));
    picker.SetSymbol("\xA1\xF6");  // a black square
    QPalette palette;
    palette.setColor(QPalette::Base, Qt::darkBlue);
    palette.setColor(QPalette::Text, Qt::yellow);
    palette.setColor(QPalette::Disabled, QPalette::Text, Qt::red);
    m_combo.setPalette(palette);
    // Where the square lies is a matter of the font, but its inside is of one colour.
    const auto squareShows = [this](const QColor& color) {
        const QImage picture = PictureOf(m_combo);
        for (int y = 4; y < picture.height() - 4; ++y)
            for (int x = 4; x < 40; ++x)
                if (picture.pixelColor(x, y) == color)
                    return true;
        return false;
    };
    EXPECT_TRUE(squareShows(Qt::yellow));
    EXPECT_EQ(PictureOf(m_combo).pixelColor(100, 15), QColor(Qt::darkBlue));
    m_combo.setEnabled(false);
    EXPECT_TRUE(squareShows(Qt::red));
    QFont font = m_combo.font();
    font.setPixelSize(37);
    m_combo.setFont(font);
    EXPECT_EQ(picker.GetFont()->GetNative()->Metrics().tmHeight, QFontMetrics(font).height());
}

TEST_F(QtGuests, PaintErrorIsToldOnceAndNotWhilePainting) {
    int told = 0;
    window::SetMessageBoxHandler([&told](const char*, UINT) { return ++told, IDOK; });
    EventWindow guest;
    ASSERT_TRUE(qt::AttachTo(guest, m_form));
    bool fails = true;
    guest.script = [&fails](UINT message) -> std::optional<LRESULT> {
        return message == WM_PAINT && fails ? throw CResourceException("broken") : std::nullopt;
    };
    const auto paint = [&](bool isBroken) { fails = isBroken, PictureOf(m_form); };
    paint(true);
    EXPECT_EQ(told, 0);
    QCoreApplication::processEvents();
    paint(true), QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
    paint(false), paint(true), QCoreApplication::processEvents();
    EXPECT_EQ(told, 2) << "it had been mended meanwhile";
}

TEST_F(QtGuests, KeyThatIsHeldWhileTheFocusComesIsNotReleasedHere) {
    EventWindow guest;
    guest.dialogCode = DLGC_WANTALLKEYS;
    guest.interest = {WM_KEYDOWN, WM_KEYUP};
    ASSERT_TRUE(qt::AttachTo(guest, m_form));
    QKeyEvent again(QEvent::KeyPress, Qt::Key_Return, {}, "\r", true);
    QCoreApplication::sendEvent(&m_form, &again);
    QTest::keyRelease(&m_form, Qt::Key_Return);
    EXPECT_THAT(guest.record, ElementsAre(Pair(WM_KEYDOWN, VK_RETURN)));
}

}  // namespace kortavin::testing
