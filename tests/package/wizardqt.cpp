// A Qt host: its window runs the query wizard on a database, and lists the rows of the statement.
#include <kortavin/base/codepage.h>
#include <kortavin/service/querysql.h>
#include <kortavin/service/statement.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <iostream>

// The library's texts are GBK.
QString Shown(const CString& gbk) {
    return QString::fromStdString(kortavin::base::GbkForDisplay(gbk.View()));
}

class Window : public QWidget {
  public:
    explicit Window(CGeoDatabase& database) : m_database(database), m_service(&database) {
        auto* construct = new QPushButton("构造查询(&B)…");
        auto* column = new QVBoxLayout(this);
        column->addWidget(construct);
        column->addWidget(m_rows);
        m_rows->setReadOnly(true);
        connect(construct, &QPushButton::clicked, this, [this] { Run(); });
    }

  private:
    void Run() try {
        CString statement;
        if (m_service.ConstructQuery(statement) == 1)
            List(statement);
    } catch (const CException& error) {  // none may pass through Qt
        QMessageBox::critical(this, windowTitle(), Shown(error.GetErrorMessage()));
    }

    void List(const CString& statement) {
        m_rows->setPlainText(Shown(statement));
        const auto rows = kortavin::service::OpenStatement(m_database, statement);
        for (; !rows->IsEOF(); rows->MoveNext()) {
            QStringList texts;
            for (short i = 0; i < rows->GetODBCFieldCount(); ++i) {
                CString value;
                rows->ReadFieldText(i, value);
                texts.push_back(Shown(value));
            }
            m_rows->appendPlainText(texts.join('\t'));
        }
    }

    CGeoDatabase& m_database;
    CQuerySql m_service;  // remembers the chosen tables from run to run
    QPlainTextEdit* m_rows = new QPlainTextEdit;
};

int main(int argc, char** argv) try {
    QApplication application(argc, argv);
    CGeoDatabase database;
    database.Open(CString::FromUtf8(argc > 1 ? argv[1] : "").value_or(CString()));
    Window window(database);
    window.show();
    return QApplication::exec();
} catch (const CException& error) {
    std::cerr << Shown(error.GetErrorMessage()).toStdString() << '\n';
    return 1;
}
