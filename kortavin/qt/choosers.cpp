#include "kortavin/qt/choosers.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QGridLayout>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>
#include <utility>

#include "kortavin/base/texts.h"
#include "kortavin/qt/colors.h"
#include "kortavin/qt/text.h"
#include "kortavin/window/messagebox.h"

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
    constexpr std::pair<QDialogButtonBox::StandardButton, base::TextId> kNames[] = {
        {QDialogButtonBox::Ok, base::TextId::Ok},
        {QDialogButtonBox::Cancel, base::TextId::Cancel},
    };
    const auto* buttons = box.findChild<QDialogButtonBox*>();
    for (const auto& [which, text] : kNames)
        if (QPushButton* button = buttons == nullptr ? nullptr : buttons->button(which))
            button->setText(ToQt(base::Text(text)));
}

void NameLabels(QFileDialog& box, base::TextId accept) {
    const std::pair<QFileDialog::DialogLabel, base::TextId> names[] = {
        {QFileDialog::Accept, accept},
        {QFileDialog::Reject, base::TextId::Cancel},
        {QFileDialog::FileName, base::TextId::FileName},
        {QFileDialog::FileType, base::TextId::FileType},
        {QFileDialog::LookIn, base::TextId::LookIn},
    };
    for (const auto& [which, text] : names)
        box.setLabelText(which, ToQt(base::Text(text)));
    box.setWindowTitle(ToQt(base::Text(accept)));
}

// Without a dot a file is one of "*.*" too. Qt reads patterns of ASCII only; "?" stands for the rest.
QString PatternOf(const QString& pattern) {
    static const QRegularExpression notAscii("[^ -~]");
    const QString trimmed = pattern.trimmed();
    return trimmed == "*.*" ? QString("*") : QString(trimmed).replace(notAscii, "?");
}

// People see the name only, to which Qt wants the patterns appended.
QString FilterOf(const window::FileRequest::Filter& filter) {
    QStringList patterns = ToQt(filter.patterns.View()).split(';', Qt::SkipEmptyParts);
    std::ranges::transform(patterns, patterns.begin(), PatternOf);
    return ToQt(filter.name.View()) + " (" + patterns.join(' ') + ')';
}

void SetFilters(QFileDialog& box, const std::vector<window::FileRequest::Filter>& filters) {
    QStringList names;
    for (const auto& filter : filters)
        names.append(FilterOf(filter));
    box.setOption(QFileDialog::HideNameFilterDetails);
    if (!names.isEmpty())
        box.setNameFilters(names);
}

QByteArray SystemBytes(const CString& text) {
    return {text.View().data(), static_cast<qsizetype>(text.View().size())};
}

// A box around a short text would be too narrow for its own title.
void Widen(QMessageBox& box) {
    constexpr int kWidth = 240;
    if (auto* const grid = qobject_cast<QGridLayout*>(box.layout()); grid != nullptr)
        grid->addItem(new QSpacerItem(kWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
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
    Widen(*box);
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

std::optional<CString> ChooseFile(const window::FileRequest& request, QWidget* parent) {
    const ModalBox<QFileDialog> box(parent);
    // The desktop's own may tell the case of letters in patterns, and speaks another language.
    box->setOption(QFileDialog::DontUseNativeDialog);
    box->setOption(QFileDialog::DontConfirmOverwrite, !request.confirmReplacing);
    box->setAcceptMode(request.forOpening ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    box->setFileMode(request.forOpening ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
    box->setDefaultSuffix(ToQt(request.defaultExtension.View()));
    NameLabels(*box, request.forOpening ? base::TextId::OpenFile : base::TextId::SaveFile);
    SetFilters(*box, request.filters);
    if (!request.initialName.IsEmpty())
        box->selectFile(QFile::decodeName(SystemBytes(request.initialName)));
    const int answer = box->exec();
    if (answer != QDialog::Accepted || !box.IsLeft() || box->selectedFiles().isEmpty())
        return std::nullopt;
    const QByteArray path = QFile::encodeName(box->selectedFiles().front());
    return CString(std::string_view(path.constData(), static_cast<std::size_t>(path.size())));
}

}  // namespace kortavin::qt
