#include "kortavin/qt/comboaccess.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QLineEdit>

#include "kortavin/qt/accessibletable.h"

namespace kortavin::qt {
namespace {

constexpr const char* kAttachedProperty = "_kortavin_combo_access";

QString ItemName(const QComboBox& combo) {
    return combo.currentData(Qt::AccessibleTextRole).toString();
}

// What Qt has for every combo box, which is no public class, but for the value.
class ComboAccess : public QAccessibleWidget {
  public:
    explicit ComboAccess(QComboBox* combo)
        : QAccessibleWidget(combo, QAccessible::ComboBox), m_combo(*combo) {}

    int childCount() const override { return m_combo.isEditable() ? 2 : 1; }
    QAccessibleInterface* child(int index) const override {
        return QAccessible::queryAccessibleInterface(ChildWidget(index));
    }
    int indexOfChild(const QAccessibleInterface* child) const override {
        for (int i = 0; i < childCount(); ++i)
            if (child->object() == ChildWidget(i))
                return i;
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        const auto* edit = m_combo.lineEdit();
        const bool isInEdit = edit != nullptr && edit->rect().contains(edit->mapFromGlobal(QPoint(x, y)));
        return isInEdit ? child(1) : nullptr;
    }

    QString text(QAccessible::Text kind) const override {
        if (kind != QAccessible::Value)
            return QAccessibleWidget::text(kind);
        const QString name = m_combo.isEditable() ? QString() : ItemName(m_combo);
        return name.isEmpty() ? m_combo.currentText() : name;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.expandable = true;
        state.expanded = m_combo.view()->isVisible();
        state.editable = m_combo.isEditable();
        return state;
    }

    QStringList actionNames() const override { return {showMenuAction(), pressAction()}; }
    void doAction(const QString& name) override {
        if (!actionNames().contains(name) || !m_combo.isEnabled())
            return;
        if (m_combo.view()->isVisible())
            m_combo.hidePopup();
        else
            m_combo.showPopup();
    }

  private:
    QWidget* ChildWidget(int index) const {
        switch (index) {
            case 0:
                return m_combo.view();
            case 1:
                return m_combo.lineEdit();
            default:
                return nullptr;
        }
    }

    QComboBox& m_combo;
};

QAccessibleInterface* MakeComboAccess(const QString& className, QObject* object) {
    if (className != QLatin1String("QComboBox") || !object->property(kAttachedProperty).isValid())
        return nullptr;
    return new ComboAccess(qobject_cast<QComboBox*>(object));
}

}  // namespace

void AttachComboAccess(QComboBox& combo) {
    QAccessible::installFactory(&MakeComboAccess);
    combo.setProperty(kAttachedProperty, true);
    ForgetAccessible(combo);
}

void DetachComboAccess(QComboBox& combo) {
    combo.setProperty(kAttachedProperty, QVariant());
    ForgetAccessible(combo);
}

void AnnounceComboItem(QComboBox& combo) {
    const QString name = ItemName(combo);
    combo.setAccessibleDescription(name);
    QAccessibleValueChangeEvent change(&combo, name);
    QAccessible::updateAccessibility(&change);
}

}  // namespace kortavin::qt
