#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <map>
#include <optional>
#include <utility>

#include "kortavin/qt/keys.h"
#include "kortavin/qt/reportedevent.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/keys.h"

namespace kortavin::qt {
namespace {

// Which window a key went down in, by the key's place on the keyboard where the platform tells it.
class PressedKeys {
  public:
    static void Press(const QKeyEvent& event, const window::WindowRecord& window) {
        Places()[PlaceOf(event)] = &window;
    }
    static bool Release(const QKeyEvent& event, const window::WindowRecord& window) {
        const auto found = Places().find(PlaceOf(event));
        const bool isHere = found != Places().end() && found->second == &window;
        if (found != Places().end())
            Places().erase(found);
        return isHere;
    }
    static void Forget(const window::WindowRecord& window) {
        std::erase_if(Places(), [&window](const auto& place) { return place.second == &window; });
    }

  private:
    static quint32 PlaceOf(const QKeyEvent& event) {
        return event.nativeScanCode() != 0 ? event.nativeScanCode() : static_cast<quint32>(event.key());
    }
    static std::map<quint32, const window::WindowRecord*>& Places() {
        static auto* places = new std::map<quint32, const window::WindowRecord*>;
        return *places;
    }
};

bool IsTab(const QKeyEvent& event) {
    return event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
}

bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

// What a dialog uses itself unless the window asks for it.
bool IsDialogKey(const QKeyEvent& event) {
    return IsTab(event) || IsEnter(event) || event.key() == Qt::Key_Escape;
}

bool IsArrow(const QKeyEvent& event) {
    return event.key() == Qt::Key_Left || event.key() == Qt::Key_Right || event.key() == Qt::Key_Up ||
           event.key() == Qt::Key_Down;
}

// Keys with Alt are for menus and labels.
bool IsSystemKey(const QKeyEvent& event) {
    return event.key() == Qt::Key_Alt ||
           (event.modifiers().testFlag(Qt::AltModifier) && !event.modifiers().testFlag(Qt::ControlModifier));
}

bool IsControlKey(const QKeyEvent& event) {
    return event.modifiers().testFlag(Qt::ControlModifier) && !event.modifiers().testFlag(Qt::AltModifier);
}

bool HasVisibleText(const QKeyEvent& event) {
    return !event.text().isEmpty() && event.text().front() >= QChar(' ') && event.text() != QChar(0x7F) &&
           !IsControlKey(event);
}

// The character of a key that has always the same; an event that a program made may lack it.
std::optional<WPARAM> FixedCharacterOf(const QKeyEvent& event) {
    if (IsTab(event))
        return VK_TAB;
    if (IsEnter(event))
        return VK_RETURN;
    if (event.key() == Qt::Key_Escape)
        return VK_ESCAPE;
    return event.key() == Qt::Key_Backspace ? std::optional<WPARAM>(VK_BACK) : std::nullopt;
}

// Letters with Ctrl stand for control characters. The delete key's tells nobody anything.
std::vector<WPARAM> TypedCharacters(const QKeyEvent& event) {
    if (const auto fixed = FixedCharacterOf(event); fixed && event.text().isEmpty())
        return {*fixed};
    if (IsControlKey(event) && event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z)
        return {static_cast<WPARAM>(event.key() - Qt::Key_A + 1)};
    const bool isControl = !event.text().isEmpty() && event.text().front() < QChar(' ');
    return isControl || HasVisibleText(event) ? CharactersOf(event.text()) : std::vector<WPARAM>();
}

// One press, and whether the key was down before.
LPARAM KeyParam(const QKeyEvent& event) {
    constexpr WORD kWasDown = 0x4000;
    return static_cast<LPARAM>(MakeWParam(1, event.isAutoRepeat() ? kWasDown : 0));
}

}  // namespace

// A key that a child window left to its parents is the toolkit's, not theirs.
bool QtWindow::IsForDescendant() const {
    const QWidget* const focus = m_widget->window()->focusWidget();
    return focus != nullptr && focus != m_widget && m_widget->isAncestorOf(focus);
}

bool QtWindow::Wants(const QKeyEvent& event) {
    const auto code = static_cast<UINT>(window::Report(m_window, WM_GETDLGCODE));
    if (IsSystemKey(event))
        return false;
    if ((code & DLGC_WANTALLKEYS) != 0)
        return true;
    if (IsTab(event))
        return (code & DLGC_WANTTAB) != 0;
    if (IsArrow(event))
        return (code & DLGC_WANTARROWS) != 0;
    return (code & DLGC_WANTCHARS) != 0 && (HasVisibleText(event) || IsEnter(event));
}

bool QtWindow::OnShortcutOverride(QKeyEvent& event) {
    if (IsForDescendant() || !Wants(event))
        return false;
    event.accept();
    return true;
}

// Ctrl+Tab moves on from every control; Qt knows only the plain Tab for that.
bool QtWindow::MoveOn(const QKeyEvent& event) {
    if (!IsTab(event) || !event.modifiers().testFlag(Qt::ControlModifier))
        return false;
    const bool isBack = event.key() == Qt::Key_Backtab || event.modifiers().testFlag(Qt::ShiftModifier);
    QKeyEvent tab(QEvent::KeyPress, isBack ? Qt::Key_Backtab : Qt::Key_Tab,
                  isBack ? Qt::ShiftModifier : Qt::NoModifier);
    HandToWidget(tab);
    return true;
}

// The widget handles a key with its character where it has a visible one, else with the key itself: then its
// character has nothing left to do. What the widget ignores climbs to its parents. A Tab that goes on to the
// next control types nothing; Esc is a dialog's even where it is wanted, unless a handler takes it.
bool QtWindow::OnKeyPress(QKeyEvent& event) {
    const bool isSystem = IsSystemKey(event);
    if (IsForDescendant() || (isSystem && event.text().isEmpty()))
        return false;
    if (MoveOn(event))
        return true;
    const QPointer<QtWindow> alive(this);
    const bool isWanted = Wants(event);
    if (alive != nullptr && !isWanted && IsDialogKey(event))
        return false;
    event.accept();
    if (alive != nullptr && (isSystem || ReportKeyDown(event, isWanted)) && (isWanted || !IsTab(event)))
        ReportCharacters(event, isSystem ? WM_SYSCHAR : WM_CHAR);
    if (alive == nullptr || (isWanted && event.key() != Qt::Key_Escape))
        event.accept();
    return true;
}

bool QtWindow::ReportKeyDown(QKeyEvent& event, bool isWanted) {
    if (!event.isAutoRepeat())
        PressedKeys::Press(event, m_window);
    const bool isForCharacter = HasVisibleText(event) || (IsTab(event) && isWanted);
    return ReportEvent(isForCharacter ? nullptr : &event, WM_KEYDOWN, VirtualKeyOf(event), KeyParam(event)) !=
           Outcome::Gone;
}

void QtWindow::ReportCharacters(QKeyEvent& event, UINT message) {
    const auto characters = TypedCharacters(event);
    if (characters.size() > 1)
        ReportTyped(characters);
    else if (!characters.empty())
        ReportEvent(message == WM_SYSCHAR || HasVisibleText(event) ? &event : nullptr, message,
                    characters.front(), KeyParam(event));
}

// Several at once: after the first, which may open an editor for the others, they follow the focus.
void QtWindow::ReportTyped(const std::vector<WPARAM>& characters) {
    const QPointer<QWidget> top(m_widget->window());
    const QPointer<QtWindow> first(this);
    for (std::size_t i = 0; i < characters.size(); ++i) {
        QtWindow* const focus = i > 0 && top != nullptr ? Of(top->focusWidget()) : nullptr;
        const QtWindow* const target = focus != nullptr ? &focus->KeyReceiver() : first.data();
        if (target != nullptr)
            window::Report(target->m_window, WM_CHAR, characters[i], 1);
    }
}

// A composition goes on where the focus is when its beginning was told: in an editor that was opened for it.
// True: not here.
bool QtWindow::BeginComposition(QInputMethodEvent& event) {
    const bool isComposing = !event.preeditString().isEmpty();
    if (std::exchange(m_isComposing, isComposing) || !isComposing)
        return false;
    const QPointer<QtWindow> alive(this);
    window::Report(m_window, WM_IME_STARTCOMPOSITION);
    if (alive == nullptr || m_widget == nullptr)
        return true;
    QWidget* const focus = m_widget->window()->focusWidget();
    if (focus == nullptr || focus == FocusTarget())
        return false;
    m_isComposing = false;
    QCoreApplication::sendEvent(focus, &event);
    return true;
}

// Text that was committed arrives as characters; the widget sees the rest of the event around them.
bool QtWindow::OnInputMethod(QInputMethodEvent& event) {
    if (BeginComposition(event))
        return true;
    if (event.commitString().isEmpty())
        return false;
    const QPointer<QtWindow> alive(this);
    const auto characters = CharactersOf(event.commitString());
    QInputMethodEvent ended;
    ended.setCommitString({}, event.replacementStart(), event.replacementLength());
    HandToWidget(ended);
    if (alive != nullptr && m_widget != nullptr)
        ReportTyped(characters);
    QInputMethodEvent next(event.preeditString(), event.attributes());
    if (alive != nullptr && !event.preeditString().isEmpty())
        HandToWidget(next);
    event.accept();
    return true;
}

void QtWindow::ForgetKeys() const {
    PressedKeys::Forget(m_window);
}

bool QtWindow::OnKeyRelease(QKeyEvent& event) {
    if (IsForDescendant())
        return false;
    event.accept();
    if (!event.isAutoRepeat() && PressedKeys::Release(event, m_window))
        ReportEvent(&event, WM_KEYUP, VirtualKeyOf(event), KeyParam(event));
    return true;
}

}  // namespace kortavin::qt
