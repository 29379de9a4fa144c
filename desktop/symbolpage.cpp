#include "desktop/symbolpage.h"

#include <QtCore/QEvent>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QFrame>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <optional>
#include <stdexcept>
#include <string>

#include "kortavin/base/exception.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/window/colordialog.h"
#include "kortavin/window/messagebox.h"

namespace kortavin::desktop {
namespace {

std::optional<COLORREF> ChooseColor(QWidget& window, COLORREF initial) try {
    CColorDialog chooser(initial, CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR, qt::WindowOf(&window));
    return chooser.DoModal() == IDOK ? std::optional(chooser.GetColor()) : std::nullopt;
} catch (const CException& error) {
    AfxMessageBox(error.GetErrorMessage());  // no error may pass through Qt
    return std::nullopt;
}

// Opens the chooser that a press on the picker's swatch opens: swatches know the mouse only.
template <class Picker>
QPushButton* MakeColorButton(const QString& text, const QString& accessibleName, const QString& name,
                             Picker& picker, COLORREF (Picker::*get)() const, void (Picker::*set)(COLORREF)) {
    auto* button = new QPushButton(text);
    button->setAccessibleName(accessibleName);
    button->setObjectName(name);
    QObject::connect(button, &QPushButton::clicked, button, [&picker, button, get, set] {
        if (const auto color = ChooseColor(*button->window(), (picker.*get)()))
            (picker.*set)(*color);
    });
    return button;
}

QFormLayout& AddGroup(QBoxLayout& column, const QString& title) {
    auto* group = new QGroupBox(title);
    column.addWidget(group);
    return *new QFormLayout(group);
}

void AddRow(QFormLayout& form, const QString& text, char key, QWidget* field, QWidget& buddy) {
    auto* label = new QLabel(QStringLiteral("%1(&%2)：").arg(text, QChar(key)));
    label->setBuddy(&buddy);
    form.addRow(label, field);
}

QHBoxLayout* MakeRow(QWidget* parent = nullptr) {
    auto* row = new QHBoxLayout(parent);
    row->setContentsMargins(0, 0, 0, 0);
    return row;
}

// A line around what stands in it, so that a swatch shows on a desktop of its own colour.
QFrame* Framed(QWidget* content) {
    auto* frame = new QFrame;
    frame->setFrameStyle(QFrame::Box | QFrame::Plain);
    MakeRow(frame)->addWidget(content);
    return frame;
}

void Attach(CWnd& picker, QWidget& widget, const QString& accessibleName, const char* name) {
    widget.setAccessibleName(accessibleName);
    widget.setObjectName(QString::fromLatin1(name));
    if (!qt::AttachTo(picker, widget))
        throw std::logic_error(std::string(name) + ": the widget cannot be attached");
}

// One width, so that the fields of all groups stand in one column.
void AlignLabels(const QWidget& form) {
    int width = 0;
    const auto labels = form.findChildren<QLabel*>();
    for (const QLabel* label : labels)
        width = std::max(width, label->sizeHint().width());
    for (QLabel* label : labels)
        label->setFixedWidth(width);
}

}  // namespace

SymbolPage::SymbolPage() {
    auto* columns = new QHBoxLayout(this);
    columns->addWidget(MakeForm());
    columns->addWidget(MakePreview(), 1);
    SetStartingSymbols();
    Follow();
}

QWidget* SymbolPage::MakeForm() {
    auto* form = new QWidget;
    auto* column = new QVBoxLayout(form);
    column->setContentsMargins(0, 0, 0, 0);
    QFormLayout& line = AddGroup(*column, QStringLiteral("线"));
    AddCombo(line, QStringLiteral("线型"), 'L', m_lineStyle, "lineStyle");
    AddSwatch(line, QStringLiteral("线颜色"), 'C', m_lineColor, "lineColor");
    QFormLayout& area = AddGroup(*column, QStringLiteral("面"));
    AddCombo(area, QStringLiteral("填充"), 'A', m_areaStyle, "areaStyle");
    AddSwatch(area, QStringLiteral("前景色"), 'F', m_areaColor, "areaColor");
    AddSwatch(area, QStringLiteral("背景色"), 'B', m_areaBackground, "areaBackground");
    AddSwatch(area, QStringLiteral("轮廓色"), 'O', m_areaOutline, "areaOutline");
    QFormLayout& point = AddGroup(*column, QStringLiteral("点"));
    AddCombo(point, QStringLiteral("大小"), 'Z', m_point, "point");
    AddPointColors(point);
    QFormLayout& text = AddGroup(*column, QStringLiteral("文字"));
    AddCombo(text, QStringLiteral("字符"), 'T', m_textSymbol, "textSymbol");
    AddSwatch(text, QStringLiteral("文字颜色"), 'X', m_textColor, "textColor");
    column->addStretch();
    AlignLabels(*form);
    return form;
}

void SymbolPage::AddCombo(QFormLayout& form, const QString& text, char key, CComboBox& picker,
                          const char* name) {
    auto* combo = new QComboBox;
    combo->setMinimumContentsLength(20);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    AddRow(form, text, key, combo, *combo);
    Attach(picker, *combo, text, name);
    combo->installEventFilter(this);
}

void SymbolPage::AddSwatch(QFormLayout& form, const QString& text, char key, CSelectColor& picker,
                           const char* name) {
    auto* swatch = new QWidget;
    auto* button = MakeColorButton(QStringLiteral("颜色…"), text + QStringLiteral("…"),
                                   QString::fromLatin1(name) + QStringLiteral("Button"), picker,
                                   &CSelectColor::GetColor, &CSelectColor::SetColor);
    auto* field = new QWidget;
    auto* parts = MakeRow(field);
    parts->addWidget(Framed(swatch), 1);
    parts->addWidget(button);
    AddRow(form, text, key, field, *button);
    Attach(picker, *swatch, text, name);
    swatch->installEventFilter(this);
}

// The picker itself shows the two swatches.
void SymbolPage::AddPointColors(QFormLayout& form) {
    auto* parts = MakeRow();
    parts->addWidget(MakeColorButton(QStringLiteral("填充颜色(&P)…"), QStringLiteral("点的填充颜色…"),
                                     QStringLiteral("pointColorButton"), m_point, &CSelSymStyle::GetColor,
                                     &CSelSymStyle::SetColor));
    parts->addWidget(MakeColorButton(QStringLiteral("轮廓颜色(&U)…"), QStringLiteral("点的轮廓颜色…"),
                                     QStringLiteral("pointOutlineButton"), m_point, &CSelSymStyle::GetBGColor,
                                     &CSelSymStyle::SetBGColor));
    form.addRow(QString(), parts);
}

QWidget* SymbolPage::MakePreview() {
    auto* sheet = new QWidget;
    sheet->setMinimumSize(320, 320);
    QFrame* frame = Framed(sheet);
    Attach(m_preview, *sheet, QStringLiteral("预览"), "preview");
    return frame;
}

void SymbolPage::SetStartingSymbols() {
    m_lineStyle.SetStyle(PS_SOLID);
    m_lineColor.SetColor(RGB(0, 0, 0));
    m_areaStyle.SetStyle(HS_BDIAGONAL);
    m_areaColor.SetColor(RGB(96, 160, 96));
    m_areaBackground.SetColor(RGB(232, 248, 232));
    m_areaOutline.SetColor(RGB(96, 96, 96));
    m_point.SetSize(200);
    m_point.SetColor(RGB(255, 160, 0));
    m_point.SetBGColor(RGB(0, 0, 0));
    m_textSymbol.SetSymbol(m_textSymbol.GetSymbol());
    m_textColor.SetColor(RGB(0, 0, 0));
}

Symbols SymbolPage::Chosen() const {
    return {m_lineStyle.GetStyle(),   m_lineColor.GetColor(),   m_areaStyle.GetStyle(),
            m_areaStyle.GetColor(),   m_areaStyle.GetBGColor(), m_areaStyle.GetOutLineColor(),
            m_point.GetSize(),        m_point.GetColor(),       m_point.GetBGColor(),
            m_textSymbol.GetSymbol(), m_textColor.GetColor()};
}

// What a picker keeps may change after it was painted for another reason, hence the queue: Follow comes after
// the event that is being handled.
bool SymbolPage::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint && !m_followIsQueued) {
        m_followIsQueued = true;
        QMetaObject::invokeMethod(
            this, [this] { Follow(); }, Qt::QueuedConnection);
    }
    return QWidget::eventFilter(watched, event);
}

void SymbolPage::Follow() {
    m_followIsQueued = false;
    if (m_areaStyle.GetColor() != m_areaColor.GetColor())
        m_areaStyle.SetColor(m_areaColor.GetColor());
    if (m_areaStyle.GetBGColor() != m_areaBackground.GetColor())
        m_areaStyle.SetBGColor(m_areaBackground.GetColor());
    if (m_areaStyle.GetOutLineColor() != m_areaOutline.GetColor())
        m_areaStyle.SetOutLineColor(m_areaOutline.GetColor());
    m_preview.Show(Chosen());
}

}  // namespace kortavin::desktop
