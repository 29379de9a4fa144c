#include "kortavin/qt/dialog.h"

#include <QDialog>
#include <QKeyEvent>
#include <QPushButton>

#include "kortavin/qt/choosers.h"
#include "kortavin/window/messagebox.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

class DialogWidget : public QDialog {
  public:
    using QDialog::QDialog;

    void reject() override { Command(IDCANCEL); }  // Esc

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (isEnter && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier)
            PressDefault();
        else
            QDialog::keyPressEvent(event);
    }

  private:
    void Command(int id) const {
        if (const QtWindow* const window = QtWindow::Of(this); window != nullptr)
            window::Report(window->GetWindow(), WM_COMMAND, MakeWParam(static_cast<WORD>(id), BN_CLICKED));
    }

    // Without a default button, Enter stands for IDOK.
    void PressDefault() const {
        for (QPushButton* const button : findChildren<QPushButton*>())
            if (button->isDefault() && button->isVisible()) {
                button->click();
                return;
            }
        Command(IDOK);
    }
};

Qt::WindowFlags FlagsOf(DWORD style) {
    Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint;
    const bool hasCaption = (style & WS_CAPTION) == WS_CAPTION;
    flags.setFlag(Qt::WindowTitleHint, hasCaption);
    flags.setFlag(Qt::FramelessWindowHint, !hasCaption);
    if ((style & WS_SYSMENU) != 0)
        flags |= Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
    return flags;
}

}  // namespace

QtDialog::QtDialog(window::WindowRecord& window, const window::WindowRequest& request)
    : QtWindow(window, *new DialogWidget(WindowBelowBox(ParentWidget(request)), FlagsOf(request.style)),
               Ownership::Ours) {
    Widget()->setWindowModality(Qt::ApplicationModal);
    Widget()->setAttribute(Qt::WA_QuitOnClose, false);
}

QtDialog::~QtDialog() {
    if (m_loop != nullptr)
        m_loop->quit();
}

void QtDialog::Resize(QSize size) {
    Widget()->setFixedSize(size);
}

void QtDialog::Move(const CRect& rect) {
    if (IsVisible()) {
        QtWindow::Move(rect);
        return;
    }
    const QPointer<QtDialog> alive(this);
    if (Widget() != nullptr)
        Resize(QSize(rect.Width(), rect.Height()).expandedTo({0, 0}));
    if (alive != nullptr)
        ReportSize();
}

void QtDialog::Run() {
    if (m_hasEnded || Widget() == nullptr)
        return;
    QEventLoop loop;
    m_loop = &loop;
    const QPointer<QtDialog> alive(this);
    Widget()->show();
    // A loop forgets that it was told to end before it began.
    if (alive != nullptr && !m_hasEnded)
        loop.exec(QEventLoop::DialogExec);
    if (alive != nullptr)
        m_loop = nullptr;
}

void QtDialog::End() {
    m_hasEnded = true;
    if (Widget() != nullptr)
        Widget()->hide();
    if (m_loop != nullptr)
        m_loop->quit();
}

}  // namespace kortavin::qt
