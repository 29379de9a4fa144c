#include "desktop/mainwindow.h"

#include <QtCore/QRegularExpression>
#include <QtGui/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QToolBar>
#include <functional>

#include "desktop/datapage.h"
#include "desktop/gridpage.h"
#include "desktop/symbolpage.h"

namespace kortavin::desktop {
namespace {

constexpr const char* kTitle = "Kortavin 桌面示例";
constexpr QSize kSize(1000, 720);

}  // namespace

// A row of a menu. Letters of menus and tabs are not used on any page.
struct MainWindow::Command {
    const char* name;  // by which tours and tests find the action
    const char* text;
    QKeySequence key;
    void (DataPage::*run)();
    Condition condition = nullptr;
    bool isTool = true;  // also in the tool bar
};

template <class Page>
Page* MainWindow::AddPage(const QString& label) {
    auto* page = new Page;
    m_pages->addTab(page, label);
    return page;
}

MainWindow::MainWindow()
    : m_pages(new QTabWidget), m_tools(addToolBar(QStringLiteral("工具栏"))), m_status(new QLabel) {
    resize(kSize);
    setCentralWidget(m_pages);
    m_data = AddPage<DataPage>(QStringLiteral("数据(&D)"));
    m_symbols = AddPage<SymbolPage>(QStringLiteral("符号(&S)"));
    m_table = AddPage<GridPage>(QStringLiteral("表格(&G)"));
    m_tools->setObjectName(QStringLiteral("tools"));
    m_tools->setMovable(false);
    statusBar()->addWidget(m_status, 1);
    QMenu* database = AddMenu(QStringLiteral("数据库(&K)"),
                              {{"open", "打开数据库(&O)…", Qt::CTRL | Qt::Key_O, &DataPage::AskAndOpen},
                               {"close", "关闭数据库(&C)", Qt::CTRL | Qt::Key_W, &DataPage::CloseDatabase,
                                &DataPage::IsConnected, false}});
    database->addSeparator();
    database->addAction(QStringLiteral("退出(&X)"), this, &QWidget::close)->setShortcut(Qt::CTRL | Qt::Key_Q);
    AddMenu(
        QStringLiteral("查询(&Q)"),
        {{"construct", "构造查询(&B)…", Qt::CTRL | Qt::Key_B, &DataPage::ConstructQuery,
          &DataPage::IsConnected},
         {"execute", "执行(&R)", Qt::Key_F5, &DataPage::Execute, &DataPage::IsConnected},
         {"types", "类型(&T)…", Qt::CTRL | Qt::Key_T, &DataPage::ShowTypes, &DataPage::HasResult},
         {"export", "导出(&E)…", Qt::CTRL | Qt::Key_E, &DataPage::AskAndExport, &DataPage::HasResult},
         {"import", "导入文本(&I)…", Qt::CTRL | Qt::Key_I, &DataPage::AskAndImport, &DataPage::IsConnected}});
    m_data->SetListener([this] { Follow(); });
    Follow();
}

QMenu* MainWindow::AddMenu(const QString& title, std::initializer_list<Command> commands) {
    QMenu* menu = menuBar()->addMenu(title);
    for (const Command& command : commands) {
        QAction* action = MakeAction(command);
        menu->addAction(action);
        if (command.isTool)
            m_tools->addAction(action);
    }
    return menu;
}

QAction* MainWindow::MakeAction(const Command& command) {
    auto* action = new QAction(QString::fromUtf8(command.text), this);
    action->setObjectName(QString::fromLatin1(command.name));
    action->setShortcut(command.key);
    action->setIconText(action->text().remove(QRegularExpression(QStringLiteral("\\(&.\\)"))));
    action->setToolTip(
        QStringLiteral("%1 (%2)").arg(action->iconText(), command.key.toString(QKeySequence::NativeText)));
    const std::function<void(DataPage&)> run = command.run;
    connect(action, &QAction::triggered, this, [this, run] {
        ShowPage(*m_data);
        run(*m_data);
    });
    if (command.condition)
        m_conditionals.push_back({action, command.condition});
    return action;
}

void MainWindow::Follow() {
    const QString database = m_data->DatabaseTitle();
    setWindowTitle((database.isEmpty() ? QString() : database + QStringLiteral(" – ")) +
                   QString::fromUtf8(kTitle));
    m_status->setText(m_data->Status());
    for (const auto& [action, condition] : m_conditionals)
        action->setEnabled((m_data->*condition)());
}

void MainWindow::ShowPage(QWidget& page) {
    m_pages->setCurrentWidget(&page);
}

}  // namespace kortavin::desktop
