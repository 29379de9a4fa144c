#include <QLineEdit>
#include <QSignalBlocker>
#include <algorithm>
#include <climits>
#include <memory>

#include "kortavin/qt/edit.h"
#include "kortavin/window/edit.h"

namespace kortavin::qt {
namespace {

bool IsControl(QChar character) {
    const QChar::Category category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

// As one line: breaks at its end go, inside they become blanks, as tabs do.
QString OneLineOf(QString text) {
    while (!text.isEmpty() && IsControl(text.back()))
        text.chop(1);
    text.replace("\r\n", "\n");
    std::ranges::replace_if(text, IsControl, QChar(' '));
    return text;
}

// Watches what the user inserts. Qt pastes and drops texts with their breaks. Those that the program's text
// has stay in it.
class LineKeeper : public QObject {
  public:
    explicit LineKeeper(QLineEdit& edit) : QObject(&edit), m_edit(edit), m_text(edit.text()) {
        connect(&edit, &QLineEdit::textEdited, this, [this] { Tidy(); });
        connect(&edit, &QLineEdit::textChanged, this, [this] { m_text = m_edit.text(); });
    }

  private:
    void Tidy() {
        const QString text = m_edit.text();
        const auto begin = std::ranges::mismatch(text, m_text).in1 - text.begin();
        const auto common = std::min(text.size(), m_text.size()) - begin;
        const auto isSame = [&](qsizetype i) {
            return text[text.size() - 1 - i] == m_text[m_text.size() - 1 - i];
        };
        qsizetype behind = 0;
        while (behind < common && isSame(behind))
            ++behind;
        const QString inserted = text.mid(begin, text.size() - begin - behind);
        const QString line = OneLineOf(inserted);
        if (line == inserted)
            return;
        const QSignalBlocker blocker(m_edit);
        m_edit.setSelection(static_cast<int>(begin), static_cast<int>(inserted.size()));
        m_edit.insert(line);
    }

    QLineEdit& m_edit;
    QString m_text;
};

}  // namespace

void PrepareLine(QLineEdit& edit) {
    edit.setMaxLength(INT_MAX);
    new LineKeeper(edit);  // the edit's
}

QtLineEdit::QtLineEdit(window::WindowRecord& window, QLineEdit& edit, Ownership ownership)
    : QtEdit(window, edit, ownership) {
    connect(&edit, &QLineEdit::textEdited, this, [this] { Notify(EN_CHANGE); });
}

QLineEdit* QtLineEdit::Edit() const {
    return qobject_cast<QLineEdit*>(Widget());
}

QString QtLineEdit::ShownText() const {
    const QLineEdit* const edit = Edit();
    return edit != nullptr ? edit->text() : QString();
}

void QtLineEdit::ShowText(const QString& text) {
    if (QLineEdit* const edit = Edit(); edit != nullptr) {
        edit->setText(text);
        edit->setCursorPosition(0);
    }
}

QtEdit::Range QtLineEdit::Selection() const {
    const QLineEdit* const edit = Edit();
    if (edit == nullptr)
        return {};
    if (edit->hasSelectedText())
        return {edit->selectionStart(), edit->selectionEnd()};
    return {edit->cursorPosition(), edit->cursorPosition()};
}

void QtLineEdit::Select(const Range& range) {
    if (QLineEdit* const edit = Edit(); edit != nullptr)
        edit->setSelection(range.first, range.last - range.first);
}

std::unique_ptr<QtWindow> MakeLineEdit(window::WindowRecord& window, const window::WindowRequest& request) {
    auto* const edit = new QLineEdit(ParentWidget(request));
    edit->hide();
    edit->setFrame((request.style & WS_BORDER) != 0);
    edit->setBackgroundRole(QPalette::Base);  // also where the style's frame leaves the corners open
    edit->setAutoFillBackground(true);
    edit->setAlignment(AlignmentOf(request.style) | Qt::AlignVCenter);
    edit->setReadOnly((request.style & ES_READONLY) != 0);
    PrepareLine(*edit);
    return std::make_unique<QtLineEdit>(window, *edit, QtWindow::Ownership::Ours);
}

std::unique_ptr<QtWindow> AttachLineEdit(window::WindowRecord& window, QLineEdit& widget) {
    return std::make_unique<QtLineEdit>(window, widget, QtWindow::Ownership::Hosts);
}

}  // namespace kortavin::qt
