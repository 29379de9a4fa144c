#include <unistd.h>

#include <QComboBox>
#include <QDialog>
#include <QInputMethodEvent>
#include <QListView>
#include <QTabBar>
#include <thread>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/resources/dialogs.h"
#include "kortavin/service/querysql.h"
#include "kortavin/wizard/sqlsheet.h"
#include "tests/qt/qttest.h"
#include "tests/support/databases.h"

// The query wizard by real events. Texts are UTF-8.
namespace {

using namespace kortavin::resources;
using namespace kortavin::test;
using kortavin::testing::WidgetOf;
namespace window = kortavin::window;

using kortavin::CSqlSheet;

CSqlSheet& Sheet() {
    CWnd* top = CWnd::GetFocus();
    while (top->GetParent() != nullptr)
        top = top->GetParent();
    return dynamic_cast<CSqlSheet&>(*top);
}
CWnd& Control(int id) {
    CWnd* const ofPage = Sheet().GetPage(Sheet().GetActiveIndex())->GetDlgItem(id);
    return *(ofPage != nullptr ? ofPage : Sheet().GetDlgItem(id));
}
CGridCtrl& Grid() {
    return dynamic_cast<CGridCtrl&>(Control(kGrid));
}
void Click(QWidget& widget, QPoint place = {}) {
    const QPoint inWindow = widget.mapTo(widget.window(), place.isNull() ? widget.rect().center() : place);
    const QWidget* const hit = widget.window()->childAt(inWindow);
    EXPECT_TRUE(hit == &widget || widget.isAncestorOf(hit)) << "something lies over it";
    QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
    QCoreApplication::processEvents();
}
void GoTo(int tab) {
    QTabBar& bar = *WidgetOf(Sheet()).findChild<QTabBar*>();
    Click(bar, bar.tabRect(tab).center());
}
// ⇥ ⇤ Tab and Shift+Tab, ⇨ ⇦ the same with Ctrl, ⏎ ␣ ↓ → ⇲ Enter, Space, arrows and End; all else is typed,
// what is not ASCII by an input method.
void Keys(std::string signs) {
    const auto keys =
        QString("Tab Shift+Backtab Ctrl+Tab Ctrl+Shift+Backtab Return Space Down Right End").split(' ');
    for (; !signs.empty(); QCoreApplication::processEvents()) {
        const std::string sign = signs.substr(0, (signs[0] & 0x80) != 0 ? 3 : 1);
        const std::size_t place = std::string("⇥⇤⇨⇦⏎␣↓→⇲").find(sign);
        signs.erase(0, sign.size());
        const auto key = QKeySequence(keys.value(static_cast<int>(place / 3), "Tab"))[0];
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromStdString(sign));
        if (place != std::string::npos)
            QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
        else if (sign.size() == 1)
            QTest::keyClick(QApplication::focusWidget(), sign[0]);
        else
            QCoreApplication::sendEvent(QApplication::focusWidget(), &commit);
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
    Click(combo, {combo.width() - 3, combo.height() / 2});
    combo.view()->setCurrentIndex(combo.model()->index(combo.findText(QString::fromStdString(item)), 0));
    Keys("⏎⏎");
}

class QtWizard : public EveryDatabaseTest {
  protected:
    void SetUp() override {
        window::SetMessageBoxHandler([this](const char*, UINT) { return ++boxes, IDOK; });
        EveryDatabaseTest::SetUp();
        a = IsSkipped() ? "" : MakeTable("town integer, 名称 varchar(20), width integer");
        b = IsSkipped() ? "" : MakeTable("id integer, 名称 varchar(20)");
    }
    void TearDown() override {
        EveryDatabaseTest::TearDown();
        window::SetMessageBoxHandler({});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const QWidget* const widget : QApplication::topLevelWidgets())
            EXPECT_EQ(widget->windowType(), Qt::Desktop);
    }
    // $a and $b in the statement are the tables' names.
    void Run(std::string statement, const std::function<void()>& user) {
        for (std::size_t at; (at = statement.find('$')) != std::string::npos;)
            statement.replace(at, 2, statement[at + 1] == 'a' ? a : b);
        kortavin::testing::InNextBox<QDialog>([&](QDialog&) { user(); });
        CString sql;
        EXPECT_EQ(query.ConstructQuery(sql), 1);
        EXPECT_EQ(sql.ToUtf8(), statement);
    }

    CQuerySql query{&m_database};
    std::string a, b;
    int boxes = 0;
};
INSTANTIATE_TEST_SUITE_P(On, QtWizard, kEveryBackend, BackendName);

}  // namespace

TEST_P(QtWizard, WorksByTheMouse) {
    Execute("INSERT INTO " + a + " VALUES (1, '二环', 12), (1, '小巷', 4), (2, '环路', 30)");
    Execute("INSERT INTO " + b + " VALUES (1, '东镇'), (2, '西镇')");
    Run("SELECT $b.名称,$a.名称 FROM $a,$b WHERE (($a.town = $b.id)) AND (($a.width>10 AND $b.名称='西镇') "
        "OR ($a.width=12) )ORDER BY $a.名称 ASC",
        [&] {
            auto& list = static_cast<QListView&>(WidgetOf(Control(kAvailableList)));
            Keys(a);
            Click(WidgetOf(Control(kAddButton)));
            list.setFocus(), Keys("↓");
            const QPoint place = list.visualRect(list.currentIndex()).center();
            Click(*list.viewport(), place);
            QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
            GoTo(1);
            Pick(1, 0, a), Pick(1, 1, "town"), Pick(1, 2, b), Pick(1, 3, "id");
            GoTo(2);
            Pick(1, 0, b), Pick(1, 1, "名称"), Pick(2, 0, a), Pick(2, 1, "名称");
            GoTo(3);
            Click(WidgetOf(Control(kAddColumnButton)));
            Pick(1, 1, a), Pick(2, 1, "width"), Pick(1, 2, b), Pick(2, 2, "名称");
            Edit(3, 1, ">10⏎"), Edit(3, 2, "='西镇'⏎"), Edit(4, 1, "=12");
            GoTo(4);  // which ends the edit
            Pick(1, 1, a), Pick(1, 2, "名称"), Pick(1, 3, "升序");
            GoTo(5);
            Click(WidgetOf(Control(kCheckButton)));
            EXPECT_EQ(Grid().GetItemText(2, 2).View(), Gbk("环路"));
            Click(WidgetOf(Control(IDOK)));
        });
    EXPECT_EQ(boxes, 0);
}

TEST_P(QtWizard, WorksByTheKeyboardAlone) {
    const std::string toTheNextPage = "→⇥", back = "⇦" + toTheNextPage;
    Run("SELECT B.y FROM $a,$b WHERE (($a.town = $b.id)) AND (($a.town='甲') )ORDER BY $b.名称 ASC,1", [&] {
        Keys(a + "⇥⇥␣⇤⇤↓⇥⇥␣⇥⇥⇥" + toTheNextPage);  // past Cancel to the tabs
        Keys("⏎↓⏎→⏎↓⏎→⏎↓↓⏎→⏎↓⏎" + back);
        Keys("⏎B⇥y⏎⇨⇥⇥⇥" + toTheNextPage);
        Keys("⏎↓⏎↓⏎↓⏎↓='甲'⏎" + back);
        Keys("⏎↓↓⏎→⏎↓↓⏎→⏎↓⏎" + back);
        Keys("⇲,1⇥⇥⇨⇥⇥⏎");
    });
    EXPECT_EQ(boxes, 0);
}

TEST_P(QtWizard, StaysUsableWhenTheServerEndsTheConnectionInACheck) {
    if (m_backend != Backend::PostgresqlAnsi && m_backend != Backend::PostgresqlUnicode)
        GTEST_SKIP() << "Only PostgreSQL ends a connection by a statement.";
    // The same test may run beside this one: neither's statements are to be found by the other's.
    const std::string mark = std::to_string(getpid());
    const CString sleep(("SELECT pg_sleep(60." + mark + ")").c_str());
    const CString kill(
        ("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE query LIKE '%pg_sleep(60.' || '" +
         mark + ")%'")
            .c_str());
    CGeoDatabase other;
    other.Open(CString(m_connectionString + ";UseDeclareFetch=0"));
    Run(sleep.GetString(), [&] {
        GoTo(5);
        Control(kStatementEdit).SetWindowText("SELECT 1");
        Click(WidgetOf(Control(kCheckButton)));
        Control(kStatementEdit).SetWindowText(sleep);
        const std::jthread killer([&](const std::stop_token& stop) {
            _CRecordsetEx killed(&other);
            for (killed.OpenSql(kill); killed.IsEOF() && !stop.stop_requested(); killed.OpenSql(kill))
                killed.Close();
        });
        Click(WidgetOf(Control(kCheckButton)));
        EXPECT_STREQ(Grid().GetItemText(1, 1), "1");
        GoTo(2);
        Edit(1, 0, "t⏎");
        EXPECT_EQ(boxes, 0);
        Edit(1, 1, "⏎");
        EXPECT_EQ(boxes, 1);  // the columns cannot be told
        GoTo(5);
        Control(kStatementEdit).SetWindowText(sleep);
        Click(WidgetOf(Control(IDOK)));
    });
}
