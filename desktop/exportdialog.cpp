#include "desktop/exportdialog.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

#include "desktop/formparts.h"
#include "desktop/report.h"

namespace kortavin::desktop {
namespace {

using service::ExportLayout;
using service::ExportQuote;

QVariant ValueOf(ExportLayout layout) {
    return static_cast<int>(layout);
}
QVariant ValueOf(ExportQuote quote) {
    return static_cast<int>(quote);
}

}  // namespace

ExportDialog::ExportDialog(QWidget* parent, const QString& database)
    : QDialog(parent),
      m_database(database),
      // Whether a former file may be replaced is asked once, when the dialog is confirmed.
      m_file(new FileField([this](const QString& path) {
          return QFileDialog::getSaveFileName(
              this, QStringLiteral("导出到"), path,
              QStringLiteral("文本文件 (*.csv *.txt);;查询数据 (*.dat);;所有文件 (*)"), nullptr,
              QFileDialog::DontConfirmOverwrite);
      })),
      m_layout(MakeChoice("layout", {{"逗号分隔", ValueOf(ExportLayout::Comma)},
                                     {"空格分隔", ValueOf(ExportLayout::Blank)},
                                     {"制表符分隔", ValueOf(ExportLayout::Tab)},
                                     {"二进制", ValueOf(ExportLayout::Binary)}})),
      m_quote(MakeChoice("quote", {{"无", ValueOf(ExportQuote::Unquoted)},
                                   {"单引号", ValueOf(ExportQuote::Single)},
                                   {"双引号", ValueOf(ExportQuote::Double)}})),
      m_header(new QCheckBox(QStringLiteral("先写字段名(&H)"))) {
    setWindowTitle(QStringLiteral("导出查询结果"));
    m_header->setObjectName(QStringLiteral("header"));
    m_header->setChecked(true);
    auto* form = new QFormLayout(this);
    m_file->AddTo(*form, QStringLiteral("文件(&F)："));
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

ExportRequest ExportDialog::Request() const {
    return {m_file->Path(),
            {static_cast<ExportLayout>(m_layout->currentData().toInt()),
             static_cast<ExportQuote>(m_quote->currentData().toInt()), m_header->isChecked()}};
}

bool ExportDialog::MayWrite() {
    const QFileInfo file(m_file->Path());
    if (m_file->Path().isEmpty())
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

}  // namespace kortavin::desktop
