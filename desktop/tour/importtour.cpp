#include <QtCore/QFile>
#include <QtGui/QAction>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QToolBar>

#include "desktop/datapage.h"
#include "desktop/text.h"
#include "desktop/tour/driver.h"
#include "desktop/tour/tour.h"
#include "kortavin/grid/gridctrl.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/resources/dialogs.h"

namespace kortavin::desktop {
namespace {

constexpr const char* kText =
    "河流,km,国家,Name\n"
    "涅瓦河,70,俄罗斯,Neva\n"
    "奥得河,850,波兰,Oder\n"
    "瓜迪亚纳河,820,西班牙,Guadiana\n";

void MakeText(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(kText) < 0)
        throw TourFailure("the text to be imported cannot be written: " + path.toStdString());
}

// By the keyboard. The rivers' numbers are left to the database.
void AskForRivers(Driver& driver, QWidget& dialog, const QString& path) {
    auto& table = *dialog.findChild<QComboBox*>(QStringLiteral("table"));
    auto& fields = *dialog.findChild<QListWidget*>(QStringLiteral("fields"));
    driver.Type(path);
    driver.TabTo(*dialog.findChild<QPushButton*>(QStringLiteral("browse")));
    driver.TabTo(*dialog.findChild<QComboBox*>(QStringLiteral("encoding")));
    driver.TabTo(*dialog.findChild<QComboBox*>(QStringLiteral("separator")));
    driver.TabTo(table);
    driver.Type(QStringLiteral("Rivers"));
    driver.Expect([&] { return table.currentText() == QStringLiteral("Rivers") && fields.count() == 5; },
                  "the import dialog lists the fields of the table that is chosen");
    driver.TabTo(fields);
    driver.Key(Qt::Key_Home);
    driver.Key(Qt::Key_Space, QStringLiteral(" "));
    driver.Expect([&] { return fields.item(0)->checkState() == Qt::Unchecked; },
                  "the space key takes a field back");
    driver.Shoot(dialog, QStringLiteral("import"));
    driver.Key(Qt::Key_Return);
}

// Types one column's name, takes the others from the list.
class Matching {
  public:
    Matching(Driver& driver, QWidget& dialog)
        : m_driver(driver),
          m_dialog(dialog),
          m_window(*qt::WindowOf(&dialog)),
          m_grid(dynamic_cast<CGridCtrl&>(*m_window.GetDlgItem(resources::kMatchListGrid))) {}

    void Run() {
        m_driver.Click(*qt::WidgetOf(m_grid), MiddleOf(1));
        m_driver.Type(QStringLiteral(" name"));
        Enter();
        Choose(2, 1, "河流");
        Choose(4, 2, "km");
        m_driver.Click(*qt::WidgetOf(*m_window.GetDlgItem(IDOK)));
    }

  private:
    QPoint MiddleOf(int row) {
        CRect cell;
        m_grid.GetCellRect(row, 1, &cell);
        return {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
    }
    void Enter() { m_driver.Key(Qt::Key_Return, QStringLiteral("\r")); }
    void Choose(int row, int ups, const char* column) {
        m_driver.DoubleClick(*qt::WidgetOf(m_grid), MiddleOf(row));
        m_driver.Key(Qt::Key_F4);
        for (int i = 0; i < ups; ++i)
            m_driver.Key(Qt::Key_Up);
        m_driver.Shoot(m_dialog, QStringLiteral("match"));
        Enter();
        Enter();
        Expect(row, column);
    }
    void Expect(int row, const char* text) {
        m_driver.Expect([&] { return Shown(m_grid.GetItemText(row, 1)) == QString::fromUtf8(text); },
                        std::string("the matching dialog takes over the column ") + text);
    }

    Driver& m_driver;
    QWidget& m_dialog;
    CWnd& m_window;
    CGridCtrl& m_grid;
};

}  // namespace

void UseImport(Driver& driver, const DataPage& page, const QDir& folder) {
    const QString path = folder.absoluteFilePath(QStringLiteral("rivers.csv"));
    MakeText(path);
    auto& button = *driver.Find<QToolBar>("tools").widgetForAction(&driver.Find<QAction>("import"));
    driver.InDialogs([&] { driver.Click(button); },
                     {[&](QWidget& dialog) { AskForRivers(driver, dialog, path); },
                      [&](QWidget& dialog) { Matching(driver, dialog).Run(); }});
    driver.Expect([&] { return page.Status() == QStringLiteral("已导入 3 行到 Rivers。"); },
                  "the text's lines are imported: " + page.Status().toStdString());
}

}  // namespace kortavin::desktop
