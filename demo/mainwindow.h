#pragma once

#include <QtWidgets/QMainWindow>

class QTabWidget;

namespace kortavin::demo {

class GridPage;
class SymbolPage;

// The host's window: a page for each part of the library that has something to show.
class MainWindow : public QMainWindow {
  public:
    MainWindow();

    SymbolPage& Symbols() { return *m_symbols; }
    GridPage& Table() { return *m_table; }
    void ShowPage(QWidget& page);  // in front of the others

  private:
    template <class Page>
    Page* AddPage(const QString& label);

    QTabWidget* m_pages;
    SymbolPage* m_symbols;
    GridPage* m_table;
};

}  // namespace kortavin::demo
