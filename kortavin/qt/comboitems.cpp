#include <QLineEdit>
#include <QSignalBlocker>

#include "kortavin/qt/combo.h"
#include "kortavin/qt/comboaccess.h"

// The items of a combo box and the text of its edit field.
namespace kortavin::qt {
namespace {

// Where an item keeps its bytes, far from the roles that a host may use.
constexpr int kBytesRole = Qt::UserRole + 0x4B56;

CString BytesOf(const QComboBox& combo, int index) {
    const QString text = combo.itemText(index);
    const QByteArray bytes = combo.itemData(index, kBytesRole).toByteArray();
    const std::string_view kept(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    // The host may have changed the item since.
    return ToQt(kept) == text ? CString(kept) : FromQt(text);
}

}  // namespace

void QtCombo::SetText(std::string_view text) {
    QComboBox* const combo = Combo();
    if (combo == nullptr || !combo->isEditable())
        return;
    combo->setEditText(m_editText.Set(text));
    m_editText.ShowsAs(combo->currentText());
    combo->lineEdit()->setCursorPosition(0);
}

CString QtCombo::GetText() const {
    const QComboBox* const combo = Combo();
    if (combo == nullptr)
        return {};
    return combo->isEditable() ? m_editText.Get(combo->currentText()) : ItemText(combo->currentIndex());
}

void QtCombo::OnActivated() {
    if (const QComboBox* const combo = Combo(); combo != nullptr) {
        m_editText.Set(BytesOf(*combo, combo->currentIndex()).View());
        if (combo->isEditable())
            combo->lineEdit()->selectAll();  // to be typed over
    }
    Notify(CBN_SELCHANGE);
}

int QtCombo::Count() const {
    const QComboBox* const combo = Combo();
    return combo == nullptr ? 0 : combo->count();
}

// Qt selects the first item that comes into an empty box, the neighbour of one that goes, and sets the edit
// field with it. Here neither the selection nor the field follows what the program does to the list.
template <class Change>
void QtCombo::ChangeItems(QComboBox& combo, Change change) {
    const QSignalBlocker blocker(combo);
    const QString text = combo.currentText();
    const QPersistentModelIndex selected =
        combo.model()->index(combo.currentIndex(), combo.modelColumn(), combo.rootModelIndex());
    change();
    combo.setCurrentIndex(selected.isValid() ? selected.row() : -1);
    if (combo.isEditable() && combo.currentText() != text)
        combo.setEditText(text);
    Announce();
}

void QtCombo::Insert(int index, std::string_view text) {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    ChangeItems(*combo, [&] {
        combo->insertItem(index, ToQt(text));
        combo->setItemData(index, QByteArray(text.data(), static_cast<qsizetype>(text.size())), kBytesRole);
    });
}

void QtCombo::Remove(int index) {
    if (QComboBox* const combo = Combo(); combo != nullptr)
        ChangeItems(*combo, [&] { combo->removeItem(index); });
}

void QtCombo::Clear() {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    combo->clear();
    SetText({});
}

CString QtCombo::ItemText(int index) const {
    const QComboBox* const combo = Combo();
    return combo == nullptr || index < 0 ? CString() : BytesOf(*combo, index);
}

int QtCombo::Selection() const {
    const QComboBox* const combo = Combo();
    return combo == nullptr ? -1 : combo->currentIndex();
}

void QtCombo::Select(int index) {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    combo->setCurrentIndex(index);
    SetText(ItemText(index).View());
}

void QtCombo::SetItemAccessibleName(int index, std::string_view name) {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    combo->setItemData(index, ToQt(name), Qt::AccessibleTextRole);
    m_hasItemNames = true;
    if (index == combo->currentIndex())
        Announce();
}

// Without names for its items a box keeps the description that the program gave it.
void QtCombo::Announce() {
    if (QComboBox* const combo = Combo(); combo != nullptr && m_hasItemNames)
        AnnounceComboItem(*combo);
}

void QtCombo::SetEditSelection(int first, int last) {
    const QComboBox* const combo = Combo();
    if (combo == nullptr || !combo->isEditable())
        return;
    const CString text = GetText();
    const int begin = QtOffset(text.View(), first);
    const int end = QtOffset(text.View(), last < 0 ? text.GetLength() : last);
    combo->lineEdit()->setSelection(begin, end - begin);
}

}  // namespace kortavin::qt
