#include "tests/support/databases.h"
// Before what is named alike.
#include <QComboBox>
#include <QDialog>
#include <QInputMethodEvent>
#include <QListWidget>
#include <QTabBar>
#include <thread>

#include "grid/gridctrl.h"
#include "resources/dialogs.h"
#include "service/querysql.h"
#include "tests/framework/qt/qttest.h"
#include "wizard/sqlsheet.h"

// The query wizard by real events. Texts are UTF-8.
namespace {

using namespace kortavin::resources;
using namespace kortavin::test;
using kortavin::testing::WidgetOf;
namespace window = kortavin::window;

CSqlSheet& Sheet() {
    HWND top = window::FocusWindow();
    while (top->Parent() != nullptr)
        top = top->Parent();
    return dynamic_cast<CSqlSheet&>(*top->Object());
}
CWnd& Control(int id) {
    CWnd* const ofPage = Sheet().GetPage(Sheet().GetActiveIndex())->GetDlgItem(id);
    return *(ofPage != nullptr ? ofPage : Sheet().GetDlgItem(id));
}
CGridCtrl& Grid() {
    return dynamic_cast<CGridCtrl&>(Control(kGrid));
}
std::string RowText(int row) {
    CString all;
    for (int col = 0; col < Grid().GetColumnCount(); ++col)
        all += CString(col > 0 ? "|" : "") + Grid().GetItemText(row, col);
    return all.ToUtf8().value();
}

void Click(QWidget& widget, QPoint place = {}) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
    QCoreApplication::processEvents();
}
void Push(int id) {
    Click(WidgetOf(Control(id)));
}
void GoTo(int tab) {
    QTabBar& bar = *WidgetOf(Sheet()).findChild<QTabBar*>();
    Click(bar, bar.tabRect(tab).center());
}
// ⇥ ⇤ Tab and Shift+Tab, ⇨ ⇦ the same with Ctrl, ⏎ ␣ ↓ → ⇲ Enter, Space, arrows and End; all else is typed,
// what is not ASCII by an input method.
void Keys(std::string signs) {
    constexpr auto kShift = Qt::SHIFT, kCtrl = Qt::CTRL;
    const QKeyCombination keys[] = {Qt::Key_Tab,         kShift | Qt::Key_Backtab,
                                    kCtrl | Qt::Key_Tab, kCtrl | kShift | Qt::Key_Backtab,
                                    Qt::Key_Return,      Qt::Key_Space,
                                    Qt::Key_Down,        Qt::Key_Right,
                                    Qt::Key_End};
    for (; !signs.empty(); QCoreApplication::processEvents()) {
        const std::string sign = signs.substr(0, (signs[0] & 0x80) != 0 ? 3 : 1);
        const std::size_t place = std::string("⇥⇤⇨⇦⏎␣↓→⇲").find(sign);
        signs.erase(0, sign.size());
        QWidget* const focus = QApplication::focusWidget();
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromStdString(sign));
        if (place != std::string::npos)
            QTest::keyClick(focus, keys[place / 3].key(), keys[place / 3].keyboardModifiers());
        else
            sign.size() == 1 ? QTest::keyClick(focus, sign[0])
                             : void(QCoreApplication::sendEvent(focus, &commit));
    }
}
// By clicks: the first may only bring the focus.
void Edit(int row, int col, const std::string& keys = "") {
    CRect cell;
    ASSERT_TRUE(Grid().GetCellRect(row, col, &cell));
    CPoint place(cell.left + 5, cell.bottom - 5);
    Grid().ClientToScreen(&place);
    for (int i = 0; i < 2 && Grid().GetDlgItem(GridEditorControlId) == nullptr; ++i)
        Click(WidgetOf(Grid()), WidgetOf(Grid()).mapFromGlobal(QPoint(place.x, place.y)));
    Keys(keys);
}
void Pick(int row, int col, const std::string& item) {
    Edit(row, col);
    auto& combo = static_cast<QComboBox&>(WidgetOf(*Grid().GetDlgItem(GridEditorControlId)));
    const int index = combo.findText(QString::fromStdString(item));
    ASSERT_GE(index, 0) << item;
    Click(combo, {combo.width() - 3, combo.height() / 2});
    const QPoint place = combo.view()->visualRect(combo.model()->index(index, 0)).center();
    kortavin::testing::MoveMouse(*combo.view()->viewport(), place);
    Click(*combo.view()->viewport(), place);
    Keys("⏎");
}

class QtWizard : public DatabaseFixture {
  protected:
    explicit QtWizard(Backend backend = Backend::Sqlite) : DatabaseFixture(backend) {
        QApplication::setDoubleClickInterval(0);  // within it, a popup ignores a click
        window::SetMessageBoxHandler([this](const char*, UINT) { return ++boxes, IDOK; });
    }
    ~QtWizard() override {
        window::SetMessageBoxHandler({});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const QWidget* const widget : QApplication::topLevelWidgets())
            EXPECT_EQ(widget->windowType(), Qt::Desktop);
    }
    void Run(const std::string& statement, const std::function<void()>& user) {
        kortavin::testing::InNextBox<QDialog>([&](QDialog&) { user(); });
        CString sql;
        EXPECT_EQ(query.ConstructQuery(sql), 1);
        EXPECT_EQ(sql.ToUtf8(), statement);
    }

    CQuerySql query{&m_database};
    int boxes = 0;
};

class QtWizardOnDatabase : public QtWizard, public ::testing::WithParamInterface<Backend> {
  protected:
    QtWizardOnDatabase() : QtWizard(GetParam()) {}
};
INSTANTIATE_TEST_SUITE_P(On, QtWizardOnDatabase, kEveryBackend, BackendName);

}  // namespace

TEST_P(QtWizardOnDatabase, EveryPageAddsItsClauseAndTheStatementRuns) {
    const std::string a = MakeTable("town integer, 名称 varchar(20), width integer");
    const std::string b = MakeTable("id integer, 名称 varchar(20)");
    Execute("INSERT INTO " + a + " VALUES (1, '二环', 12), (1, '小巷', 4), (2, '环路', 30)");
    Execute("INSERT INTO " + b + " VALUES (1, '东镇'), (2, '西镇')");
    const std::string fields = a + ".名称," + b + ".名称", relation = "(" + a + ".town = " + b + ".id)";
    const std::string where = "((" + a + ".width>10 AND " + b + ".名称='西镇') OR (" + a + ".width=12) )";
    const std::string rest = " WHERE (" + relation + ") AND " + where + "ORDER BY " + a + ".名称 ASC";
    Run("SELECT " + fields + " FROM " + a + "," + b + rest, [&] {
        auto& list = static_cast<QListWidget&>(WidgetOf(Control(kAvailableList)));
        Keys(a);
        Push(kAddButton);
        list.setFocus();
        list.keyboardSearch("");  // ends the former name
        Keys(b);
        const QPoint place = list.visualItemRect(list.currentItem()).center();
        Click(*list.viewport(), place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
        GoTo(1);
        Pick(1, 0, a), Pick(1, 1, "town"), Pick(1, 2, b), Pick(1, 3, "id");
        GoTo(2);
        Keys("⇨⇤⏎↓⏎→⏎↓↓⏎→→↓");
        Edit(2, 0, "↓⏎→⏎↓↓⏎");
        GoTo(3);
        Push(kAddColumnButton);
        Pick(1, 1, a), Pick(2, 1, "width"), Pick(1, 2, b), Pick(2, 2, "名称");
        Edit(3, 1, ">10⏎"), Edit(3, 2, "='西镇'⏎"), Edit(4, 1, "=12⏎");
        GoTo(4);
        Pick(1, 1, a), Pick(1, 2, "名称"), Pick(1, 3, "升序");
        GoTo(5);
        Push(kCheckButton);
        EXPECT_EQ(RowText(1) + "/" + RowText(2), "0|二环|东镇/1|环路|西镇");
        Push(IDOK);
    });
    EXPECT_EQ(boxes, 0);
}

TEST_F(QtWizard, WorksByTheKeyboardAlone) {
    Execute("CREATE TABLE A (x integer)");
    Execute("CREATE TABLE B (x integer)");
    const std::string toTheNextPage = "→⇥", back = "⇦" + toTheNextPage;
    Run("SELECT B.y FROM A,B WHERE ((A.x = B.x)) AND ((A.x='甲') )ORDER BY B.x ASC,1", [&] {
        Keys("↓⇥⇥␣⇤⇤↓⇥⇥␣⇥⇥⇥" + toTheNextPage);  // past Cancel to the tabs
        Keys("⏎↓⏎→⏎↓⏎→⏎↓↓⏎→⏎↓⏎" + back);
        Keys("⏎B⇥y⏎⇨⇥⇥⇥" + toTheNextPage);
        Keys("⏎↓⏎↓⏎↓⏎↓='甲'⏎" + back);
        Keys("⏎↓↓⏎→⏎↓⏎→⏎↓⏎" + back);
        Keys("⇲,1⇥⇥⇨⇥⇥⏎");
    });
}

TEST_P(QtWizardOnDatabase, StaysUsableWhenTheServerEndsTheConnectionInACheck) {
    if (m_backend != Backend::PostgresqlAnsi && m_backend != Backend::PostgresqlUnicode)
        GTEST_SKIP() << "Only PostgreSQL ends a connection by a statement.";
    CGeoDatabase other;
    other.Open(CString(m_connectionString));
    Run("SELECT pg_sleep(60)", [&] {
        GoTo(5);
        Control(kStatementEdit).SetWindowText("SELECT 1");
        Push(kCheckButton);
        Control(kStatementEdit).SetWindowText("SELECT pg_sleep(60)");
        std::jthread killer([&] {
            _CRecordsetEx killed(&other);
            do
                killed.Close(), killed.OpenSql(
                                    "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE query LIKE "
                                    "'%pg_sleep(60)' AND state = 'active' AND pid <> pg_backend_pid()");
            while (killed.IsEOF());
        });
        Push(kCheckButton);
        EXPECT_EQ(RowText(1), "0|1");
        GoTo(2);
        Edit(1, 0, "t⏎");
        EXPECT_EQ(boxes, 0);
        Edit(1, 1, "⏎");
        EXPECT_EQ(boxes, 1);  // the columns cannot be told
        GoTo(5);
        Control(kStatementEdit).SetWindowText("SELECT pg_sleep(60)");
        Push(IDOK);
    });
}
