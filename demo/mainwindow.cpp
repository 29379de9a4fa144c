#include "demo/mainwindow.h"

#include <QtWidgets/QTabWidget>

#include "demo/gridpage.h"
#include "demo/symbolpage.h"

namespace kortavin::demo {

template <class Page>
Page* MainWindow::AddPage(const QString& label) {
    auto* page = new Page;
    m_pages->addTab(page, label);
    return page;
}

MainWindow::MainWindow() : m_pages(new QTabWidget) {
    setWindowTitle(QStringLiteral("Kortavin 桌面示例"));
    setCentralWidget(m_pages);
    m_symbols = AddPage<SymbolPage>(QStringLiteral("符号(&S)"));
    m_table = AddPage<GridPage>(QStringLiteral("表格(&G)"));
}

void MainWindow::ShowPage(QWidget& page) {
    m_pages->setCurrentWidget(&page);
}

}  // namespace kortavin::demo
