#include "demo/exportdialog.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "demo/report.h"

namespace kortavin::demo {
namespace {

using service::ExportLayout;
using service::ExportQuote;

constexpr int kFieldWidth = 320;

template <class Value>
QComboBox* MakeChoice(const char* name, std::initializer_list<std::pair<const char*, Value>> choices) {
    auto* combo = new QComboBox;
    combo->setObjectName(QString::fromLatin1(name));
    for (const auto& [text, value] : choices)
        combo->addItem(QString::fromUtf8(text), static_cast<int>(value));
    return combo;
}

}  // namespace

ExportDialog::ExportDialog(QWidget* parent, const QString& database)
    : QDialog(parent),
      m_database(database),
      m_layout(MakeChoice<ExportLayout>("layout", {{"逗号分隔", ExportLayout::Comma},
                                                   {"空格分隔", ExportLayout::Blank},
                                                   {"制表符分隔", ExportLayout::Tab},
                                                   {"二进制", ExportLayout::Binary}})),
      m_quote(MakeChoice<ExportQuote>(
          "quote",
          {{"无", ExportQuote::None}, {"单引号", ExportQuote::Single}, {"双引号", ExportQuote::Double}})),
      m_header(new QCheckBox(QStringLiteral("先写字段名(&H)"))) {
    setWindowTitle(QStringLiteral("导出查询结果"));
    m_header->setObjectName(QStringLiteral("header"));
    m_header->setChecked(true);
    auto* form = new QFormLayout(this);
    QWidget* fileRow = MakeFileRow();
    form->addRow(QStringLiteral("文件(&F)："), fileRow);
    qobject_cast<QLabel*>(form->labelForField(fileRow))->setBuddy(m_file);
    form->addRow(QStringLiteral("格式(&L)："), m_layout);
    form->addRow(QStringLiteral("文字的引号(&Q)："), m_quote);
    form->addRow(QString(), m_header);
    form->addRow(QString(), new QLabel(QStringLiteral("文字按 GBK 编码写入；导出结果的全部行。")));
    connect(m_layout, &QComboBox::currentIndexChanged, this,
            [this] { m_quote->setEnabled(Request().options.layout != ExportLayout::Binary); });
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("导出(&E)"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
    form->addRow(buttons);
}

QWidget* ExportDialog::MakeFileRow() {
    auto* part = new QWidget;
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(0, 0, 0, 0);
    m_file = new QLineEdit;
    m_file->setObjectName(QStringLiteral("file"));
    m_file->setMinimumWidth(kFieldWidth);
    auto* browse = new QPushButton(QStringLiteral("浏览(&B)…"));
    browse->setAutoDefault(false);  // Enter in a field exports
    connect(browse, &QPushButton::clicked, this, [this] { BrowseFiles(); });
    row->addWidget(m_file);
    row->addWidget(browse);
    return part;
}

// Whether a former file may be replaced is asked once, when the dialog is confirmed.
void ExportDialog::BrowseFiles() {
    const QString chosen =
        QFileDialog::getSaveFileName(this, QStringLiteral("导出到"), m_file->text(),
                                     QStringLiteral("文本文件 (*.csv *.txt);;查询数据 (*.dat);;所有文件 (*)"),
                                     nullptr, QFileDialog::DontConfirmOverwrite);
    if (!chosen.isEmpty())
        m_file->setText(chosen);
}

ExportRequest ExportDialog::Request() const {
    return {m_file->text(),
            {static_cast<ExportLayout>(m_layout->currentData().toInt()),
             static_cast<ExportQuote>(m_quote->currentData().toInt()), m_header->isChecked()}};
}

bool ExportDialog::MayWrite() {
    const QFileInfo file(m_file->text());
    if (m_file->text().isEmpty())
        throw Failure("请给出文件名。");
    if (!m_database.isEmpty() && file.canonicalFilePath() == QFileInfo(m_database).canonicalFilePath())
        throw Failure("这是正在查询的数据库文件。");
    if (!file.isFile())
        return true;
    const QString question = QStringLiteral("文件 %1 已经存在。要替换它吗？").arg(file.fileName());
    return QMessageBox::question(this, windowTitle(), question, QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::No) == QMessageBox::Yes;
}

void ExportDialog::accept() {
    bool mayWrite = false;
    Reported(*this, QStringLiteral("不能导出到这个文件。"), [&] { mayWrite = MayWrite(); });
    if (mayWrite)
        QDialog::accept();
}

}  // namespace kortavin::demo
