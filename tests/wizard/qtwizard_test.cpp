#include "tests/support/databases.h"
// Before what is named alike.
#include <QComboBox>
#include <QDialog>
#include <QInputMethodEvent>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <thread>

#include "grid/gridctrl.h"
#include "resources/dialogs.h"
#include "service/querysql.h"
#include "tests/framework/qt/qttest.h"
#include "wizard/sqlsheet.h"

using namespace kortavin::resources;
using namespace kortavin::test;
using kortavin::testing::WidgetOf;
namespace window = kortavin::window;

// The query wizard by real events. Texts are UTF-8.
namespace {

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
std::string Statement() {
    return Control(kStatementEdit).GetWindowText().ToUtf8().value();
}
std::string RowText(int row) {
    CString all;
    for (int col = 0; col < Grid().GetColumnCount(); ++col)
        all += CString(col > 0 ? "|" : "") + Grid().GetItemText(row, col);
    return all.ToUtf8().value();
}

void Click(QWidget& widget, QPoint place = {}) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, place);
}
void Push(int id) {
    Click(WidgetOf(Control(id)));
    QCoreApplication::processEvents();
}
void GoTo(int tab) {
    QTabBar& bar = *WidgetOf(Sheet()).findChild<QTabBar*>();
    Click(bar, bar.tabRect(tab).center());
}
// ⇥ ⇤ Tab and Shift+Tab, ⇨ ⇦ the same with Ctrl, ⏎ ␣ ↓ → ⇲ Enter, Space, arrows and End; all else is typed,
// what is not ASCII by an input method.
void Keys(std::string signs) {
    constexpr auto kNone = Qt::NoModifier, kShift = Qt::ShiftModifier, kCtrl = Qt::ControlModifier;
    const std::pair<Qt::Key, Qt::KeyboardModifiers> keys[] = {
        {Qt::Key_Tab, kNone},    {Qt::Key_Backtab, kShift},
        {Qt::Key_Tab, kCtrl},    {Qt::Key_Backtab, kShift | kCtrl},
        {Qt::Key_Return, kNone}, {Qt::Key_Space, kNone},
        {Qt::Key_Down, kNone},   {Qt::Key_Right, kNone},
        {Qt::Key_End, kNone}};
    for (; !signs.empty(); QCoreApplication::processEvents()) {
        const std::string sign = signs.substr(0, (signs[0] & 0x80) != 0 ? 3 : 1);
        const std::size_t place = std::string("⇥⇤⇨⇦⏎␣↓→⇲").find(sign);
        signs.erase(0, sign.size());
        QInputMethodEvent commit;
        commit.setCommitString(QString::fromStdString(sign));
        QWidget* const focus = QApplication::focusWidget();
        if (place != std::string::npos)
            QTest::keyClick(focus, keys[place / 3].first, keys[place / 3].second);
        else if (sign.size() == 1)
            QTest::keyClick(focus, sign[0]);
        else
            QCoreApplication::sendEvent(focus, &commit);
    }
}
// By clicks: the first may only bring the focus.
void Edit(int row, int col) {
    CRect cell;
    ASSERT_TRUE(Grid().GetCellRect(row, col, &cell));
    CPoint place(cell.left + 5, cell.bottom - 5);
    Grid().ClientToScreen(&place);
    for (int i = 0; i < 2 && Grid().GetDlgItem(GridEditorControlId) == nullptr; ++i)
        Click(WidgetOf(Grid()), WidgetOf(Grid()).mapFromGlobal(QPoint(place.x, place.y)));
}
void Pick(int row, int col, const std::string& item) {
    Edit(row, col);
    auto* const combo = qobject_cast<QComboBox*>(&WidgetOf(*Grid().GetDlgItem(GridEditorControlId)));
    const int index = combo->findText(QString::fromStdString(item));
    ASSERT_GE(index, 0) << item;
    Click(*combo, {combo->width() - 3, combo->height() / 2});
    auto* const view = combo->view();
    QCoreApplication::processEvents();
    const QPoint place = view->visualRect(view->model()->index(index, 0)).center();
    kortavin::testing::MoveMouse(*view->viewport(), place);
    Click(*view->viewport(), place);
    EXPECT_FALSE(view->isVisible());
    Keys("⏎");
}
void Fill(int row, int col, const std::string& text) {
    Edit(row, col);
    Keys(text + "⏎");
}

class QtWizard : public DatabaseFixture {
  protected:
    explicit QtWizard(Backend backend = Backend::Sqlite) : DatabaseFixture(backend) {
        window::SetMessageBoxHandler(
            [this](const char* text, UINT) { return boxes.emplace_back(text), IDOK; });
    }
    ~QtWizard() override {
        window::SetMessageBoxHandler({});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const QWidget* const widget : QApplication::topLevelWidgets())
            EXPECT_EQ(widget->windowType(), Qt::Desktop);
    }
    void Run(const std::string& statement, const std::function<void()>& user) {
        kortavin::testing::InNextBox<QDialog>([&](QDialog& box) {
            user();
            if (box.isVisible())
                Sheet().EndDialog(IDCANCEL);
        });
        CString sql("nothing");
        EXPECT_EQ(query.ConstructQuery(sql), statement == "nothing" ? 0 : 1);
        EXPECT_EQ(sql.ToUtf8(), statement);
    }

    CQuerySql query{&m_database};
    std::vector<std::string> boxes;
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
    const auto named = [&](std::string text) {
        for (std::size_t at; (at = text.find('$')) != std::string::npos;)
            text.replace(at, 2, text[at + 1] == 'a' ? a : b);
        return text;
    };
    const std::string composed = named(
        "SELECT $a.名称,$b.名称 FROM $a,$b WHERE (($a.town = $b.id)) AND (($a.width>10 AND $b.名称='西镇') "
        "OR ($a.width=12) )ORDER BY $a.名称 ASC");
    Run(composed, [&] {
        auto& list = static_cast<QListWidget&>(WidgetOf(Control(kAvailableList)));
        list.setFocus();
        Keys(a);
        Click(*list.viewport(), list.visualItemRect(list.currentItem()).center());
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {},
                           list.visualItemRect(list.currentItem()).center());
        list.clearSelection();
        QTest::qWait(0);
        list.setCurrentItem(list.findItems(QString::fromStdString(b), Qt::MatchExactly).value(0));
        Push(kAddButton);
        GoTo(1);
        Pick(1, 0, a), Pick(1, 1, "town"), Pick(1, 2, b), Pick(1, 3, "id");
        GoTo(2);
        Keys("⏎↓⏎→⏎↓↓⏎⇥⏎↓↓⏎→⏎↓↓⏎");
        GoTo(3);
        Push(kAddColumnButton);
        Pick(1, 1, a), Pick(2, 1, "width"), Pick(1, 2, b), Pick(2, 2, "名称");
        Fill(3, 1, ">10"), Fill(3, 2, "='西镇'"), Fill(4, 1, "=12");
        GoTo(4);
        Pick(1, 1, a), Pick(1, 2, "名称"), Pick(1, 3, "升序");
        GoTo(5);
        EXPECT_EQ(Statement(), composed);
        Push(kCheckButton);
        ASSERT_EQ(Grid().GetRowCount(), 3);
        EXPECT_EQ(RowText(1) + "/" + RowText(2), "0|二环|东镇/1|环路|西镇");
        Push(IDOK);
    });
    EXPECT_TRUE(boxes.empty());
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

TEST_P(QtWizardOnDatabase, StaysUsableWhenTheServerDropsTheConnection) {
    if (m_backend != Backend::PostgresqlAnsi && m_backend != Backend::PostgresqlUnicode)
        GTEST_SKIP() << "Only PostgreSQL can end a connection by a statement.";
    CGeoDatabase other;
    other.Open(CString(m_connectionString));
    Run("SELECT pg_sleep(60)", [&] {
        GoTo(5);
        auto& edit = static_cast<QPlainTextEdit&>(WidgetOf(Control(kStatementEdit)));
        edit.setPlainText("SELECT 1");
        Push(kCheckButton);
        edit.setPlainText("SELECT pg_sleep(60)");
        std::jthread killer([&] {
            _CRecordsetEx killed(&other);
            do
                killed.Close(), killed.OpenSql(
                                    "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE query = "
                                    "'SELECT pg_sleep(60)' AND state = 'active'");
            while (killed.IsEOF());
        });
        Push(kCheckButton);
        EXPECT_EQ(RowText(1), "0|1");
        EXPECT_TRUE(boxes.empty());
        GoTo(2);
        Fill(1, 0, "t");
        Edit(1, 1);
        EXPECT_EQ(boxes.size(), 1U);
        Keys("⏎");
        GoTo(5);
        EXPECT_EQ(Statement(), "SELECT * FROM ");
        edit.setPlainText("SELECT pg_sleep(60)");
        Push(IDOK);
    });
}
