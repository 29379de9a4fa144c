#include "desktop/datapage.h"

#include <gmock/gmock.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

#include "desktop/mainwindow.h"
#include "desktop/text.h"
#include "desktop/tour/driver.h"
#include "sample/sample.h"
#include "tests/support/tempfolder.h"

namespace kortavin::desktop {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

// Rows come slowly enough for the progress window, and there are a million of them.
constexpr const char* kSlowStatement =
    "SELECT (SELECT count(*) FROM Cities x, Cities y WHERE x.Id + y.Id <> d.Id) AS Pairs "
    "FROM Cities a, Cities b, Cities c, Cities d";

class DataPageTest : public ::testing::Test {
  protected:
    DataPageTest() : m_driver(m_window, QDir(QString::fromStdString(m_folder.Path().native()))) {
        const std::string path = m_folder / "atlas.db";
        CDatabase database;
        database.Open(CString("Driver=SQLite3;Database=") + path.c_str());
        sample::WriteSample(database);
        database.Close();
        EXPECT_TRUE(m_window.Data().Open(QString::fromStdString(path)));
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        QTest::keyClick(&m_window, key, modifiers);
    }

    void Execute(const char* statement) {
        m_driver.Find<QPlainTextEdit>("statement").setPlainText(QString::fromUtf8(statement));
        Press(Qt::Key_F5);
    }

    // Runs the step, in which the progress window appears, and presses that window's button.
    void Cancelling(const std::function<void()>& step) {
        bool wasThere = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, [&wasThere] {
            if (auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget())) {
                wasThere = true;
                QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton);
            }
        });
        poll.start(0);
        step();
        EXPECT_TRUE(wasThere);
    }

    std::string Told(const std::function<void()>& step) {
        std::string text;
        m_driver.InDialog(step, [&text](QWidget& dialog) {
            if (auto* box = qobject_cast<QMessageBox*>(&dialog))
                text = box->text().toStdString();
        });
        return text;
    }

    std::string Heading(int col) {
        return Shown(m_window.Data().Table().Grid().GetItemText(0, col)).toStdString();
    }
    std::string Status() { return m_window.Data().Status().toStdString(); }

    TempFolder m_folder;
    MainWindow m_window;
    Driver m_driver;
};

TEST_F(DataPageTest, ResultHasItsTypesInTheHeadings) {
    Execute("SELECT Name, 中文名, Founded, [Rounded population] FROM Cities WHERE Country = '中国'");
    EXPECT_EQ(Heading(1), "Name\r\nSQL_VARCHAR");
    EXPECT_EQ(Heading(2), "中文名\r\nSQL_VARCHAR");
    EXPECT_EQ(Heading(3), "Founded\r\nSQL_DATE");
    EXPECT_EQ(Heading(4), "Rounded population\r\nSQL_INTEGER");
    const CGridCtrl& grid = m_window.Data().Table().Grid();
    EXPECT_EQ(grid.GetItemText(1, 2).ToUtf8(), "北京");
    EXPECT_THAT(Status(), HasSubstr(std::to_string(grid.GetRowCount() - 1) + " 行"));
    EXPECT_TRUE(m_window.windowTitle().startsWith("atlas.db"));
    m_driver.InDialog([this] { Press(Qt::Key_T, Qt::ControlModifier); },
                      [](QWidget& dialog) {
                          const auto* types = dialog.findChild<QTableWidget*>("types");
                          EXPECT_EQ(types->item(2, 1)->text(), "SQL_DATE");
                      });

    EXPECT_THAT(Told([this] { Execute("SELECT Absent FROM Cities"); }), HasSubstr("no such column: Absent"));
    EXPECT_FALSE(m_window.Data().HasResult());
}

TEST_F(DataPageTest, FailingConnectionTellsTheDriversMessageAndNoPassword) {
    m_driver.InDialog([this] { Press(Qt::Key_O, Qt::ControlModifier); },
                      [this](QWidget& dialog) {
                          auto* connection = dialog.findChild<QLineEdit*>("connection");
                          connection->setFocus();
                          QTest::keyClicks(connection, "Driver=/none.so;Server=s;PWD={se;cret};Database=d");
                          const std::string text = Told([&] { QTest::keyClick(connection, Qt::Key_Return); });
                          EXPECT_THAT(text, HasSubstr("Can't open lib '/none.so'"));
                          EXPECT_THAT(text, Not(HasSubstr("cret")));
                          EXPECT_EQ(connection->text(), "Driver=/none.so;Server=s;Database=d");
                          EXPECT_EQ(dialog.findChild<QLineEdit*>("password")->text(), "se;cret");
                      });
    EXPECT_TRUE(m_window.windowTitle().startsWith("atlas.db"));  // the former one is still open
}

TEST_F(DataPageTest, CancelledExportLeavesTheFormerFile) {
    const std::string path = m_folder / "rows.csv";
    MakeFile(path, "former");
    Cancelling([this] { Execute(kSlowStatement); });
    EXPECT_THAT(Status(), HasSubstr("已停止"));

    const auto confirm = [&](QWidget& dialog) {
        auto* file = dialog.findChild<QLineEdit*>("file");
        file->setText(QString::fromStdString(path));
        m_driver.InDialog([&] { QTest::keyClick(file, Qt::Key_Return); },
                          [](QWidget& box) {
                              auto* yes = dynamic_cast<QMessageBox&>(box).button(QMessageBox::Yes);
                              QTest::mouseClick(yes, Qt::LeftButton);
                          });
    };
    Cancelling([&] { m_driver.InDialog([this] { Press(Qt::Key_E, Qt::ControlModifier); }, confirm); });
    EXPECT_THAT(Status(), HasSubstr("已取消"));
    EXPECT_EQ(ContentOf(path), "former");
    EXPECT_EQ(m_folder.CountEntries(), 2);

    Execute("SELECT Name FROM Rivers WHERE Id = 1");
    m_driver.InDialog([this] { Press(Qt::Key_E, Qt::ControlModifier); }, confirm);
    EXPECT_THAT(ContentOf(path), ::testing::StartsWith("Name\r\n"));
}

}  // namespace
}  // namespace kortavin::desktop
