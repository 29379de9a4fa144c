#include "framework/qt/choosers.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <utility>

#include "framework/qt/colors.h"
#include "framework/qt/text.h"
#include "framework/window/messagebox.h"
#include "resources/texts.h"

namespace kortavin::qt {
namespace {

// A modal box, which its parent takes along when the host destroys that while the box is open.
template <class Box>
class ModalBox {
  public:
    explicit ModalBox(QWidget* parent) : m_box(new Box(WindowBelowBox(parent))) {}
    ~ModalBox() { delete m_box.data(); }
    ModalBox(const ModalBox&) = delete;
    ModalBox& operator=(const ModalBox&) = delete;

    Box* operator->() const { return m_box.data(); }
    Box& operator*() const { return *m_box; }
    bool IsLeft() const { return !m_box.isNull(); }

  private:
    QPointer<Box> m_box;
};

void NameButtons(QDialog& box) {
    constexpr std::pair<QDialogButtonBox::StandardButton, resources::TextId> kNames[] = {
        {QDialogButtonBox::Ok, resources::TextId::Ok},
        {QDialogButtonBox::Cancel, resources::TextId::Cancel},
    };
    const auto* buttons = box.findChild<QDialogButtonBox*>();
    for (const auto& [which, text] : kNames)
        if (QPushButton* button = buttons == nullptr ? nullptr : buttons->button(which))
            button->setText(ToQt(resources::Text(text)));
}

}  // namespace

QWidget* WindowBelowBox(QWidget* named) {
    if (named != nullptr)
        return named->window();
    QWidget* const active = QApplication::activeWindow();
    return active != nullptr && active->isVisible() ? active : nullptr;
}

int ShowMessageBox(std::string_view text, QWidget* parent) {
    const ModalBox<QMessageBox> box(parent);
    box->setTextFormat(Qt::PlainText);
    box->setText(ToQt(text));
    box->setStandardButtons(QMessageBox::Ok);
    NameButtons(*box);
    box->exec();
    return IDOK;
}

std::optional<COLORREF> ChooseColor(const window::ColorRequest& request, QWidget* parent) {
    const ModalBox<QColorDialog> box(parent);
    // Qt's own chooser always shows its part for custom colours, as if `fullOpen` were asked for; the
    // desktop's may lack it.
    box->setOption(QColorDialog::DontUseNativeDialog);
    box->setCurrentColor(ToQt(request.preselect ? request.initial : RGB(0, 0, 0)));
    NameButtons(*box);
    const int answer = box->exec();
    if (answer != QDialog::Accepted || !box.IsLeft())
        return std::nullopt;
    return FromQt(box->selectedColor());
}

}  // namespace kortavin::qt
