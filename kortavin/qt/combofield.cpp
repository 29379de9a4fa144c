#include "kortavin/qt/combofield.h"

#include <QEvent>
#include <QLineEdit>

#include "kortavin/qt/combo.h"

namespace kortavin::qt {

ComboField::ComboField(window::WindowRecord& window, QtCombo& combo, QLineEdit& edit)
    : QtLineEdit(window, edit, Ownership::Part), m_combo(combo) {}

bool ComboField::IsConcernedBy(const QEvent& event) {
    switch (event.type()) {
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::InputMethod:
            return true;
        default:
            return false;
    }
}

bool ComboField::TakeEvent(QEvent& event) {
    bool isDone = false;
    window::Guarded([&] { isDone = Widget() != nullptr && Filter(event); });
    return isDone;
}

void ComboField::HandToWidget(QEvent& event) {
    QWidget* const combo = m_combo.Widget();
    if (!IsConcernedBy(event))
        QtLineEdit::HandToWidget(event);
    else if (combo != nullptr)
        static_cast<QObject*>(combo)->event(&event);
}

void ComboField::SetText(std::string_view text) {
    m_combo.SetText(text);
}

CString ComboField::GetText() const {
    return m_combo.GetText();
}

}  // namespace kortavin::qt
