#pragma once

#include <QtWidgets/QWidget>
#include <functional>
#include <optional>

#include "desktop/connection.h"
#include "desktop/resulttable.h"
#include "kortavin/service/querysql.h"
#include "kortavin/window/edit.h"

class QBoxLayout;
class QPushButton;

namespace kortavin::desktop {

class ImportDialog;

// The page "数据": a database, a statement on it, and the rows of its result. What goes wrong is told in
// message boxes.
class DataPage : public QWidget {
  public:
    DataPage();

    // Called after each command that may have changed what the functions below answer.
    void SetListener(std::function<void()> listener) { m_listener = std::move(listener); }
    QString DatabaseTitle() const { return m_connection.Title(); }  // empty while none is open
    const QString& Status() const { return m_status; }
    bool IsConnected() const { return m_connection.Database() != nullptr; }
    bool HasResult() const { return !m_table->Columns().empty(); }

    // The commands. Each is offered under the conditions above only.
    bool Open(const QString& source);  // a path or a connection string
    void AskAndOpen();
    void CloseDatabase();
    void ConstructQuery();  // by the wizard; what was confirmed there is executed
    void Execute();         // what stands in the box
    void ShowTypes();
    void AskAndExport();
    void AskAndImport();

    const CString& ExecutedStatement() const { return m_executed; }
    const ResultTable& Table() const { return *m_table; }

  private:
    QBoxLayout* MakeStatementPart();
    void ExecuteStatement(const CString& statement);
    bool Import(const ImportDialog& dialog);
    void DropResult();
    void Tell(const QString& status);

    Connection m_connection;
    std::optional<CQuerySql> m_wizard;  // remembers the tables that were chosen
    CEdit m_statement;                  // keeps the bytes that the wizard gave until the user changes them
    CString m_executed;                 // whose result is shown
    ResultTable* m_table;
    QPushButton* m_execute;
    QString m_status;
    std::function<void()> m_listener;
};

}  // namespace kortavin::desktop
