#include "kortavin/qt/combo.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLineEdit>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <algorithm>
#include <utility>

#include "kortavin/qt/comboaccess.h"
#include "kortavin/qt/font.h"

namespace kortavin::qt {
namespace {

struct OptionAccess : QComboBox {
    using QComboBox::initStyleOption;
};

QStyleOptionComboBox OptionOf(const QComboBox& combo) {
    QStyleOptionComboBox option;
    (combo.*(&OptionAccess::initStyleOption))(&option);
    return option;
}

QRect FieldRect(const QComboBox& combo, const QStyleOptionComboBox& option) {
    return combo.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, &combo);
}

// How much higher than its selection field the style makes the box.
int FrameHeight(const QComboBox& combo) {
    constexpr int kAmple = 100;
    QStyleOptionComboBox option = OptionOf(combo);
    option.rect = QRect(0, 0, 2 * kAmple, kAmple);
    return std::clamp(kAmple - FieldRect(combo, option).height(), 0, kAmple);
}

// With Enter, and when the focus leaves, Qt would select an item whose text the field has, as if by the user.
void MakeEditable(QComboBox& combo) {
    combo.setEditable(true);
    PrepareLine(*combo.lineEdit());
    QObject::disconnect(combo.lineEdit(), &QLineEdit::editingFinished, &combo, nullptr);
}

}  // namespace

QtCombo::QtCombo(window::WindowRecord& window, QComboBox& combo, Ownership ownership)
    : QtWindow(window, combo, ownership),
      m_isOurs(ownership == Ownership::Ours),
      m_former{combo.view()->itemDelegate(), combo.completer(),
               combo.insertPolicy(),         combo.minimumHeight(),
               combo.view()->minimumWidth(), combo.accessibleDescription()} {
    combo.setInsertPolicy(QComboBox::NoInsert);
    if (combo.isEditable())
        TakeCompleter(combo);
    if (IsOwnerDrawn())
        UseDelegate();
    AttachComboAccess(combo);
    Connect(combo);
}

QtCombo::~QtCombo() {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    combo->view()->window()->removeEventFilter(this);
    if (m_delegate != nullptr)
        combo->view()->setItemDelegate(m_former.delegate);
    if (m_isOurs)
        return;
    DetachComboAccess(*combo);
    combo->setInsertPolicy(m_former.insertPolicy);
    if (combo->isEditable())
        GiveBackCompleter(*combo);
    combo->setMinimumHeight(m_former.minimumHeight);
    combo->view()->setMinimumWidth(m_former.listWidth);
    combo->setAccessibleDescription(m_former.accessibleDescription);
}

// An edit line deletes the completer that it owns when it gets another one.
void QtCombo::TakeCompleter(QComboBox& combo) {
    if (QCompleter* const completer = m_former.completer; completer != nullptr) {
        disconnect(completer, nullptr, &combo, nullptr);
        m_former.isLinesCompleter = !m_isOurs && completer->parent() == combo.lineEdit();
        if (m_former.isLinesCompleter)
            completer->setParent(this);
    }
    combo.setCompleter(nullptr);
}

void QtCombo::GiveBackCompleter(QComboBox& combo) {
    combo.setCompleter(m_former.completer);
    if (m_former.completer != nullptr && m_former.isLinesCompleter)
        m_former.completer->setParent(combo.lineEdit());
}

QComboBox* QtCombo::Combo() const {
    return qobject_cast<QComboBox*>(Widget());
}

void QtCombo::Connect(QComboBox& combo) {
    connect(&combo, &QComboBox::activated, this, [this] { window::Guarded([this] { OnActivated(); }); });
    connect(&combo, &QComboBox::currentIndexChanged, this,
            [this] { window::Guarded([this] { Announce(); }); });
    if (combo.isEditable())
        connect(combo.lineEdit(), &QLineEdit::textEdited, this, [this] { Notify(CBN_EDITCHANGE); });
    combo.view()->window()->installEventFilter(this);
}

void QtCombo::UseDelegate() {
    if (m_delegate != nullptr)
        return;
    m_delegate = std::make_unique<ComboDelegate>(IsOwnerDrawn() ? &GetWindow() : nullptr);
    // Not the combo's own setter, which deletes the former one.
    Combo()->view()->setItemDelegate(m_delegate.get());
}

void QtCombo::Notify(WORD code) {
    if (IsReporting())
        ReportNotification(GetWindow(), code);
}

bool QtCombo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == Widget() && event->type() == QEvent::FontChange && !m_isOurs && !m_isSettingFont)
        window::Guarded([this] { TakeFont(); });
    if (watched == Widget())
        return m_field != nullptr && ComboField::IsConcernedBy(*event)
                   ? m_field->TakeEvent(*event)
                   : QtWindow::eventFilter(watched, event);
    if (event->type() == QEvent::Show)
        Notify(CBN_DROPDOWN);
    else if (event->type() == QEvent::Hide)
        Notify(CBN_CLOSEUP);
    return false;
}

void QtCombo::HandToWidget(QEvent& event) {
    QComboBox* const combo = Combo();
    if (event.type() == QEvent::Paint && combo != nullptr && IsOwnerDrawn() && !combo->isEditable())
        PaintClosedBox(*combo);
    else
        QtWindow::HandToWidget(event);
}

void QtCombo::PaintClosedBox(QComboBox& combo) {
    QStylePainter painter(&combo);
    const QStyleOptionComboBox option = OptionOf(combo);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    QRect field = FieldRect(combo, option);
    painter.fillRect(field, combo.palette().color(QPalette::Base));
    if (m_fieldHeight > 0) {
        field.translate(0, (field.height() - m_fieldHeight) / 2);
        field.setHeight(m_fieldHeight);
    }
    const bool isMarked = combo.hasFocus() && !IsListOpen();
    const UINT state =
        ODS_COMBOBOXEDIT | (isMarked ? ODS_SELECTED | ODS_FOCUS : 0) | (combo.isEnabled() ? 0 : ODS_DISABLED);
    DrawComboItem(GetWindow(), painter, combo.palette(), field, combo.currentIndex(), state);
}

void QtCombo::SetFont(const CFont& font) {
    const bool wasSettingFont = std::exchange(m_isSettingFont, true);
    QtWindow::SetFont(font);
    m_isSettingFont = wasSettingFont;
    FollowFieldHeight();
}

// The host's, in which the control draws its items.
void QtCombo::TakeFont() {
    if (const QComboBox* const combo = Combo(); combo != nullptr)
        GetWindow().SetFont(CFont(DescriptionOf(combo->font())));
    FollowFieldHeight();
}

int QtCombo::ClosedHeight(const QComboBox& combo) const {
    if (m_fieldHeight == 0)
        return combo.sizeHint().height();
    return IsCellEditor() ? m_fieldHeight : m_fieldHeight + FrameHeight(combo);
}

// A box of the host is at least so high; its layout has the last word.
void QtCombo::FollowFieldHeight() {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    if (m_fieldHeight > 0)
        combo->setMinimumHeight(ClosedHeight(*combo));
    if (m_isOurs)
        Resize({combo->width(), 0});
}

void QtCombo::Resize(QSize size) {
    QComboBox* const combo = Combo();
    if (combo == nullptr || !m_isOurs) {
        QtWindow::Resize(size);
        return;
    }
    // What a box is given beyond its own height is meant for the list.
    const int height = ClosedHeight(*combo);
    const int itemHeight = std::max(combo->view()->sizeHintForRow(0), ItemHeight(0));
    if (const int visible = (size.height() - height) / std::max(itemHeight, 1); visible > 0)
        combo->setMaxVisibleItems(visible);
    QtWindow::Resize({size.width(), height});
}

void QtCombo::SetItemHeight(int index, int height) {
    QComboBox* const combo = Combo();
    if (combo == nullptr)
        return;
    if (index >= 0) {
        m_itemHeight = height;
        UseDelegate();
        m_delegate->SetItemHeight(height);
        return;
    }
    m_fieldHeight = height;
    if (IsCellEditor()) {
        combo->setFrame(false);
        combo->setBackgroundRole(QPalette::Base);  // around the edit field, where a style draws nothing
        combo->setAutoFillBackground(true);
    }
    FollowFieldHeight();
}

int QtCombo::ItemHeight(int index) const {
    const QComboBox* const combo = Combo();
    const int height = index < 0 ? m_fieldHeight : m_itemHeight;
    if (height > 0 || combo == nullptr)
        return height;
    return index < 0 ? FieldRect(*combo, OptionOf(*combo)).height() : combo->fontMetrics().height();
}

void QtCombo::SetDroppedWidth(int width) {
    if (const QComboBox* const combo = Combo(); combo != nullptr)
        combo->view()->setMinimumWidth(std::max(width, 0));
}

void QtCombo::ShowList(bool open) {
    QComboBox* const combo = Combo();
    if (combo == nullptr || open == IsListOpen())
        return;
    if (!open)
        combo->hidePopup();
    else if (combo->isVisible())
        combo->showPopup();
}

bool QtCombo::IsListOpen() const {
    const QComboBox* const combo = Combo();
    return combo != nullptr && combo->view()->isVisible();
}

std::unique_ptr<window::NativeWindow> QtCombo::MakeEditField(window::WindowRecord& field) {
    const QComboBox* const combo = Combo();
    if (combo == nullptr || !combo->isEditable())
        return nullptr;
    auto made = std::make_unique<ComboField>(field, *this, *combo->lineEdit());
    m_field = made.get();
    made->BeginReporting();
    return made;
}

QtWindow& QtCombo::KeyReceiver() {
    return m_field != nullptr ? static_cast<QtWindow&>(*m_field) : *this;
}

std::unique_ptr<QtWindow> MakeCombo(window::WindowRecord& window, const window::WindowRequest& request) {
    auto* const combo = new QComboBox(ParentWidget(request));
    combo->hide();
    if ((request.style & CBS_DROPDOWNLIST) == CBS_DROPDOWN)
        MakeEditable(*combo);
    return std::make_unique<QtCombo>(window, *combo, QtWindow::Ownership::Ours);
}

std::unique_ptr<QtWindow> AttachCombo(window::WindowRecord& window, QComboBox& widget) {
    auto combo = std::make_unique<QtCombo>(window, widget, QtWindow::Ownership::Hosts);
    combo->TakeFont();
    return combo;
}

}  // namespace kortavin::qt
