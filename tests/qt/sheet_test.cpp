#include <QAccessible>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QTabWidget>
#include <QTemporaryDir>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/filedialog.h"
#include "kortavin/window/listbox.h"
#include "kortavin/window/propertysheet.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr int kList = 21, kNote = 22, kGo = 31;
constexpr DWORD kShown = WS_VISIBLE | WS_TABSTOP;
constexpr window::ControlTemplate kFirst[] = {{"ListBox", kList, 0, 5, 5, 60, 40, kShown | LBS_NOTIFY},
                                              {"Edit", kNote, 0, 70, 5, 60, 40, kShown | ES_MULTILINE}};
constexpr window::ControlTemplate kSecond[] = {{"Button", kGo, 0, 5, 5, 40, 14, kShown}};
constexpr window::DialogTemplate kPages[] = {{901, 1, 140, 60, WS_CHILD, "Arial", 9, kFirst},
                                             {902, 2, 150, 50, WS_CHILD, "Arial", 9, kSecond}};
constexpr window::ResourceModule kModule{
    "test.dll", kPages, [](unsigned id) { return id == 1 ? "\xD2\xBB & 1" : "two"; }, {}};

// Notes the sheet's calls: set-up, activate, kill, OK.
struct Page : CPropertyPage {
    std::string& log;
    char name;
    bool fails = false, refuses = false;
    Page(unsigned id, char as, std::string& into) : CPropertyPage(id), log(into), name(as) {}
    bool Note(char what, bool answer = true) { return log += {name, what, ' '}, answer; }
    BOOL OnInitDialog() override {
        return Note('s') && fails ? throw CResourceException("set-up") : CPropertyPage::OnInitDialog();
    }
    BOOL OnSetActive() override { return Note('a'); }
    BOOL OnKillActive() override { return Note('k', !refuses); }
    void OnOK() override { Note('o'); }
};

struct Sheet : CPropertySheet {
    std::string log;
    Page first{901, '1', log}, second{902, '2', log};
    Sheet() : CPropertySheet("\xB2\xE9\xD1\xAF") { AddPage(&first), AddPage(&second); }
    int Run(const std::function<void(QTabWidget&)>& script) {
        const window::SourceScope source(&kModule);
        InNextBox<QDialog>([this, script](QDialog& box) {
            script(*box.findChild<QTabWidget*>());
            if (box.isVisible())
                EndDialog(IDCANCEL);
        });
        return DoModal();
    }
    std::string Said() { return std::exchange(log, {}); }
};

void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}
void ClickTab(QTabWidget& tabs, int index) {
    QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(index).center());
}

using QtSheets = QtTest;

}  // namespace

TEST_F(QtSheets, UserTurnsPagesByMouseAndKeys) {
    QWidget host;
    host.resize(500, 500);
    Activate(host);
    Sheet sheet;
    sheet.Run([&](QTabWidget& tabs) {
        EXPECT_LT((tabs.window()->geometry().center() - host.geometry().center()).manhattanLength(), 5);
        const QWidget& pane = *tabs.currentWidget();
        EXPECT_EQ(WidgetOf(sheet.first).geometry(), QRect(pane.mapTo(tabs.window(), QPoint()), pane.size()));
        EXPECT_EQ(tabs.tabText(0), QString::fromUtf8("一 && 1"));
        ClickTab(tabs, 1);
        EXPECT_EQ(sheet.Said(), "1s 1a 1k 2s 2a ");
        EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(*sheet.second.GetDlgItem(kGo)));
        Press(Qt::Key_PageDown, Qt::ControlModifier);
        EXPECT_EQ(sheet.Said(), "2k 1a ");
        sheet.first.GetDlgItem(kNote)->SetFocus();
        Press(Qt::Key_PageUp, Qt::ControlModifier);
        tabs.setFocus();
        Press(Qt::Key_Left);
        EXPECT_EQ(sheet.Said(), "1k 2a 2k 1a ");
        for (CWnd* const stop :
             {CWnd::GetFocus(), sheet.first.GetDlgItem(kList), sheet.first.GetDlgItem(kNote),
              sheet.GetDlgItem(IDOK), sheet.GetDlgItem(IDCANCEL), CWnd::GetFocus()}) {
            EXPECT_EQ(CWnd::GetFocus(), stop);
            Press(Qt::Key_Tab);
        }
    });
}

TEST_F(QtSheets, PageStaysWhenOneRefusesOrFailsAndEnterConfirmsWhatHasShown) {
    window::SetMessageBoxHandler([](const char*, UINT) { return IDOK; });
    Sheet sheet;
    EXPECT_EQ(sheet.Run([&](QTabWidget& tabs) {
        sheet.Said();
        const auto expectToStay = [&](const char* calls) {
            EXPECT_EQ(sheet.Said(), calls);
            EXPECT_EQ(tabs.currentIndex(), 0);
            EXPECT_TRUE(WidgetOf(sheet.first).isVisible());
        };
        sheet.first.refuses = true;
        ClickTab(tabs, 1);
        expectToStay("1k ");
        Press(Qt::Key_Return);
        expectToStay("1k ");
        sheet.first.refuses = false;
        sheet.GetDlgItem(IDOK)->EnableWindow(FALSE);
        Press(Qt::Key_Return);
        expectToStay("");
        sheet.second.fails = true;
        ClickTab(tabs, 1);
        expectToStay("1k 2s ");
        sheet.GetDlgItem(IDOK)->EnableWindow(TRUE);
        Press(Qt::Key_Return);  // in the list box
    }),
              IDOK);
    EXPECT_THAT(sheet.Said(), ::testing::StartsWith("1k 1o "));
    EXPECT_EQ(sheet.Run([](QTabWidget&) { Press(Qt::Key_Escape); }), IDCANCEL);
}

TEST_F(QtSheets, ListBoxTellsWhatTheUserSelectsAndKeepsItsBytes) {
    TestWindow parent;
    CListBox list;
    ASSERT_TRUE(parent.Open({0, 0, 200, 200}));
    list.Create(kShown | LBS_NOTIFY | WS_BORDER | WS_VSCROLL, {0, 0, 100, 150}, &parent, 5);
    for (const char* text : {"\xD2\xBB", "b\xFF", "cc"})
        list.AddString(text);
    parent.interest = {WM_COMMAND};
    Activate(WidgetOf(parent));
    auto& widget = static_cast<QListView&>(WidgetOf(list));
    const auto placeOf = [&](int row) { return widget.visualRect(widget.model()->index(row, 0)).center(); };
    const auto expect = [&](int selection, std::initializer_list<WORD> codes) {
        EXPECT_EQ(list.GetCurSel(), selection);
        ASSERT_EQ(parent.record.size(), codes.size());
        for (std::size_t i = 0; i < codes.size(); ++i)
            EXPECT_EQ(parent.record[i].second, MakeWParam(5, codes.begin()[i]));
        parent.record.clear();
    };
    list.SetFocus();
    Press(Qt::Key_Down);
    expect(0, {LBN_SELCHANGE});
    QTest::keyClicks(&widget, "c");
    expect(2, {LBN_SELCHANGE});
    QTest::mouseClick(widget.viewport(), Qt::LeftButton, Qt::ControlModifier, placeOf(2));
    expect(2, {});
    QTest::mouseClick(widget.viewport(), Qt::LeftButton, {}, placeOf(1));
    QTest::mouseDClick(widget.viewport(), Qt::LeftButton, {}, placeOf(1));
    expect(1, {LBN_SELCHANGE, LBN_DBLCLK});
    EXPECT_EQ(window::RecordOf(list.m_hWnd)->Native().AsList()->ItemText(1), "b\xFF");
    list.DeleteString(1);
    expect(-1, {});
}

TEST_F(QtSheets, FileChooserCompletesTheNameAndAsksOfNoExistingOne) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("old.txt");
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    const auto choose = [&](BOOL forOpening, const QString& name) {
        CFileDialog chooser(forOpening, "txt", path.toUtf8(), 0, "All (*.*;x)|*.*;x||");
        InNextBox<QFileDialog>([&](QFileDialog& box) {
            EXPECT_EQ(box.selectedFiles(), QStringList(path));
            EXPECT_EQ(box.nameFilters(), QStringList("All (*.*;x) (* x)"));
            auto* const edit = box.findChild<QLineEdit*>();
            edit->setText(name);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        chooser.DoModal();
        return QString::fromUtf8(static_cast<const char*>(chooser.GetPathName()));
    };
    EXPECT_EQ(choose(FALSE, QString::fromUtf8("新")), folder.filePath(QString::fromUtf8("新.txt")));
    EXPECT_EQ(choose(FALSE, "old"), path);
    EXPECT_EQ(choose(TRUE, "old"), path);
}

TEST_F(QtSheets, ScreenReadersSeeAGridAsATable) {
    TestWindow parent;
    parent.Open({0, 0, 300, 200});
    CGridCtrl grid(4, 3, 1, 1);
    grid.Create({0, 0, 300, 200}, &parent, 5, kShown);
    grid.SetItemText(2, 1, "\xD2\xBB");
    Activate(WidgetOf(parent));
    grid.SetFocus();
    grid.SetFocusCell(2, 1);
    grid.SelectRange(2, 1, 2, 2);
    QWidget& widget = WidgetOf(grid);
    auto* const access = QAccessible::queryAccessibleInterface(&widget);
    auto* const table = access->tableInterface();
    auto* const cell = table->cellAt(2, 1);
    EXPECT_EQ(cell->text(QAccessible::Name), QString::fromUtf8("一"));
    EXPECT_EQ(access->child(7), cell);
    EXPECT_EQ(access->indexOfChild(cell), 7);
    CRect place;
    grid.GetCellRect(2, 1, &place);
    EXPECT_EQ(cell->rect().topLeft(), widget.mapToGlobal(QPoint(place.left, place.top)));
    EXPECT_EQ(access->childAt(cell->rect().x(), cell->rect().y()), cell);
    EXPECT_EQ(access->focusChild(), cell);
    EXPECT_TRUE(cell->state().focused && cell->state().selected && cell->state().editable);
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().value(0)->role(), QAccessible::ColumnHeader);
    EXPECT_EQ(table->selectedCells().size(), 2);
    table->cellAt(1, 2)->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(access->focusChild(), table->cellAt(1, 2));
    const auto last = QAccessible::uniqueId(table->cellAt(3, 1));
    grid.SetRowCount(2);
    EXPECT_FALSE(QAccessible::accessibleInterface(last)->isValid());
    QAccessibleTableModelChangeEvent reset(&widget, QAccessibleTableModelChangeEvent::ModelReset);
    table->modelChange(&reset);
    EXPECT_EQ(QAccessible::accessibleInterface(last), nullptr);
    grid.UnsubclassWindow();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&widget)->tableInterface(), nullptr);
}

}  // namespace kortavin::testing
