#include "desktop/formparts.h"

#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

namespace kortavin::desktop {

FileField::FileField(Ask ask) : m_field(new QLineEdit) {
    constexpr int kWidth = 320;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_field->setObjectName(QStringLiteral("file"));
    m_field->setMinimumWidth(kWidth);
    auto* browse = new QPushButton(QStringLiteral("浏览(&B)…"));
    browse->setObjectName(QStringLiteral("browse"));
    browse->setAutoDefault(false);  // Enter in the field is the dialog's
    connect(browse, &QPushButton::clicked, this, [this, ask = std::move(ask)] {
        if (const QString chosen = ask(Path()); !chosen.isEmpty())
            m_field->setText(chosen);
    });
    row->addWidget(m_field);
    row->addWidget(browse);
}

QString FileField::Path() const {
    return m_field->text();
}

void FileField::AddTo(QFormLayout& form, const QString& label) {
    form.addRow(label, this);
    qobject_cast<QLabel*>(form.labelForField(this))->setBuddy(m_field);
}

QComboBox* MakeChoice(const char* name, std::initializer_list<std::pair<const char*, QVariant>> choices) {
    auto* combo = new QComboBox;
    combo->setObjectName(QString::fromLatin1(name));
    for (const auto& [text, value] : choices)
        combo->addItem(QString::fromUtf8(text), value);
    return combo;
}

}  // namespace kortavin::desktop
