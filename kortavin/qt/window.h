#pragma once

#include <QObject>
#include <QPointer>
#include <QRegion>
#include <QWidget>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "kortavin/qt/scrollbars.h"
#include "kortavin/qt/text.h"
#include "kortavin/window/messagemap.h"
#include "kortavin/window/windowrecord.h"

class QAbstractButton;
class QComboBox;
class QInputMethodEvent;
class QKeyEvent;
class QLineEdit;
class QMouseEvent;
class QPaintEvent;
class QPlainTextEdit;
class QWheelEvent;

namespace kortavin::qt {

// The widget of a window. An event filter turns what happens to the widget into messages; where a message
// ends in the default handling, the widget handles the event itself. After every report both the widget and
// this object may be gone.
class QtWindow : public QObject, public window::NativeWindow {
  public:
    enum class Ownership { Ours, Hosts, Part };  // ours goes with the window, a part with its widget

    // Nothing is reported before Begin.
    QtWindow(window::WindowRecord& window, QWidget& widget, Ownership ownership);
    ~QtWindow() override;

    // What every widget of ours is given from the request: text, font, place, state. Begins to report.
    void Begin(const window::WindowRequest& request);
    void BeginReporting();  // of a widget of the host
    bool IsReporting() const { return m_isReporting; }

    // Null for a widget that has no window.
    static QtWindow* Of(const QObject* widget);

    QWidget* Widget() const { return m_widget; }  // null once it is gone
    // The widget that has the focus for this one, which is a part of it; null as above.
    QWidget* FocusTarget() const;
    // The window to which the keys and the focus of this one's widget are reported.
    virtual QtWindow& KeyReceiver() { return *this; }
    window::WindowRecord& GetWindow() const { return m_window; }
    // Of the innermost input event that is being reported; nothing when there is none.
    static std::optional<Qt::KeyboardModifiers> ModifiersOfEvent();
    // The client area in the widget: without border and scroll bars.
    QRect ClientArea() const;
    CPoint LastPointer() const;  // as it was reported, on the screen
    // The capture ends without the program's doing.
    void LoseCapture();

    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    void SetText(std::string_view text) override;
    CString GetText() const override;
    void SetFont(const CFont& font) override;
    void Show(bool visible) override;
    bool IsVisible() const override;
    void Enable(bool enabled) override;
    bool IsEnabled() const override;
    void TakeFocus() override;

    void Move(const CRect& rect) override;
    CRect GetRect() const override;
    CSize GetClientSize() const override;
    CPoint ClientToScreen(CPoint point) const override;
    CPoint ScreenToClient(CPoint point) const override;

    void Invalidate(const CRect* rect) override;
    void UpdateNow() override;
    void Scroll(int dx, int dy, const CRect& rect) override;
    std::unique_ptr<window::Painter> BeginPaint() override;
    std::unique_ptr<window::Painter> ClientPainter() override;

    void SetScroll(int bar, const window::ScrollState& state) override;
    window::ScrollState GetScroll(int bar) const override;

    void SetCapture() override;
    void ReleaseCapture() override;
    void ConfinePointer(const std::optional<CRect>& rect) override;
    void SetCursor(window::PointerShape shape) override;

    void StartTimer(UINT_PTR id, UINT milliseconds) override;
    void StopTimer(UINT_PTR id) override;

    void ObjectLeft() override;
    void SetAccessibleText(std::string_view name, std::string_view description) override;
    void SetAccessibleTable(window::AccessibleTable* table) override;
    void TellTableChange(window::TableChange change, window::AccessibleTable::Cell cell) override;
    window::AccessibleTable* Table() const { return m_table; }  // null: shows none

    // Runs what paints the window or one part of it (of a combo box: an item). An error is told from the
    // loop, not in the midst of painting, and once for as long as any part fails at each try.
    template <class Body>
    void GuardPainting(int part, Body&& body) noexcept {
        const QPointer<QtWindow> alive(this);
        try {
            body();
            if (alive != nullptr)
                OnPainted(part);
        } catch (...) {
            if (alive != nullptr)
                OnPaintError(part);
        }
    }

  protected:
    // Of the widget, and of what a derived class installs the filter on as well (it handles those first).
    bool eventFilter(QObject* watched, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

    // Whether an event is done with. Errors may leave this.
    bool Filter(QEvent& event);
    // The widget's own handling of an event. It may end the life of everything here.
    virtual void HandToWidget(QEvent& event);
    // The keys that the widget itself is made for: the answer to WM_GETDLGCODE where no handler has one.
    virtual UINT DialogCode() const { return 0; }
    virtual void Resize(QSize size);  // of the whole widget, with border and bars
    void ReportSize();                // if it differs from what was last reported
    // A part of the widget that has the focus and the keys for it, and lives as long.
    void AddPart(const QWidget& part);

  private:
    struct ReportedEvent;
    enum class Outcome { Handed, Taken, Gone };

    // Reports a message that `event` (null: none) stands behind: whether the widget handled it, the handler
    // took it or the window is gone.
    Outcome ReportEvent(QEvent* event, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    template <class Then>
    bool After(QEvent& event, Then then);

    bool OnPaint(QPaintEvent& event);
    bool OnMouse(QMouseEvent& event);
    bool OnWheel(QWheelEvent& event);
    bool OnClose(QEvent& event);
    bool OnFocusIn();
    bool AskForCursor(UINT message);  // false: the window is gone
    void OnPainted(int part);
    void OnPaintError(int part) noexcept;
    void Unregister() const;
    void OnWidgetGone();
    void FollowParent();
    int BorderWidth() const;  // around the client area and the bars
    QRect InnerArea() const;  // within the border
    bool IsLeftAlone() const;
    CPoint ClientPoint(QPoint widgetPoint) const;  // clamped while confined
    void TakeTabPlace();

    bool OnShortcutOverride(QKeyEvent& event);
    bool OnKeyPress(QKeyEvent& event);
    bool OnKeyRelease(QKeyEvent& event);
    bool OnInputMethod(QInputMethodEvent& event);
    bool BeginComposition(QInputMethodEvent& event);
    bool MoveOn(const QKeyEvent& event);
    bool ReportKeyDown(QKeyEvent& event, bool isWanted);  // false: the window is gone
    void ReportCharacters(QKeyEvent& event, UINT message);
    void ReportTyped(const std::vector<WPARAM>& characters);
    bool Wants(const QKeyEvent& event);
    bool IsForDescendant() const;
    void ForgetKeys() const;
    void HandOwnEvent(const window::Message& message);

    window::WindowRecord& m_window;
    QPointer<QWidget> m_widget;
    const QObject* m_key;             // what it was once it is gone
    const QObject* m_part = nullptr;  // the same; null: it has none
    Ownership m_ownership;
    bool m_isReporting = false;
    bool m_wasCursorSet = false;
    bool m_isComposing = false;
    bool m_mayBeginPaint = false;
    ReportedEvent* m_reported = nullptr;  // the innermost
    CString m_text;
    CSize m_reportedSize;
    QRegion m_invalid;      // since the last paint, by the program
    QRegion m_paintRegion;  // of the paint under way
    std::set<int> m_failingParts;
    int m_wheelRest = 0;  // of a notch, not yet reported
    bool m_takesWheel = false;
    CPoint m_lastPointer;  // in the client area
    std::optional<CRect> m_confinement;
    std::map<UINT_PTR, int> m_timers;  // Qt's ids by ours
    std::unique_ptr<ScrollBars> m_bars;
    window::AccessibleTable* m_table = nullptr;
};

// The window of a widget: one that only stands for it, where it has none. Null for null.
window::WindowRecord* RequireWindowOf(QWidget* widget);

// The widget of a request's parent; null without one.
QWidget* ParentWidget(const window::WindowRequest& request);

// The windows of controls. The first make a widget, hidden, in the request's parent, as the request's style
// says; what all widgets have in common is left to Begin. The others are for a widget of the host.
std::unique_ptr<QtWindow> MakeButton(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> MakeCombo(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> MakeLabel(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> MakeLineEdit(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> MakeTextEdit(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> MakeListBox(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> MakeTabs(window::WindowRecord& window, const window::WindowRequest& request);
std::unique_ptr<QtWindow> AttachButton(window::WindowRecord& window, QAbstractButton& widget);
std::unique_ptr<QtWindow> AttachCombo(window::WindowRecord& window, QComboBox& widget);
std::unique_ptr<QtWindow> AttachLabel(window::WindowRecord& window, QWidget& widget);
std::unique_ptr<QtWindow> AttachLineEdit(window::WindowRecord& window, QLineEdit& widget);
std::unique_ptr<QtWindow> AttachTextEdit(window::WindowRecord& window, QPlainTextEdit& widget);

}  // namespace kortavin::qt
