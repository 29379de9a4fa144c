#include <QKeyEvent>
#include <QPlainTextEdit>
#include <memory>
#include <utility>

#include "kortavin/qt/edit.h"
#include "kortavin/qt/scrollbars.h"
#include "kortavin/window/edit.h"

namespace kortavin::qt {
namespace {

// Enter is its own only if it was made so; with Ctrl it breaks the line at all events.
class TextBox : public QPlainTextEdit {
  public:
    TextBox(QWidget* parent, bool takesEnter) : QPlainTextEdit(parent), m_takesEnter(takesEnter) {}

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!isEnter) {
            QPlainTextEdit::keyPressEvent(event);
        } else if (!m_takesEnter && !event->modifiers().testFlag(Qt::ControlModifier)) {
            event->ignore();
        } else {
            QKeyEvent plain(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r");
            QPlainTextEdit::keyPressEvent(&plain);
            event->setAccepted(plain.isAccepted());
        }
    }

  private:
    bool m_takesEnter;
};

class QtTextEdit final : public QtEdit {
  public:
    QtTextEdit(window::WindowRecord& window, QPlainTextEdit& edit, Ownership ownership)
        : QtEdit(window, edit, ownership), m_seen(ShownText()) {
        connect(&edit, &QPlainTextEdit::textChanged, this, [this] { OnTextChanged(); });
    }

  protected:
    // Not the widget's plain text, in which no-break spaces have become blanks.
    QString ShownText() const override {
        const QPlainTextEdit* const edit = Edit();
        QString text = edit != nullptr ? edit->document()->toRawText() : QString();
        text.replace(QChar::ParagraphSeparator, "\r\n");
        return text.replace(QChar::LineSeparator, "\r\n");  // of a host's widget, by Shift and Enter
    }

    void ShowText(const QString& text) override {
        QPlainTextEdit* const edit = Edit();
        if (edit == nullptr)
            return;
        const bool wasShowing = std::exchange(m_isShowing, true);
        edit->setPlainText(text);
        m_isShowing = wasShowing;
        m_seen = ShownText();
    }

    Range Selection() const override {
        const QPlainTextEdit* const edit = Edit();
        if (edit == nullptr)
            return {};
        return {edit->textCursor().selectionStart(), edit->textCursor().selectionEnd()};
    }

    void Select(const Range& range) override {
        QPlainTextEdit* const edit = Edit();
        if (edit == nullptr)
            return;
        QTextCursor cursor = edit->textCursor();
        cursor.setPosition(range.first);
        cursor.setPosition(range.last, QTextCursor::KeepAnchor);
        edit->setTextCursor(cursor);
    }

    void ScrollToCaret() override {
        if (QPlainTextEdit* const edit = Edit(); edit != nullptr)
            edit->ensureCursorVisible();
    }

  private:
    QPlainTextEdit* Edit() const { return qobject_cast<QPlainTextEdit*>(Widget()); }

    // Qt tells of compositions too, which are no part of the text yet.
    void OnTextChanged() {
        if (m_isShowing)
            return;
        if (QString text = ShownText(); text != m_seen) {
            m_seen = std::move(text);
            Notify(EN_CHANGE);
        }
    }

    QString m_seen;
    bool m_isShowing = false;
};

void SetStyle(QPlainTextEdit& edit, DWORD style) {
    if ((style & WS_BORDER) == 0)
        edit.setFrameShape(QFrame::NoFrame);
    if ((style & (ES_AUTOHSCROLL | WS_HSCROLL)) != 0)
        edit.setLineWrapMode(QPlainTextEdit::NoWrap);
    edit.setVerticalScrollBarPolicy(BarPolicy(style, WS_VSCROLL));
    edit.setHorizontalScrollBarPolicy(BarPolicy(style, WS_HSCROLL));
    QTextOption option = edit.document()->defaultTextOption();
    option.setAlignment(AlignmentOf(style));
    edit.document()->setDefaultTextOption(option);
    edit.setTabChangesFocus(true);
    if ((style & ES_READONLY) != 0)
        edit.setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

}  // namespace

std::unique_ptr<QtWindow> MakeTextEdit(window::WindowRecord& window, const window::WindowRequest& request) {
    auto* const edit = new TextBox(ParentWidget(request), (request.style & ES_WANTRETURN) != 0);
    edit->hide();
    SetStyle(*edit, request.style);
    return std::make_unique<QtTextEdit>(window, *edit, QtWindow::Ownership::Ours);
}

std::unique_ptr<QtWindow> AttachTextEdit(window::WindowRecord& window, QPlainTextEdit& widget) {
    return std::make_unique<QtTextEdit>(window, widget, QtWindow::Ownership::Hosts);
}

}  // namespace kortavin::qt
