#pragma once

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "kortavin/window/windowrecord.h"
#include "kortavin/window/wnd.h"
#include "tests/support/memory/surface.h"

namespace kortavin {
class CComboBox;
}

// A toolkit without a desktop. Windows are rectangles with a pixel surface each, fonts have fixed cells, and
// the user is the test: it says by the functions of input.h what happens, and scripts what choosers and modal
// dialogs do. Nothing happens by itself; posted messages and paints wait for Loop().
namespace kortavin::testing {

class MemoryToolkit;

class MemoryWindow : public window::NativeWindow {
  public:
    static constexpr int kScrollBarSize = 17;

    MemoryWindow(MemoryToolkit& toolkit, window::WindowRecord& record, const window::WindowRequest& request);
    ~MemoryWindow() override;

    // What a test looks at. Child windows have surfaces of their own and show nowhere else.
    const PixelSurface& Surface() const { return m_surface; }
    const DrawingLog& LastPaint() const { return m_log; }  // and what was drawn since
    const CRect& InvalidRect() const { return m_invalid; }
    int PaintCount() const { return m_paintCount; }
    window::PointerShape Cursor() const { return m_cursor; }
    const CString& AccessibleName() const { return m_accessibleName; }
    window::AccessibleTable* Table() const { return m_table; }
    std::vector<std::pair<window::TableChange, window::AccessibleTable::Cell>>& TableChanges() {
        return m_tableChanges;
    }
    const LOGFONT& Font() const { return m_font.GetLogFont(); }
    bool IsScrollBarShown(int bar) const;

    window::WindowRecord& Record() const { return m_record; }
    bool IsInside(const MemoryWindow* ancestor) const;  // or is it
    bool AcceptsInput() const;                          // it and all its parents are visible and enabled
    void SetTrackPosition(int bar, std::optional<int> position);
    virtual bool TakesFocusByClick() const { return false; }
    virtual window::WindowRecord* FocusPlace() const {
        return &m_record;
    }                                                // where it has the focus, when the user gives it
    virtual bool IsHitBy(CPoint clientPoint) const;  // else what lies behind is

    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetText(std::string_view text) override { m_text = CString(text); }
    CString GetText() const override { return m_text; }
    void SetFont(const CFont& font) override { m_font = font; }
    void Show(bool visible) override;
    bool IsVisible() const override;
    void Enable(bool enabled) override { m_enabled = enabled; }
    bool IsEnabled() const override { return m_enabled; }
    void TakeFocus() override {}
    void Move(const CRect& rect) override;
    CRect GetRect() const override { return m_rect; }
    CSize GetClientSize() const override { return InnerSize(); }
    CPoint ClientToScreen(CPoint point) const override;
    CPoint ScreenToClient(CPoint point) const override;
    void Invalidate(const CRect* rect) override;
    void UpdateNow() override;
    void Scroll(int dx, int dy, const CRect& rect) override;
    std::unique_ptr<window::Painter> BeginPaint() override;
    std::unique_ptr<window::Painter> ClientPainter() override;
    void SetScroll(int bar, const window::ScrollState& state) override;
    window::ScrollState GetScroll(int bar) const override { return m_scroll.at(static_cast<size_t>(bar)); }
    void SetCapture() override;
    void ReleaseCapture() override;
    void ConfinePointer(const std::optional<CRect>& rect) override;
    void SetCursor(window::PointerShape shape) override { m_cursor = shape; }
    void StartTimer(UINT_PTR id, UINT milliseconds) override;
    void StopTimer(UINT_PTR id) override;
    void SetAccessibleText(std::string_view name, std::string_view) override {
        m_accessibleName = CString(name);
    }
    void SetAccessibleTable(window::AccessibleTable* table) override { m_table = table; }
    void TellTableChange(window::TableChange change, window::AccessibleTable::Cell cell) override {
        m_tableChanges.emplace_back(change, cell);
    }

  protected:
    CRect ClientRect() const { return {{0, 0}, InnerSize()}; }
    CFont& TextFont() { return m_font; }
    void SetRect(const CRect& rect) { m_rect = rect; }
    virtual void PaintByDefault(std::unique_ptr<window::Painter> painter);
    void PaintText(window::Painter& painter, const CString& text);  // of a field

    MemoryToolkit& m_toolkit;
    window::WindowRecord& m_record;
    CString m_text;

  private:
    enum class Painting { No, Announced, Begun };

    int BorderWidth() const;
    CSize InnerSize() const;
    void FollowClientSize();

    MemoryWindow* m_parent;  // null for dialogs too: they lie on the screen
    CRect m_rect;
    CFont m_font;
    bool m_shown;
    bool m_enabled;
    bool m_hasBorder;
    std::array<bool, 2> m_hasBar;
    std::array<window::ScrollState, 2> m_scroll;
    window::PointerShape m_cursor = window::PointerShape::Arrow;
    CString m_accessibleName;
    window::AccessibleTable* m_table = nullptr;
    std::vector<std::pair<window::TableChange, window::AccessibleTable::Cell>> m_tableChanges;
    PixelSurface m_surface;
    DrawingLog m_log;
    CRect m_invalid;
    Painting m_painting = Painting::No;
    int m_paintCount = 0;
};

class MemoryToolkit : public window::Toolkit {
  public:
    // What the user will do in the next chooser: a colour, or nothing to cancel. An unexpected one is
    // cancelled.
    void NextColor(std::optional<COLORREF> choice) { m_colors.push_back(choice); }
    void LetNextColorChooserFail() { m_colorFails = true; }
    void LetNextWindowFail() { m_windowFails = true; }
    const std::vector<window::ColorRequest>& ColorRequests() const { return m_colorRequests; }
    // The same for files.
    void NextFile(std::optional<CString> path) { m_files.push_back(std::move(path)); }
    const std::vector<window::FileRequest>& FileRequests() const { return m_fileRequests; }
    const CString& ClipboardText() const { return m_clipboard; }
    // What the user will do in the next modal dialog, before all that was posted is sent. A dialog that it
    // does not end is closed as by its close button.
    void NextModal(std::function<void()> script) { m_modalScripts.push_back(std::move(script)); }
    const std::vector<CString>& MessageBoxes() const { return m_messageBoxes; }

    // All windows, in the order in which they were made.
    const std::vector<MemoryWindow*>& Windows() const { return m_windows; }
    // Tells all windows.
    void SetSystemColor(int index, COLORREF color);
    std::optional<UINT> TimerPeriod(const MemoryWindow& window, UINT_PTR id) const;  // of one that runs
    std::optional<CRect> Confinement() const;                                        // on the screen

    // The state of the devices. Moving the pointer answers where it came to: a confined one stays inside.
    CPoint MovePointer(CPoint screenPoint);
    void HoldKey(UINT virtualKey, window::WindowRecord* receiver) { m_keys[virtualKey] = receiver; }
    window::WindowRecord* LiftKey(
        UINT virtualKey);  // answers who got its press; null: nobody, or one that is gone
    // Whether what the user does reaches the window: the innermost modal dialog keeps it from others.
    bool IsReachable(const MemoryWindow& window) const;
    window::WindowRecord* KeyTarget()
        const;  // the focus window if it is reachable, else the innermost dialog, else none
    MemoryWindow* Captor() const { return m_captor; }
    MemoryWindow* PressedWindow() const { return m_pressed; }
    void SetPressedWindow(MemoryWindow* window) { m_pressed = window; }
    void EndCapture();  // as a popup does

    void Loop();

    std::unique_ptr<window::NativeWindow> MakeWindow(const window::WindowRequest& request,
                                                     window::WindowRecord& window) override;
    std::shared_ptr<const window::NativeFont> MakeFont(const LOGFONT& description) override;
    LOGFONT MessageBoxFont() const override;
    COLORREF SystemColor(int index) const override;
    int SystemMetric(int index) const override;
    CPoint PointerPosition() const override { return m_pointer; }
    bool IsKeyDown(UINT virtualKey) const override { return m_keys.contains(virtualKey); }
    void RequestDispatch() override { m_dispatchRequested = true; }
    void RunModal(window::NativeWindow& dialog) override;
    void EndModal(window::NativeWindow& dialog) override;
    int ShowMessageBox(std::string_view text, UINT type, window::NativeWindow* parent) override;
    std::optional<COLORREF> ChooseColor(const window::ColorRequest& request) override;
    std::optional<CString> ChooseFile(const window::FileRequest& request) override;
    void SetClipboardText(std::string_view text) override { m_clipboard = CString(text); }

  private:
    friend class MemoryWindow;
    struct ModalRun {
        MemoryWindow* dialog;  // null when it is gone
        bool ended = false;
    };

    void Forget(MemoryWindow& window);

    std::vector<MemoryWindow*> m_windows;
    std::map<std::pair<const MemoryWindow*, UINT_PTR>, UINT> m_timers;
    std::map<int, COLORREF> m_colorOverrides;
    std::map<UINT, window::WindowRecord*> m_keys;  // what is held down, and who got its press
    CPoint m_pointer;
    MemoryWindow* m_captor = nullptr;
    MemoryWindow* m_pressed = nullptr;  // has the button's press, and so gets its release
    MemoryWindow* m_confining = nullptr;
    CRect m_confinement;  // in its client area
    std::deque<ModalRun> m_modalRuns;
    std::deque<std::function<void()>> m_modalScripts;
    std::deque<std::optional<COLORREF>> m_colors;
    std::vector<window::ColorRequest> m_colorRequests;
    std::deque<std::optional<CString>> m_files;
    std::vector<window::FileRequest> m_fileRequests;
    CString m_clipboard;
    std::vector<CString> m_messageBoxes;
    bool m_colorFails = false;
    bool m_windowFails = false;
    bool m_dispatchRequested = false;
};

// Puts a memory toolkit in place for its own life. A window that is left at the end is a failure of the test.
class MemoryDesktop {
  public:
    MemoryDesktop();
    ~MemoryDesktop();
    MemoryDesktop(const MemoryDesktop&) = delete;
    MemoryDesktop& operator=(const MemoryDesktop&) = delete;

    MemoryToolkit* operator->() const { return m_toolkit; }

  private:
    MemoryToolkit* m_toolkit;
};

MemoryToolkit& TheDesktop();  // the one in place
MemoryWindow& NativeOf(const CWnd& window);
inline const PixelSurface& SurfaceOf(const CWnd& window) {
    return NativeOf(window).Surface();
}

}  // namespace kortavin::testing
