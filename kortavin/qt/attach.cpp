#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <typeinfo>

#include "kortavin/qt/qttoolkit.h"
#include "kortavin/qt/qtwidgets.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/combobox.h"
#include "kortavin/window/edit.h"

namespace kortavin::qt {
namespace {

window::WindowKind KindOf(const QWidget& widget) {
    if (qobject_cast<const QComboBox*>(&widget) != nullptr)
        return window::WindowKind::ComboBox;
    if (qobject_cast<const QAbstractButton*>(&widget) != nullptr)
        return window::WindowKind::Button;
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr ||
        qobject_cast<const QPlainTextEdit*>(&widget) != nullptr)
        return window::WindowKind::Edit;
    return qobject_cast<const QLabel*>(&widget) != nullptr ? window::WindowKind::Static
                                                           : window::WindowKind::Plain;
}

std::unique_ptr<QtWindow> Attach(window::WindowRecord& window, QWidget& widget) {
    switch (window.Kind()) {
        case window::WindowKind::ComboBox:
            return AttachCombo(window, static_cast<QComboBox&>(widget));
        case window::WindowKind::Button:
            return AttachButton(window, static_cast<QAbstractButton&>(widget));
        case window::WindowKind::Static:
            return AttachLabel(window, widget);
        case window::WindowKind::Edit:
            if (auto* const text = qobject_cast<QPlainTextEdit*>(&widget); text != nullptr)
                return AttachTextEdit(window, *text);
            return AttachLineEdit(window, static_cast<QLineEdit&>(widget));
        default:
            return std::make_unique<QtWindow>(window, widget, QtWindow::Ownership::Hosts);
    }
}

// A class derived from CComboBox draws its items; an edit box of several lines breaks them by Enter.
DWORD StyleFor(const CWnd& object, window::WindowKind kind, const QWidget& widget) {
    constexpr DWORD kBasic = WS_CHILD | WS_VISIBLE;
    if (qobject_cast<const QPlainTextEdit*>(&widget) != nullptr)
        return kBasic | ES_MULTILINE | ES_WANTRETURN;
    if (kind != window::WindowKind::ComboBox)
        return kBasic;
    const bool drawsItems =
        dynamic_cast<const CComboBox*>(&object) != nullptr && typeid(object) != typeid(CComboBox);
    return kBasic | CBS_DROPDOWNLIST | CBS_HASSTRINGS | (drawsItems ? CBS_OWNERDRAWFIXED : 0);
}

window::WindowRecord* MakeWindowOf(QWidget& widget, const window::WindowPlace& place) {
    return window::WindowRecord::Create(
        place, [&widget](window::WindowRecord& made) { return Attach(made, widget); });
}

bool IsFree(const QtWindow* existing, window::WindowKind kind) {
    return existing == nullptr ||
           (existing->GetWindow().Object() == nullptr && existing->GetWindow().Kind() == kind);
}

// One that takes keys can be reached by them, if the host has not seen to that.
void LetTabReach(QWidget& widget, window::WindowRecord* window) {
    if (widget.focusPolicy() == Qt::NoFocus && window->Kind() == window::WindowKind::Plain &&
        window::Report(*window, WM_GETDLGCODE) != 0)
        widget.setFocusPolicy(Qt::TabFocus);
}

bool IsQtInUse() {
    window::RequireToolkit();
    return QtToolkit::Current() != nullptr;
}

}  // namespace

window::WindowRecord* RequireWindowOf(QWidget* widget) {
    if (widget == nullptr)
        return nullptr;
    const QtWindow* const existing = QtWindow::Of(widget);
    return existing != nullptr
               ? &existing->GetWindow()
               : MakeWindowOf(*widget, {window::WindowKind::Plain, nullptr, nullptr, 0, WS_VISIBLE});
}

QWidget* WidgetOf(const CWnd& object) {
    window::WindowRecord* const window = window::RecordOf(&object);
    const auto* const own = window != nullptr ? dynamic_cast<const QtWindow*>(&window->Native()) : nullptr;
    return own != nullptr ? own->Widget() : nullptr;
}

BOOL AttachTo(CWnd& object, QWidget& widget, UINT id) {
    const window::WindowKind kind = KindOf(widget);
    if (object.m_hWnd != nullptr || !IsQtInUse() || !IsFree(QtWindow::Of(&widget), kind))
        return FALSE;
    if (QtWindow::Of(&widget) == nullptr)
        MakeWindowOf(widget, {kind, RequireWindowOf(widget.parentWidget()), nullptr, static_cast<int>(id),
                              StyleFor(object, kind, widget)});
    QtWindow& own = *QtWindow::Of(&widget);
    own.GetWindow().SetId(static_cast<int>(id));
    own.BeginReporting();
    if (!object.SubclassWindow(&own.GetWindow()))
        return FALSE;
    LetTabReach(widget, &own.GetWindow());
    return TRUE;
}

CWnd* WindowOf(QWidget* widget) {
    return widget != nullptr && IsQtInUse() ? CWnd::FromHandle(RequireWindowOf(widget)) : nullptr;
}

}  // namespace kortavin::qt
