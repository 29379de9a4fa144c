#include "desktop/typesdialog.h"

#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

#include "desktop/text.h"
#include "kortavin/service/querysql.h"

namespace kortavin::desktop {
namespace {

QString NullabilityOf(const CODBCFieldInfo& column) {
    switch (column.m_nNullability) {
        case 0:
            return QStringLiteral("否");
        case 1:
            return QStringLiteral("是");
        default:
            return QStringLiteral("不详");
    }
}

void AddRow(QTableWidget& table, const CODBCFieldInfo& column) {
    const int row = table.rowCount();
    table.insertRow(row);
    CODBCFieldInfo info = column;
    const QString texts[] = {Shown(column.m_strName), Shown(CQuerySql().GetFieldTypeStr(info)).trimmed(),
                             QString::number(column.m_nPrecision), QString::number(column.m_nScale),
                             NullabilityOf(column)};
    for (int i = 0; const QString& text : texts) {
        auto* cell = new QTableWidgetItem(text);
        cell->setTextAlignment(Qt::AlignVCenter | (i == 2 || i == 3 ? Qt::AlignRight : Qt::AlignLeft));
        table.setItem(row, i++, cell);
    }
}

}  // namespace

TypesDialog::TypesDialog(QWidget* parent, const std::vector<CODBCFieldInfo>& columns) : QDialog(parent) {
    setWindowTitle(QStringLiteral("字段类型"));
    resize(560, 360);
    const QStringList headings = {QStringLiteral("字段"), QStringLiteral("类型"), QStringLiteral("精度"),
                                  QStringLiteral("小数位"), QStringLiteral("可为空")};
    auto* table = new QTableWidget(0, static_cast<int>(headings.size()));
    table->setObjectName(QStringLiteral("types"));
    table->setAccessibleName(windowTitle());
    table->setHorizontalHeaderLabels(headings);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    for (const CODBCFieldInfo& column : columns)
        AddRow(*table, column);
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("关闭(&C)"));
    connect(buttons, &QDialogButtonBox::rejected, this, &TypesDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(table);
    column->addWidget(buttons);
}

}  // namespace kortavin::desktop
