#include "desktop/opendialog.h"

#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QRadioButton>
#include <utility>

#include "desktop/connectionstring.h"

namespace kortavin::desktop {
namespace {

constexpr int kIndent = 24;
constexpr int kFieldWidth = 380;

}  // namespace

OpenDialog::OpenDialog(QWidget* parent, OpenSource open)
    : QDialog(parent),
      m_open(std::move(open)),
      m_fileKind(new QRadioButton(QStringLiteral("SQLite 数据库文件(&F)"))),
      m_odbcKind(new QRadioButton(QStringLiteral("ODBC 连接串(&C)"))) {
    setWindowTitle(QStringLiteral("打开数据库"));
    auto* column = new QVBoxLayout(this);
    column->addWidget(m_fileKind);
    column->addWidget(MakeFilePart());
    column->addWidget(m_odbcKind);
    column->addWidget(MakeOdbcPart());
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("打开(&O)"));
    connect(buttons, &QDialogButtonBox::accepted, this, &OpenDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &OpenDialog::reject);
    column->addWidget(buttons);
    m_fileKind->setChecked(true);
    m_file->setFocus();
}

QWidget* OpenDialog::MakeFilePart() {
    auto* part = new QWidget;
    auto* row = new QHBoxLayout(part);
    row->setContentsMargins(kIndent, 0, 0, 0);
    m_file = MakeField("file", *m_fileKind);
    m_file->setAccessibleName(QStringLiteral("数据库文件"));
    auto* browse = new QPushButton(QStringLiteral("浏览(&B)…"));
    browse->setAutoDefault(false);  // Enter in a field opens the database
    connect(browse, &QPushButton::clicked, this, [this] { BrowseFiles(); });
    row->addWidget(m_file);
    row->addWidget(browse);
    return part;
}

QWidget* OpenDialog::MakeOdbcPart() {
    auto* part = new QWidget;
    auto* form = new QFormLayout(part);
    form->setContentsMargins(kIndent, 0, 0, 0);
    m_connection = MakeField("connection", *m_odbcKind);
    m_connection->setPlaceholderText(QStringLiteral("DSN=… 或 Driver=…;Server=…;Database=…"));
    connect(m_connection, &QLineEdit::editingFinished, this, [this] { HidePassword(); });
    m_user = MakeField("user", *m_odbcKind);
    m_password = MakeField("password", *m_odbcKind);
    m_password->setEchoMode(QLineEdit::Password);
    form->addRow(QStringLiteral("连接串(&S)："), m_connection);
    form->addRow(QStringLiteral("用户名(&U)："), m_user);
    form->addRow(QStringLiteral("密码(&P)："), m_password);
    return part;
}

// Typing into a field chooses the kind of database that it belongs to.
QLineEdit* OpenDialog::MakeField(const char* name, QRadioButton& kind) {
    auto* field = new QLineEdit;
    field->setObjectName(QString::fromLatin1(name));
    field->setMinimumWidth(kFieldWidth);
    connect(field, &QLineEdit::textEdited, &kind, [&kind] { kind.setChecked(true); });
    return field;
}

void OpenDialog::BrowseFiles() {
    const QString chosen =
        QFileDialog::getOpenFileName(this, QStringLiteral("选择数据库文件"), m_file->text(),
                                     QStringLiteral("SQLite 数据库 (*.db *.sqlite *.sqlite3);;所有文件 (*)"));
    if (chosen.isEmpty())
        return;
    m_file->setText(chosen);
    m_fileKind->setChecked(true);
}

// A password that came with the string, pasted perhaps, moves to where it does not show.
void OpenDialog::HidePassword() {
    QString connection = m_connection->text();
    for (const char* key : {"PWD", "Password"})
        if (const auto password = TakeValue(connection, QLatin1String(key))) {
            m_connection->setText(connection);
            m_password->setText(*password);
        }
}

QString OpenDialog::Source() const {
    if (m_fileKind->isChecked())
        return m_file->text();
    QString source = m_connection->text();
    if (!m_user->text().isEmpty())
        source = WithValue(source, QStringLiteral("UID"), m_user->text());
    if (!m_password->text().isEmpty())
        source = WithValue(source, QStringLiteral("PWD"), m_password->text());
    return source;
}

void OpenDialog::accept() {
    HidePassword();
    if (m_open(Source()))
        QDialog::accept();
}

}  // namespace kortavin::desktop
