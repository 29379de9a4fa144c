#include "desktop/importdialog.h"

#include <QtCore/QSet>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QPushButton>
#include <utility>

#include "desktop/formparts.h"
#include "desktop/report.h"
#include "desktop/text.h"
#include "kortavin/textimport/mateup.h"

namespace kortavin::desktop {
namespace {

constexpr int kListHeight = 140;

// As the matching dialog takes lists. A comma inside an item would end it there: a wide one is shown instead.
// Which column is meant is told by its position.
CString ListOf(const std::vector<CString>& items) {
    CString list;
    for (std::size_t i = 0; i < items.size(); ++i) {
        QString item = Shown(items[i]);
        list += (i > 0 ? "," : "") + ToGbk(item.replace(QChar(','), QChar(0xFF0C)));
    }
    return list;
}

// Of columns with the same name the matching dialog knows the first only, and one without a name would match
// whatever field has none chosen.
std::vector<CString> DistinctNames(const std::vector<CString>& columns) {
    std::vector<CString> names;
    QSet<QString> taken;
    for (const CString& column : columns) {
        QString name = Shown(column);
        while (name.trimmed().isEmpty() || taken.contains(name.trimmed().toUpper()))
            name += QStringLiteral("(%1)").arg(names.size() + 1);
        taken.insert(name.trimmed().toUpper());
        names.push_back(ToGbk(name));
    }
    return names;
}

// The matching dialog knows no lists of one.
std::optional<std::vector<WORD>> MatchSingleField(QWidget& window, const TextHead& head,
                                                  const CString& field) {
    QStringList names;
    for (const CString& column : head.columns)
        names.append(QStringLiteral("%1. %2").arg(QString::number(names.size() + 1), Shown(column)));
    bool isConfirmed = false;
    const QString chosen =
        QInputDialog::getItem(&window, QStringLiteral("匹配"), Shown(field), names, 0, false, &isConfirmed);
    if (!isConfirmed)
        return std::nullopt;
    return std::vector<WORD>{static_cast<WORD>(names.indexOf(chosen) + 1)};
}

}  // namespace

ImportDialog::ImportDialog(QWidget* parent, CGeoDatabase& database)
    : QDialog(parent),
      m_database(database),
      m_file(new FileField([this](const QString& path) {
          return QFileDialog::getOpenFileName(this, QStringLiteral("选择文本文件"), path,
                                              QStringLiteral("文本文件 (*.csv *.txt);;所有文件 (*)"));
      })),
      m_encoding(MakeChoice("encoding", {{"自动识别", static_cast<int>(TextEncoding::Detected)},
                                         {"UTF-8", static_cast<int>(TextEncoding::Utf8)},
                                         {"GBK", static_cast<int>(TextEncoding::Gbk)}})),
      m_separator(MakeChoice("separator",
                             {{"逗号", ","}, {"制表符", "\t"}, {"分号", ";"}, {"空格", " "}, {"竖线", "|"}})),
      m_table(MakeChoice("table", {})),
      m_fields(new QListWidget) {
    setWindowTitle(QStringLiteral("导入文本"));
    auto* form = new QFormLayout(this);
    m_file->AddTo(*form, QStringLiteral("文本文件(&F)："));
    form->addRow(QStringLiteral("编码(&C)："), m_encoding);
    form->addRow(QStringLiteral("分隔符(&S)："), m_separator);
    form->addRow(QStringLiteral("导入到表(&T)："), m_table);
    form->addRow(QStringLiteral("填写的字段(&L)："), m_fields);
    form->addRow(QString(), new QLabel(QStringLiteral("文件的第一行是列名；空的值导入为 NULL。")));
    m_fields->setObjectName(QStringLiteral("fields"));
    m_fields->setFixedHeight(kListHeight);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(QStringLiteral("匹配(&M)…"));
    connect(buttons, &QDialogButtonBox::accepted, this, &ImportDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &ImportDialog::reject);
    form->addRow(buttons);
    connect(m_table, &QComboBox::currentIndexChanged, this, [this] { ListFields(); });
    CStringArray tables;
    m_database.GetAllTables(tables);
    m_tableNames.assign(tables.begin(), tables.end());
    for (const CString& table : m_tableNames)
        m_table->addItem(Shown(table));
}

void ImportDialog::ListFields() {
    m_fields->clear();
    m_fieldNames.clear();
    Reported(*this, QStringLiteral("不能读取表的字段。"), [this] {
        m_fieldNames = FieldsOf(m_database, Request().table);
        for (const CString& field : m_fieldNames) {
            auto* item = new QListWidgetItem(Shown(field), m_fields);
            item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
            item->setCheckState(Qt::Checked);
        }
    });
}

QString ImportDialog::Path() const {
    return m_file->Path();
}

TextEncoding ImportDialog::Encoding() const {
    return static_cast<TextEncoding>(m_encoding->currentData().toInt());
}

ImportRequest ImportDialog::Request() const {
    ImportRequest request;
    if (const int table = m_table->currentIndex(); table >= 0)
        request.table = m_tableNames[static_cast<std::size_t>(table)];
    for (int i = 0; i < m_fields->count(); ++i)
        if (m_fields->item(i)->checkState() == Qt::Checked)
            request.fields.push_back(m_fieldNames[static_cast<std::size_t>(i)]);
    request.separator = CString(m_separator->currentData().toString().toStdString());
    return request;
}

void ImportDialog::Check() const {
    if (Path().isEmpty())
        throw Failure("请给出文件名。");
    if (Request().table.IsEmpty())
        throw Failure("数据库中没有可以导入的表。");
    if (Request().fields.empty())
        throw Failure("请至少选择一个字段。");
}

void ImportDialog::accept() {
    if (Reported(*this, QStringLiteral("还不能导入。"), [this] { Check(); }))
        QDialog::accept();
}

std::optional<std::vector<WORD>> MatchColumns(QWidget& window, const TextHead& head,
                                              const std::vector<CString>& fields) {
    if (fields.size() == 1)
        return MatchSingleField(window, head, fields.front());
    if (head.columns.size() < 2)
        throw Failure("文件的第一行没有分隔符，只有一列：请检查分隔符，或者只选择一个字段。");
    CString columns = ListOf(DistinctNames(head.columns));
    CString samples = ListOf(head.samples);
    CString targets = ListOf(fields);
    CWordArray matches;
    if (!CMateup::Mateup(columns, samples, targets, matches))
        return std::nullopt;
    return std::vector<WORD>(matches.begin(), matches.end());
}

}  // namespace kortavin::desktop
