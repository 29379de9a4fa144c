#include <QAbstractButton>
#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <memory>

#include "kortavin/qt/window.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

DWORD KindOf(DWORD style) {
    return style & BS_TYPEMASK;
}

QAbstractButton* MakeQButton(DWORD style, QWidget* parent) {
    switch (KindOf(style)) {
        case BS_AUTOCHECKBOX:
            return new QCheckBox(parent);
        case BS_AUTORADIOBUTTON:
            return new QRadioButton(parent);
        default:
            break;
    }
    auto* const button = new QPushButton(parent);
    button->setDefault(KindOf(style) == BS_DEFPUSHBUTTON);
    return button;
}

class QtButton final : public QtWindow, public window::NativeButton {
  public:
    QtButton(window::WindowRecord& window, QAbstractButton& button, Ownership ownership)
        : QtWindow(window, button, ownership) {
        connect(&button, &QAbstractButton::clicked, this, [this] {
            if (IsReporting())
                ReportNotification(GetWindow(), BN_CLICKED);
        });
    }

    window::NativeButton* AsButton() override { return this; }

    void SetText(std::string_view text) override {
        if (auto* const button = Button(); button != nullptr)
            button->setText(m_text.Set(text));
    }
    CString GetText() const override {
        const auto* const button = Button();
        return button == nullptr ? CString() : m_text.Get(button->text());
    }

    bool IsChecked() const override {
        const auto* const button = Button();
        return button != nullptr && button->isChecked();
    }
    void SetChecked(bool checked) override {
        auto* const button = Button();
        if (button == nullptr)
            return;
        // Qt keeps one of several exclusive buttons checked, whatever the program wants.
        QButtonGroup* const group = button->group();
        const auto setExclusive = [=](bool exclusive) {
            group != nullptr ? group->setExclusive(exclusive) : button->setAutoExclusive(exclusive);
        };
        const bool wasExclusive = group != nullptr ? group->exclusive() : button->autoExclusive();
        setExclusive(wasExclusive && checked);
        button->setChecked(checked);
        setExclusive(wasExclusive);
    }

    // A radio button shares its group with those before it up to the latest window that begins a new one.
    void JoinGroup() {
        m_group = GroupBefore();
        if (m_group == nullptr)
            m_group = std::make_shared<QButtonGroup>();
        m_group->addButton(Button());
    }

  private:
    QAbstractButton* Button() const { return qobject_cast<QAbstractButton*>(Widget()); }

    std::shared_ptr<QButtonGroup> GroupBefore() const {
        window::WindowRecord* const own = &GetWindow();
        if (own->Parent() == nullptr || (own->Style() & WS_GROUP) != 0)
            return nullptr;
        const auto& siblings = own->Parent()->Children();
        for (auto it = siblings.rbegin(); it != siblings.rend(); ++it) {
            const auto* const button = *it == own ? nullptr : dynamic_cast<const QtButton*>(&(*it)->Native());
            if (button != nullptr && button->m_group != nullptr)
                return button->m_group;
            if (((*it)->Style() & WS_GROUP) != 0)
                return nullptr;
        }
        return nullptr;
    }

    KeptText m_text;
    std::shared_ptr<QButtonGroup> m_group;
};

class QtGroupBox final : public QtWindow {
  public:
    QtGroupBox(window::WindowRecord& window, QGroupBox& box) : QtWindow(window, box, Ownership::Ours) {}

    void SetText(std::string_view text) override {
        if (auto* const box = qobject_cast<QGroupBox*>(Widget()); box != nullptr)
            box->setTitle(m_text.Set(text));
    }
    CString GetText() const override {
        const auto* const box = qobject_cast<QGroupBox*>(Widget());
        return box == nullptr ? CString() : m_text.Get(box->title());
    }

  private:
    KeptText m_text;
};

}  // namespace

std::unique_ptr<QtWindow> MakeButton(window::WindowRecord& window, const window::WindowRequest& request) {
    QWidget* const parent = ParentWidget(request);
    if (KindOf(request.style) == BS_GROUPBOX) {
        auto* const box = new QGroupBox(parent);
        box->hide();
        box->lower();  // its neighbours in the dialog lie in it
        return std::make_unique<QtGroupBox>(window, *box);
    }
    QAbstractButton* const button = MakeQButton(request.style, parent);
    button->hide();
    auto made = std::make_unique<QtButton>(window, *button, QtWindow::Ownership::Ours);
    if (KindOf(request.style) == BS_AUTORADIOBUTTON)
        made->JoinGroup();
    return made;
}

std::unique_ptr<QtWindow> AttachButton(window::WindowRecord& window, QAbstractButton& widget) {
    return std::make_unique<QtButton>(window, widget, QtWindow::Ownership::Hosts);
}

}  // namespace kortavin::qt
