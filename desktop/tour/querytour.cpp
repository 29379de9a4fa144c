#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolBar>
#include <iostream>

#include "desktop/datapage.h"
#include "desktop/text.h"
#include "desktop/tour/driver.h"
#include "desktop/tour/tour.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/resources/dialogs.h"
#include "kortavin/window/propertysheet.h"
#include "sample/sample.h"

namespace kortavin::desktop {
namespace {

// The wizard at work, in its pages' order.
class WizardTour {
  public:
    WizardTour(Driver& driver, QWidget& dialog)
        : m_driver(driver), m_dialog(dialog), m_sheet(SheetOf(dialog)) {}

    void Run() {
        ChooseTables();
        Show(1, "query-2-relations", [this] { FillRows(4, {"Roads", "FromCity", "Cities", "Id"}); });
        Show(2, "query-3-fields", [this] {
            FillRows(2, {"Roads", "Name", "Roads", "RoundedKm", "Cities", "中文名", "Cities",
                         "[Rounded population]"});
        });
        Show(3, "query-4-conditions", [this] { SetConditions(); });
        Show(4, "query-5-sort", [this] { SetOrder(); });
        Show(5, "query-6-statement", [this] { Check(); });
        m_driver.Click(Control(IDOK));
    }

  private:
    static CPropertySheet& SheetOf(QWidget& dialog) {
        auto* sheet = dynamic_cast<CPropertySheet*>(qt::WindowOf(&dialog));
        return sheet ? *sheet : throw TourFailure("the dialog that opens is no wizard");
    }

    CWnd& Item(int id) const {
        CWnd* item = m_page->GetDlgItem(id);
        return item ? *item : throw TourFailure("the wizard's page has no control " + std::to_string(id));
    }
    QWidget& Control(int id) const { return *qt::WidgetOf(id == IDOK ? *m_sheet.GetDlgItem(id) : Item(id)); }
    CGridCtrl& Grid() const { return dynamic_cast<CGridCtrl&>(Item(resources::kGrid)); }

    // Goes to the page by its tab, does what there is to do there, and keeps a picture.
    void Show(int page, const char* picture, const std::function<void()>& use) {
        auto& tabs = *m_dialog.findChild<QTabBar*>();
        if (page > 0)
            m_driver.Click(tabs, tabs.tabRect(page).center());
        m_driver.Expect([&] { return m_sheet.GetActiveIndex() == page; }, "a click on a tab shows its page");
        m_page = m_sheet.GetPage(page);
        use();
        m_driver.Shoot(m_dialog, QLatin1String(picture));
    }

    QPoint PlaceOf(QAbstractItemView& list, const char* text) {
        const auto found = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole,
                                               QString::fromUtf8(text), 1, Qt::MatchExactly);
        if (found.isEmpty())
            throw TourFailure(std::string("the list has no ") + text);
        list.scrollTo(found.first());
        return list.visualRect(found.first()).center();
    }

    void ChooseTables() {
        Show(0, "query-1-tables", [this] {
            auto& available = dynamic_cast<QAbstractItemView&>(Control(resources::kAvailableList));
            auto& chosen = dynamic_cast<QAbstractItemView&>(Control(resources::kSelectedList));
            while (chosen.model()->rowCount() > 0)  // of the run before
                m_driver.DoubleClick(*chosen.viewport(),
                                     chosen.visualRect(chosen.model()->index(0, 0)).center());
            m_driver.DoubleClick(*available.viewport(), PlaceOf(available, "Cities"));
            m_driver.Click(*available.viewport(), PlaceOf(available, "Roads"));
            m_driver.Click(Control(resources::kAddButton));
            m_driver.Expect([&] { return chosen.model()->rowCount() == 2; }, "two tables are chosen");
        });
    }

    void ClickCell(int row, int col) {
        CRect cell;
        if (!Grid().GetCellRect(row, col, &cell))
            throw TourFailure("a cell of the wizard's does not show");
        m_driver.Click(Control(resources::kGrid),
                       {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2});
    }

    void ExpectText(int row, int col, const char* text) {
        m_driver.Expect([&] { return Shown(Grid().GetItemText(row, col)) == QString::fromUtf8(text); },
                        std::string("what was typed into a cell of the wizard's is taken over: ") + text);
    }

    // From the first row on, so many columns each: every Tab takes over what was typed and opens the next
    // cell's editor.
    void FillRows(int columns, const std::vector<const char*>& texts) {
        ClickCell(1, 0);
        for (int i = 0; const char* text : texts) {
            m_driver.Type(QString::fromUtf8(text));
            m_driver.Key(Qt::Key_Tab);
            ExpectText(1 + i / columns, i % columns, text);
            ++i;
        }
        m_driver.Key(Qt::Key_Escape);  // the editor behind the last one
    }

    void FillCell(int row, int col, const char* text) {
        ClickCell(row, col);
        m_driver.Type(QString::fromUtf8(text));
        m_driver.Key(Qt::Key_Return);
        ExpectText(row, col, text);
    }

    // From the list, as it is asked of the catalog.
    void ChooseInCell(int row, int col, int downs, const char* text) {
        ClickCell(row, col);
        m_driver.Key(Qt::Key_Return, QStringLiteral("\r"));
        m_driver.Key(Qt::Key_F4);
        for (int i = 0; i < downs; ++i)
            m_driver.Key(Qt::Key_Down);
        m_driver.Key(Qt::Key_Return, QStringLiteral("\r"));
        m_driver.Key(Qt::Key_Tab);
        ExpectText(row, col, text);
        m_driver.Key(Qt::Key_Escape);
    }

    void SetConditions() {
        m_driver.Click(Control(resources::kAddColumnButton));
        FillCell(1, 1, "Cities");
        FillCell(2, 1, "[Rounded population]");
        FillCell(3, 1, ">=20000000");
        FillCell(1, 2, "Roads");
        FillCell(2, 2, "RoundedKm");
        if (Grid().GetRowCount() < 5)
            m_driver.Click(Control(resources::kAddRowButton));
        FillCell(4, 2, ">1000");
    }

    void SetOrder() {
        FillCell(1, 1, "Roads");
        FillCell(1, 2, "RoundedKm");
        ChooseInCell(1, 3, 2, "降序");
    }

    void Check() {
        m_driver.Click(Control(resources::kCheckButton));
        m_driver.Expect([this] { return Grid().GetRowCount() > 1; }, "the check button shows the first rows");
    }

    Driver& m_driver;
    QWidget& m_dialog;
    CPropertySheet& m_sheet;
    CPropertyPage* m_page = nullptr;
};

// A press on the command's button in the tool bar, which opens a dialog.
void Command(Driver& driver, const char* name, const std::function<void(QWidget&)>& answer) {
    auto& button = *driver.Find<QToolBar>("tools").widgetForAction(&driver.Find<QAction>(name));
    driver.InDialog([&] { driver.Click(button); }, answer);
}

void TypeFile(Driver& driver, QWidget& dialog, const QString& path) {
    auto& field = *dialog.findChild<QLineEdit*>(QStringLiteral("file"));
    driver.Expect([&] { return field.hasFocus(); }, "a dialog that asks for a file begins with its field");
    driver.Type(path);
}

void MakeSample(const QString& path) {
    QFile::remove(path);
    CDatabase database;
    database.SetNarrowCharset("UTF-8");
    database.Open(ToGbk(QStringLiteral("Driver=SQLite3;JournalMode=MEMORY;Database=") + path));
    sample::WriteSample(database);
}

}  // namespace

void UseDataPage(Driver& driver, const DataPage& page, const QDir& folder) {
    const QString database = folder.absoluteFilePath(QStringLiteral("atlas.db"));
    MakeSample(database);
    Command(driver, "open", [&](QWidget& dialog) {
        TypeFile(driver, dialog, database);
        driver.Shoot(dialog, QStringLiteral("open"));
        driver.Key(Qt::Key_Return);
    });
    driver.Expect([&] { return page.IsConnected(); }, "the sample database is opened");
    ShootDataPage(driver, page);
    std::cout << page.ExecutedStatement().ToUtf8().value() << std::endl;

    const QString file = folder.absoluteFilePath(QStringLiteral("export.csv"));
    QFile::remove(file);
    Command(driver, "export", [&](QWidget& dialog) {
        TypeFile(driver, dialog, file);
        driver.Shoot(dialog, QStringLiteral("export"));
        driver.Key(Qt::Key_Return);
    });
    driver.Expect([&] { return QFile::exists(file); }, "the rows are exported");
}

void ShootDataPage(Driver& driver, const DataPage& page) {
    Command(driver, "construct", [&](QWidget& dialog) { WizardTour(driver, dialog).Run(); });
    driver.Expect([&] { return page.Table().Grid().GetRowCount() > 1; }, "the statement's rows are shown");
    driver.Shoot(*page.window(), QStringLiteral("host"));
    Command(driver, "types", [&](QWidget& dialog) { driver.Shoot(dialog, QStringLiteral("types")); });
}

}  // namespace kortavin::desktop
