#pragma once

#include <QtWidgets/QMainWindow>
#include <vector>

class QLabel;
class QTabWidget;

namespace kortavin::desktop {

class DataPage;
class GridPage;
class SymbolPage;

// The host's window: a page for each part of the library that has something to show, and the commands of the
// first one.
class MainWindow : public QMainWindow {
  public:
    MainWindow();

    DataPage& Data() { return *m_data; }
    SymbolPage& Symbols() { return *m_symbols; }
    GridPage& Table() { return *m_table; }
    void ShowPage(QWidget& page);  // in front of the others

  private:
    // When a command of the data page is offered.
    using Condition = bool (DataPage::*)() const;
    struct Conditional {
        QAction* action;
        Condition condition;
    };
    struct Command;

    template <class Page>
    Page* AddPage(const QString& label);
    QMenu* AddMenu(const QString& title, std::initializer_list<Command> commands);
    QAction* MakeAction(const Command& command);
    void Follow();  // the data page's state

    QTabWidget* m_pages;
    QToolBar* m_tools;
    QLabel* m_status;
    DataPage* m_data;
    SymbolPage* m_symbols;
    GridPage* m_table;
    std::vector<Conditional> m_conditionals;
};

}  // namespace kortavin::desktop
