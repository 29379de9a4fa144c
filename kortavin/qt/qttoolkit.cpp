#include "kortavin/qt/qttoolkit.h"

#include <QClipboard>
#include <QCursor>
#include <QFrame>
#include <QScreen>
#include <QTabWidget>
#include <algorithm>
#include <string>
#include <utility>

#include "kortavin/base/texts.h"
#include "kortavin/qt/accessibletable.h"
#include "kortavin/qt/application.h"
#include "kortavin/qt/capture.h"
#include "kortavin/qt/choosers.h"
#include "kortavin/qt/colors.h"
#include "kortavin/qt/dialog.h"
#include "kortavin/qt/font.h"
#include "kortavin/qt/geometry.h"
#include "kortavin/qt/translation.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/edit.h"
#include "kortavin/window/keys.h"
#include "kortavin/window/messagebox.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {
namespace {

std::unique_ptr<window::Toolkit> MakeQtToolkit() {
    return std::make_unique<QtToolkit>();
}

// The one object that is constructed at load.
[[maybe_unused]] const bool s_isRegistered = (window::RegisterToolkit(&MakeQtToolkit), true);

// A page shows the pane of the tabs that it lies on, which many styles give a colour of its own.
bool LiesOnTabs(const CRect& rect, const QWidget* parent) {
    const auto tabs = parent != nullptr ? parent->findChildren<QTabWidget*>(Qt::FindDirectChildrenOnly)
                                        : QList<QTabWidget*>();
    return std::ranges::any_of(tabs,
                               [&rect](const auto* each) { return each->geometry().contains(ToQt(rect)); });
}

std::unique_ptr<QtWindow> MakePlain(window::WindowRecord& window, const window::WindowRequest& request) {
    QWidget* const parent = ParentWidget(request);
    auto* const frame = new QFrame(parent);
    frame->setFocusPolicy(Qt::TabFocus);
    // Qt moves pixels of opaque widgets only.
    frame->setAutoFillBackground(!LiesOnTabs(request.rect, parent));
    if ((request.style & WS_BORDER) != 0)
        frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    return std::make_unique<QtWindow>(window, *frame, QtWindow::Ownership::Ours);
}

std::unique_ptr<QtWindow> Make(window::WindowRecord& window, const window::WindowRequest& request) {
    switch (request.kind) {
        case window::WindowKind::Dialog:
            return std::make_unique<QtDialog>(window, request);
        case window::WindowKind::Static:
            return MakeLabel(window, request);
        case window::WindowKind::Button:
            return MakeButton(window, request);
        case window::WindowKind::ComboBox:
            return MakeCombo(window, request);
        case window::WindowKind::Edit:
            return (request.style & ES_MULTILINE) != 0 ? MakeTextEdit(window, request)
                                                       : MakeLineEdit(window, request);
        case window::WindowKind::ListBox:
            return MakeListBox(window, request);
        case window::WindowKind::Tabs:
            return MakeTabs(window, request);
        case window::WindowKind::Plain:
            break;
    }
    return MakePlain(window, request);
}

QWidget* WidgetOf(window::NativeWindow* window) {
    return window != nullptr ? static_cast<QtWindow*>(window)->Widget() : nullptr;
}

// Where the focus was until now: in the window itself, in its list, or in a menu that lay over it.
bool WasIn(const QWidget* former, const QWidget& widget) {
    return former == nullptr || former->windowType() == Qt::Popup ||
           former->window()->windowType() == Qt::Popup || widget.isAncestorOf(former);
}

}  // namespace

QtToolkit::QtToolkit() {
    Prepare();
}

QtToolkit::~QtToolkit() = default;

QtToolkit* QtToolkit::Current() {
    return dynamic_cast<QtToolkit*>(window::CurrentToolkit());
}

// A host may end its application and start another one.
void QtToolkit::Prepare() {
    RequireApplication();
    if (m_application == qApp)
        return;
    m_application = qApp;
    ForgetFamilies();
    connect(qApp, &QApplication::focusChanged, this, &QtToolkit::OnFocusChanged);
    connect(qApp, &QApplication::fontDatabaseChanged, this, &ForgetFamilies);
    TranslateQt();
    InstallTableAccess();
}

std::unique_ptr<window::NativeWindow> QtToolkit::MakeWindow(const window::WindowRequest& request,
                                                            window::WindowRecord& window) {
    Prepare();
    auto made = Make(window, request);
    made->Begin(request);
    return made;
}

std::shared_ptr<const window::NativeFont> QtToolkit::MakeFont(const LOGFONT& description) {
    Prepare();
    return std::make_shared<QtFont>(description);
}

LOGFONT QtToolkit::MessageBoxFont() const {
    return qt::MessageBoxFont();
}

COLORREF QtToolkit::SystemColor(int index) const {
    return qt::SystemColor(index);
}

int QtToolkit::SystemMetric(int index) const {
    return qt::SystemMetric(index);
}

CString QtToolkit::WheelScrollLines() const {
    return CString(std::to_string(QApplication::wheelScrollLines()));
}

CSize QtToolkit::PixelsPerInch() const {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return Toolkit::PixelsPerInch();
    return {qRound(screen->logicalDotsPerInchX()), qRound(screen->logicalDotsPerInchY())};
}

CPoint QtToolkit::PointerPosition() const {
    const QtWindow* const holder = Capture::Holder();
    return holder != nullptr ? holder->LastPointer() : FromQt(QCursor::pos());
}

// As of the event that is being handled, which may be behind the keyboard.
bool QtToolkit::IsKeyDown(UINT virtualKey) const {
    const Qt::KeyboardModifiers modifiers =
        QtWindow::ModifiersOfEvent().value_or(QGuiApplication::keyboardModifiers());
    switch (virtualKey) {
        case VK_LBUTTON:
            return QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
        case VK_RBUTTON:
            return QGuiApplication::mouseButtons().testFlag(Qt::RightButton);
        case VK_SHIFT:
            return modifiers.testFlag(Qt::ShiftModifier);
        case VK_CONTROL:
            return modifiers.testFlag(Qt::ControlModifier);
        case VK_MENU:
            return modifiers.testFlag(Qt::AltModifier);
        default:
            return false;
    }
}

void QtToolkit::RequestDispatch() {
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool QtToolkit::event(QEvent* event) {
    if (event->type() != QEvent::User)
        return QObject::event(event);
    window::DispatchPosted();
    return true;
}

void QtToolkit::RunModal(window::NativeWindow& dialog) {
    static_cast<QtDialog&>(dialog).Run();
}

void QtToolkit::EndModal(window::NativeWindow& dialog) {
    static_cast<QtDialog&>(dialog).End();
}

// An application that ends takes no box any more, nor is another one to be made for it.
int QtToolkit::ShowMessageBox(std::string_view text, UINT /*type*/, window::NativeWindow* parent) {
    if (QCoreApplication::closingDown())
        return IDOK;
    Prepare();
    return qt::ShowMessageBox(text, WidgetOf(parent));
}

std::optional<COLORREF> QtToolkit::ChooseColor(const window::ColorRequest& request) {
    if (QCoreApplication::closingDown())
        throw CResourceException(base::Text(base::TextId::NoColorChooser));
    Prepare();
    return qt::ChooseColor(request, WidgetOf(request.parent));
}

std::optional<CString> QtToolkit::ChooseFile(const window::FileRequest& request) {
    if (QCoreApplication::closingDown())
        throw CResourceException(base::Text(base::TextId::NoFileChooser));
    Prepare();
    return qt::ChooseFile(request, WidgetOf(request.parent));
}

void QtToolkit::SetClipboardText(std::string_view text) {
    Prepare();
    QGuiApplication::clipboard()->setText(ToQt(text));
}

// A popup of the window that has the focus takes only the keys, not the focus.
void QtToolkit::OnFocusChanged(const QWidget* former, const QWidget* now) {
    if (FocusByProgram::IsUnderWay() || (now == nullptr && QApplication::activePopupWidget() != nullptr) ||
        (now != nullptr && now->window()->windowType() == Qt::Popup))
        return;
    window::WindowRecord* const holder = window::FocusWindow();
    if (QtWindow* const gainer = QtWindow::Of(now); gainer != nullptr)
        window::ReportFocus(&gainer->KeyReceiver().GetWindow());
    else if (const QWidget* const widget =
                 holder != nullptr ? static_cast<QtWindow&>(holder->Native()).FocusTarget() : nullptr;
             widget != nullptr && WasIn(former, *widget))
        window::ReportFocus(nullptr);
}

}  // namespace kortavin::qt
