#include <QLabel>
#include <memory>

#include "kortavin/qt/window.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

Qt::Alignment AlignmentOf(DWORD style) {
    switch (style & SS_TYPEMASK) {
        case SS_CENTER:
            return Qt::AlignHCenter | Qt::AlignTop;
        case SS_RIGHT:
            return Qt::AlignRight | Qt::AlignTop;
        default:
            return Qt::AlignLeft | Qt::AlignTop;
    }
}

// A label that shows a plain text. Without a buddy, Qt takes `&` for a plain character too.
class QtLabel final : public QtWindow {
  public:
    QtLabel(window::WindowRecord& window, QLabel& label, Ownership ownership)
        : QtWindow(window, label, ownership) {}

    void SetText(std::string_view text) override {
        if (auto* const label = qobject_cast<QLabel*>(Widget()); label != nullptr) {
            label->setTextFormat(Qt::PlainText);
            label->setText(m_text.Set(text));
        }
    }
    CString GetText() const override {
        const auto* const label = qobject_cast<QLabel*>(Widget());
        return label == nullptr ? CString() : m_text.Get(label->text());
    }

  private:
    KeptText m_text;
};

}  // namespace

std::unique_ptr<QtWindow> MakeLabel(window::WindowRecord& window, const window::WindowRequest& request) {
    auto* const label = new QLabel(ParentWidget(request));
    label->hide();
    label->setAlignment(AlignmentOf(request.style));
    label->setWordWrap(true);
    return std::make_unique<QtLabel>(window, *label, QtWindow::Ownership::Ours);
}

std::unique_ptr<QtWindow> AttachLabel(window::WindowRecord& window, QWidget& widget) {
    if (auto* const label = qobject_cast<QLabel*>(&widget); label != nullptr)
        return std::make_unique<QtLabel>(window, *label, QtWindow::Ownership::Hosts);
    return std::make_unique<QtWindow>(window, widget, QtWindow::Ownership::Hosts);
}

}  // namespace kortavin::qt
