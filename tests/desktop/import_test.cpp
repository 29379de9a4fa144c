#include <gmock/gmock.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>
#include <QtWidgets/QPushButton>

#include "desktop/datapage.h"
#include "desktop/exportjob.h"
#include "desktop/mainwindow.h"
#include "desktop/progress.h"
#include "desktop/tour/driver.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/resources/dialogs.h"
#include "kortavin/textimport/mateup.h"
#include "kortavin/textimport/mateupdlg.h"
#include "tests/support/databases.h"

namespace kortavin::desktop {
namespace {

using namespace std::string_literals;
using test::Gbk;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr const char* kTable = R"("a ""b"" 表")";
constexpr const char* kColumns = R"((Id integer, "Na""me" text UNIQUE, "中 名" double, Day date NOT NULL))";

std::string Rows(int count) {
    std::string rows;
    for (int i = 1; i <= count; ++i) {
        const std::string number = std::to_string(i);
        rows += number + (i % 3 == 0 ? ",," : ",伡|中国𠀀" + number + ",") + number + ".5,2024-03-01\r\n";
    }
    return rows;
}

class ImportTest : public test::DatabaseFixture {
  protected:
    ImportTest() : m_driver(m_window, QDir()) { m_database.SetNarrowCharset("UTF-8"); }
    void SetUp() override {
        DatabaseFixture::SetUp();
        Execute("CREATE TABLE "s + kTable + kColumns);
        ASSERT_TRUE(m_window.Data().Open(QString::fromStdString(m_folder / "test.db")));
    }

    static CWnd& Item(QWidget& dialog, int id) { return *qt::WindowOf(&dialog)->GetDlgItem(id); }
    void Confirm(QWidget& dialog) { m_driver.Click(*qt::WidgetOf(Item(dialog, IDOK))); }

    // The answers are to what opens behind the dialog that asks for the file.
    void Import(std::string_view bytes, std::vector<Driver::Answer> answers, const char* separator = "逗号") {
        MakeFile(m_folder / "in.txt", bytes);
        answers.insert(answers.begin(), [&](QWidget& dialog) {
            m_driver.Type(QString::fromStdString(m_folder / "in.txt"));
            dialog.findChild<QComboBox*>("separator")->setCurrentText(QString::fromUtf8(separator));
            m_driver.Key(Qt::Key_Return);
        });
        m_driver.InDialogs([&] { QTest::keyClick(&m_window, Qt::Key_I, Qt::ControlModifier); }, answers);
    }
    std::string Imported() {
        const QString path = QString::fromStdString(m_folder / "out.txt");
        Progress progress(m_window, QString());
        ExportStatement(m_database, CString("SELECT * FROM ") + Gbk(kTable).c_str(),
                        {path, {.header = false}}, progress);
        Execute("DELETE FROM "s + kTable);
        return ContentOf(path.toStdString());
    }
    std::string Status() { return m_window.Data().Status().toStdString(); }

    MainWindow m_window;
    Driver m_driver;
    std::string m_told;
    const Driver::Answer m_confirm = [this](QWidget& dialog) { Confirm(dialog); };
    const Driver::Answer m_cancel = [this](QWidget&) { m_driver.Key(Qt::Key_Escape); };
    const Driver::Answer m_note = [this](QWidget& dialog) {
        m_told = dynamic_cast<QMessageBox&>(dialog).text().toStdString();
    };
};

TEST_F(ImportTest, EveryWayToWriteATextArrivesEqual) {
    const std::string rows = Rows(5000), text = "Id,Na'me,é x,Day\r\n" + rows;
    for (const std::string& bytes : {text, "\xEF\xBB\xBF" + text, Gbk(text)})
        for (const char* end : {"\r\n", "\n", "\r"}) {
            Import(QByteArray::fromStdString(bytes).replace("\r\n", end).toStdString(), {m_confirm});
            EXPECT_THAT(Status(), HasSubstr("已导入 5,000 行"));
            EXPECT_TRUE(Imported() == Gbk(rows)) << bytes.substr(0, 3) << " with " << *end - 0;
        }
    Import(Gbk("亅|亅|亅|亅\r\n'1'|\"亅\"||2024-03-01\r\n\r\n2|\"o'亅'\"|.25|'2024-03-02"), {m_confirm},
           "竖线");
    EXPECT_EQ(Query("SELECT count(*) FROM "s + kTable + R"( WHERE "中 名" IS NULL)")[0][0], "1");
    EXPECT_EQ(Imported(), Gbk("1,亅,,2024-03-01\r\n2,o'亅',0.25,2024-03-02\r\n"));
}

TEST_F(ImportTest, WhatIsRefusedIsToldWithItsLineAndNothingIsImported) {
    const std::string start = "Id,Name,x,Day\n1,a,1,2024-03-01\n";
    const std::tuple<std::string, bool, std::vector<std::string>> cases[] = {
        {start + "2,b\n", true, {"第 3 行：2,b\n", "有 2 个值，应有 4 个"}},
        {start + "\n2,a,3,2024-03-01", true, {"第 4 行：2,a,3,2024-03-01", "UNIQUE"}},
        {start + "2,b,3,\n3,c,,2024-03-01", true, {"第 3 行：2,b,3,\n", "NOT NULL"}},
        {start + "\n2,\xFF,3,2024-03-01\n", false, {"第 4 行：2,\\xFF,3", "GBK"}},
        {"\xEF\xBB\xBF" + start + "2,b\xB4\r3", false, {"第 3 行：2,b\\xB4\n", "UTF-8"}},
        {start + "2,\0"s, false, {"值为零"}},
        {"", false, {"第一行是空的"}},
        {"one\n1\n", false, {"只有一列"}}};
    for (const auto& [bytes, isMatched, told] : cases) {
        Import(bytes, isMatched ? std::vector{m_confirm, m_note, m_cancel} : std::vector{m_note, m_cancel});
        for (const std::string& part : told)
            EXPECT_THAT(m_told, HasSubstr(part));
        EXPECT_EQ(Imported(), "") << m_told;
    }
    QTimer poll;
    poll.callOnTimeout([] {
        if (auto* progress = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget()))
            QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton);
    });
    poll.start(0);
    Import(start + Rows(100000), {m_confirm, m_cancel});
    EXPECT_THAT(Status(), HasSubstr("导入已取消"));
    EXPECT_EQ(Imported(), "");
}

TEST_F(ImportTest, ColumnsAreChosenByMouseByKeysAndTyped) {
    QApplication::setDoubleClickInterval(0);  // the release of a press that opens a list may come at once
    const auto choose = [this](QWidget& dialog) {
        auto& grid = dynamic_cast<CGridCtrl&>(Item(dialog, resources::kMatchListGrid));
        const auto open = [&](int row) -> QComboBox& {
            CRect cell;
            grid.GetCellRect(row, 1, &cell);
            m_driver.DoubleClick(*qt::WidgetOf(grid), {cell.left + 9, cell.top + 5});
            return dynamic_cast<QComboBox&>(*QApplication::focusWidget());
        };
        const auto enter = [&](int row, const char* text) {
            open(row).clearEditText();
            m_driver.Type(text);
            m_driver.Key(Qt::Key_Return, "\r");
        };
        QComboBox& list = open(1);
        m_driver.Click(list, {list.width() - 4, list.height() / 2});
        const QRect last = list.view()->visualRect(list.model()->index(3, 0));
        m_driver.Click(*list.view()->viewport(), last.center());
        m_driver.Key(Qt::Key_Return, "\r");
        open(2);
        for (const Qt::Key key : {Qt::Key_F4, Qt::Key_Up, Qt::Key_Return, Qt::Key_Return})
            m_driver.Key(key, key == Qt::Key_Return ? "\r" : "");
        enter(3, "absent");
        Confirm(dialog);
        EXPECT_EQ(QApplication::activeModalWidget(), &dialog) << "refused";
        enter(3, "  dAY ");
        Confirm(dialog);
    };
    Import("Name,Day,,NAME\n1,2024.5,3,4\n", {choose});
    EXPECT_EQ(Imported(), "4,1,2024.5,4\r\n");

    CString lists[] = {"a,b", "1,2", "x,y"};
    CWordArray matches;
    matches.Add(7);
    m_driver.InDialog([&] { EXPECT_FALSE(CMateup::Mateup(lists[0], lists[1], lists[2], matches)); },
                      m_cancel);
    EXPECT_THAT(std::vector<WORD>(matches.begin(), matches.end()), ElementsAre(7));
}

}  // namespace
}  // namespace kortavin::desktop
