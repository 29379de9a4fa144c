#include "desktop/datapage.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include "desktop/exportdialog.h"
#include "desktop/importdialog.h"
#include "desktop/opendialog.h"
#include "desktop/progress.h"
#include "desktop/report.h"
#include "desktop/text.h"
#include "desktop/typesdialog.h"
#include "kortavin/qt/qtwidgets.h"

namespace kortavin::desktop {
namespace {

constexpr int kStatementLines = 4;

QString Describe(const ResultTable::Outcome& outcome, std::size_t columns) {
    if (columns == 0)
        return QStringLiteral("语句已执行，没有结果列。");
    if (outcome.wasStopped)
        return QStringLiteral("已停止读取：只显示前 %L1 行。").arg(outcome.rows);
    if (outcome.hasMore)
        return QStringLiteral("结果还有更多行：只显示前 %L1 行，导出时包括全部行。").arg(outcome.rows);
    return QStringLiteral("结果：%L1 行，%2 列。").arg(outcome.rows).arg(columns);
}

}  // namespace

DataPage::DataPage() : m_table(new ResultTable(this)) {
    auto* column = new QVBoxLayout(this);
    column->addLayout(MakeStatementPart());
    qt::AttachTo(m_statement, *findChild<QPlainTextEdit*>());
    column->addWidget(m_table, 1);
    DropResult();
}

QBoxLayout* DataPage::MakeStatementPart() {
    auto* box = new QPlainTextEdit;
    box->setObjectName(QStringLiteral("statement"));
    box->setAccessibleName(QStringLiteral("查询语句"));
    box->setTabChangesFocus(true);
    box->setFixedHeight(box->fontMetrics().lineSpacing() * kStatementLines + 2 * box->frameWidth() +
                        static_cast<int>(2 * box->document()->documentMargin()));
    auto* label = new QLabel(QStringLiteral("查询语句(&Y)："));
    label->setBuddy(box);
    m_execute = new QPushButton(QStringLiteral("执行(&X)"));
    connect(m_execute, &QPushButton::clicked, this, [this] { Execute(); });
    auto* row = new QHBoxLayout;
    row->addWidget(label, 0, Qt::AlignTop);
    row->addWidget(box, 1);
    row->addWidget(m_execute, 0, Qt::AlignTop);
    return row;
}

bool DataPage::Open(const QString& source) {
    const bool opened =
        Reported(*this, QStringLiteral("打开数据库失败。"), [&] { m_connection.Open(source); });
    if (opened) {
        m_wizard.emplace(m_connection.Database());
        DropResult();
    }
    return opened;
}

void DataPage::AskAndOpen() {
    OpenDialog(this, [this](const QString& source) { return Open(source); }).exec();
}

void DataPage::CloseDatabase() {
    m_wizard.reset();
    m_connection.Close();
    DropResult();
}

void DataPage::ConstructQuery() {
    CString statement;
    bool isConfirmed = false;
    Reported(*this, QStringLiteral("不能构造查询。"),
             [&] { isConfirmed = m_wizard->ConstructQuery(statement) == 1; });
    if (!isConfirmed)
        return;
    m_statement.SetWindowText(statement);
    ExecuteStatement(statement);
    m_table->setFocus();
}

void DataPage::Execute() {
    ExecuteStatement(m_statement.GetWindowText());
}

void DataPage::ExecuteStatement(const CString& statement) {
    DropResult();
    const bool isWhole = Reported(*this, QStringLiteral("执行语句失败。"), [&] {
        Progress progress(*this, QStringLiteral("查询"));
        const auto rows = service::OpenStatement(*m_connection.Database(), statement);
        m_executed = statement;
        const auto outcome = m_table->Fill(*rows, progress);
        Tell(Describe(outcome, m_table->Columns().size()));
    });
    if (!isWhole && HasResult())
        Tell(QStringLiteral("读取没有完成：只显示前 %L1 行。").arg(m_table->Grid().GetRowCount() - 1));
}

void DataPage::ShowTypes() {
    TypesDialog(this, m_table->Columns()).exec();
}

void DataPage::AskAndExport() {
    ExportDialog dialog(this, m_connection.File());
    if (dialog.exec() != QDialog::Accepted)
        return;
    Reported(*this, QStringLiteral("导出失败。原来的文件没有改变。"), [&] {
        Progress progress(*this, QStringLiteral("导出"));
        try {
            const ExportRequest request = dialog.Request();
            const ULONGLONG rows = ExportStatement(*m_connection.Database(), m_executed, request, progress);
            Tell(QStringLiteral("已导出 %L1 行到 %2。").arg(rows).arg(request.path));
        } catch (const Cancelled&) {
            Tell(QStringLiteral("导出已取消，原来的文件没有改变。"));
        }
    });
}

void DataPage::AskAndImport() {
    Reported(*this, QStringLiteral("不能导入。"), [this] {
        ImportDialog dialog(this, *m_connection.Database());
        while (dialog.exec() == QDialog::Accepted && !Import(dialog)) {
        }
    });
}

// False: nothing was imported, and the dialog is there again with all that was entered.
bool DataPage::Import(const ImportDialog& dialog) {
    bool isDone = false;
    Reported(*this, QStringLiteral("导入失败，没有导入任何行。"), [&] {
        TextSource text(dialog.Path(), dialog.Encoding());
        ImportRequest request = dialog.Request();
        const auto positions = MatchColumns(*this, ReadHead(text, request.separator), request.fields);
        if (!positions)
            return;
        request.positions = *positions;
        Progress progress(*this, QStringLiteral("导入文本"));
        try {
            text.File().Seek(0, CFile::begin);
            const ULONGLONG rows = ImportText(*m_connection.Database(), text, request, progress);
            Tell(QStringLiteral("已导入 %L1 行到 %2。").arg(rows).arg(Shown(request.table)));
            isDone = true;
        } catch (const Cancelled&) {
            Tell(QStringLiteral("导入已取消，没有导入任何行。"));
        }
    });
    return isDone;
}

void DataPage::DropResult() {
    m_executed.Empty();
    m_table->Clear();
    Tell(IsConnected() ? QStringLiteral("已连接数据库。") : QStringLiteral("没有打开数据库。"));
}

void DataPage::Tell(const QString& status) {
    m_status = status;
    m_execute->setEnabled(IsConnected());
    if (m_listener)
        m_listener();
}

}  // namespace kortavin::desktop
