#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include "desktop/symbolpage.h"
#include "desktop/tour/driver.h"
#include "desktop/tour/tour.h"

namespace kortavin::desktop {
namespace {

QString NameOf(COLORREF color) {
    return QColor(GetRValue(color), GetGValue(color), GetBValue(color)).name();
}

// The chooser's field for a colour's name, which tells the colour that it starts with.
QLineEdit& NameField(QWidget& chooser) {
    for (QLineEdit* field : chooser.findChildren<QLineEdit*>())
        if (field->text().startsWith(QLatin1Char('#')))
            return *field;
    throw TourFailure("the dialog that opens is no colour chooser");
}

class SymbolTour {
  public:
    SymbolTour(Driver& driver, const SymbolPage& page)
        : m_driver(driver), m_page(page), m_preview(driver.Find<QWidget>("preview")) {}

    // The step changes one of the symbols to the value, and with it the preview.
    template <class Value>
    void Choose(const std::string& what, Value Symbols::*symbol, const Value& value,
                const std::function<void()>& step) {
        m_driver.ExpectChange(m_preview, what + ": the preview stays as it was", step);
        m_driver.Expect([&] { return m_page.Chosen().*symbol == value; },
                        what + ": the picker has another value");
    }

    // All along the order of the Tab key.
    void Run() {
        auto& lineStyle = m_driver.Find<QComboBox>("lineStyle");
        lineStyle.setFocus();
        Choose("a line style by an arrow key", &Symbols::lineStyle, PS_DASH,
               [&] { m_driver.Key(Qt::Key_Down); });
        Choose("a line style from the list", &Symbols::lineStyle, PS_DASHDOT, [&] {
            OpenList(lineStyle);
            m_driver.Key(Qt::Key_Down);
            m_driver.Key(Qt::Key_Down);
            m_driver.Key(Qt::Key_Return);
        });
        m_driver.TabTo(m_driver.Find<QPushButton>("lineColorButton"));
        const auto pressButton = [&] { m_driver.Key(Qt::Key_Space); };
        ChooseColor("a line colour by its button", &Symbols::lineColor, RGB(0, 96, 208), pressButton);

        m_driver.TabTo(m_driver.Find<QComboBox>("areaStyle"));
        Choose("an area style by an arrow key", &Symbols::areaStyle, HS_CROSS,
               [&] { m_driver.Key(Qt::Key_Down); });
        ChooseColor("an area colour by a click", &Symbols::areaColor, RGB(0, 128, 64),
                    [&] { m_driver.Click(m_driver.Find<QWidget>("areaColor")); });
        for (const char* button : {"areaColorButton", "areaBackgroundButton", "areaOutlineButton"})
            m_driver.TabTo(m_driver.Find<QPushButton>(button));
        ChooseColor("an outline colour by its button", &Symbols::areaOutline, RGB(0, 64, 0), pressButton);

        auto& point = m_driver.Find<QComboBox>("point");
        m_driver.TabTo(point);
        Choose("a point size by an arrow key", &Symbols::pointSize, 150, [&] { m_driver.Key(Qt::Key_Up); });
        ChooseColor("a point colour by a click", &Symbols::pointColor, RGB(224, 48, 32), [&] {
            m_driver.Click(point, {7, point.height() / 2});
        });
        m_driver.TabTo(m_driver.Find<QPushButton>("pointColorButton"));
        m_driver.TabTo(m_driver.Find<QPushButton>("pointOutlineButton"));

        m_driver.TabTo(m_driver.Find<QComboBox>("textSymbol"));
        Choose("a text symbol by an arrow key", &Symbols::text, *CString::FromUtf8("☆"),
               [&] { m_driver.Key(Qt::Key_Down); });
        m_driver.TabTo(m_driver.Find<QPushButton>("textColorButton"));
        ChooseColor("a text colour by its button", &Symbols::textColor, RGB(144, 32, 160), pressButton);
    }

    void Shoot() {
        m_driver.Shoot(*m_preview.window(), QStringLiteral("symbols"));
        for (const auto& [name, picture] : {std::pair{"lineStyle", "line"}, std::pair{"areaStyle", "area"},
                                            std::pair{"point", "point"}, std::pair{"textSymbol", "text"}}) {
            auto& combo = m_driver.Find<QComboBox>(name);
            combo.setFocus();
            m_driver.Shoot(*combo.parentWidget(), QLatin1String(picture));
            OpenList(combo);
            m_driver.Shoot(combo, QLatin1String(picture) + QStringLiteral("-open"));
            m_driver.Key(Qt::Key_Escape);
        }
        auto& swatch = m_driver.Find<QWidget>("lineColor");
        m_driver.Shoot(*swatch.parentWidget(), QStringLiteral("color"));
        m_driver.InDialog([&] { m_driver.Click(swatch); },
                          [&](QWidget& chooser) { m_driver.Shoot(chooser, QStringLiteral("color-open")); });
    }

  private:
    void OpenList(QComboBox& combo) {
        m_driver.Key(Qt::Key_F4);
        m_driver.Expect([&] { return combo.view()->isVisible(); },
                        "F4 does not open the list of " + combo.objectName().toStdString());
    }

    // Types the colour into the chooser that `open` opens.
    void ChooseColor(const std::string& what, COLORREF Symbols::*symbol, COLORREF color,
                     const std::function<void()>& open) {
        const QString initial = NameOf(m_page.Chosen().*symbol);
        const auto answer = [&](QWidget& chooser) {
            QLineEdit& field = NameField(chooser);
            m_driver.Expect([&] { return field.text() == initial; },
                            what + ": the chooser starts with another");
            field.setFocus();
            field.selectAll();
            m_driver.Type(NameOf(color));
            m_driver.Key(Qt::Key_Return);
        };
        Choose(what, symbol, color, [&] { m_driver.InDialog(open, answer); });
    }

    Driver& m_driver;
    const SymbolPage& m_page;
    QWidget& m_preview;
};

}  // namespace

void UseSymbolPage(Driver& driver, const SymbolPage& page) {
    SymbolTour(driver, page).Run();
}

void ShootSymbolPage(Driver& driver, const SymbolPage& page) {
    SymbolTour(driver, page).Shoot();
}

}  // namespace kortavin::desktop
