#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "kortavin/base/cstring.h"
#include "kortavin/base/exception.h"
#include "kortavin/base/geometry.h"
#include "kortavin/window/accessibletable.h"
#include "kortavin/window/gdi.h"
#include "kortavin/window/messages.h"
#include "kortavin/window/pointershape.h"

// The seam between the library and a windowing toolkit. A toolkit carries out the interfaces of this header
// and tells the library what happens by the functions of windowrecord.h, always on the user-interface thread.
// Pixels are the toolkit's logical ones, before any scaling for the screen. All text is GBK.
namespace kortavin::window {

class WindowRecord;

// One font as the toolkit made it. Lives as long as something uses it.
class KORTAVIN_SEAM NativeFont {
  public:
    virtual ~NativeFont();
    virtual TEXTMETRIC Metrics() const = 0;
    virtual int Width(std::string_view text) const = 0;  // of one run, in pixels
};

// How a line is drawn.
struct Stroke {
    COLORREF color = 0;
    int width = 1;                // pixels, centred on the line
    std::span<const int> dashes;  // dash, gap, dash...; empty: solid. The first begins at the first point
    std::optional<COLORREF> gapColor;  // nothing: gaps are left as they are
};

// How an area is filled. Neither field: not at all.
struct Fill {
    std::optional<HatchPattern> hatch;
    std::optional<COLORREF> color;       // of a solid fill, or of the set bits of the hatch
    std::optional<COLORREF> spaceColor;  // of the hatch's other pixels; nothing: they are left
};

// Paints in one client area. Everything outside the clip stays as it was.
class KORTAVIN_SEAM Painter {
  public:
    virtual ~Painter();
    virtual bool CanDraw() const = 0;  // false: every drawing operation does nothing
    virtual CSize PixelsPerInch() const = 0;
    virtual CRect ClipBox() const = 0;            // the part that may be painted, before SetClip
    virtual void SetClip(const CRect& rect) = 0;  // within ClipBox; takes the place of the former

    virtual void FillRect(const CRect& rect, const Fill& fill) = 0;
    virtual void InvertRect(const CRect& rect) = 0;
    // The last pixel of the last line is omitted.
    virtual void DrawPolyline(std::span<const CPoint> points, const Stroke& stroke) = 0;
    // Outline and inside of the ellipse in the rectangle; no outline where `outline` is null.
    virtual void DrawEllipse(const CRect& rect, const Fill& fill, const Stroke* outline) = 0;
    // One run from its upper left corner, on what is there.
    virtual void DrawText(CPoint corner, std::string_view text, const NativeFont& font, COLORREF color) = 0;
};

// One of a window's two scroll bars. A bar whose range is no larger than its page is hidden.
struct ScrollState {
    int minimum = 0;
    int maximum = 0;
    int page = 0;  // positions stop at maximum - page + 1 (maximum without a page)
    int position = 0;
    int trackPosition = 0;  // of the thumb while it is dragged, else the position
};

class NativeCombo;
class NativeButton;
class NativeList;
class NativeTabs;

// What the toolkit made for one window. The toolkit reports what happens to it as messages to its Window;
// where the library has no better answer it hands the message back to DefaultProc. Destroyed by the Window.
class KORTAVIN_SEAM NativeWindow {
  public:
    virtual ~NativeWindow();

    // The toolkit's own handling of a message: of the event that is being reported, or, for one that the
    // program sent, of an event that the toolkit makes from it. Answers what the message asks for, else 0.
    virtual LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    virtual void SetText(std::string_view text) = 0;
    virtual CString GetText() const = 0;  // the bytes that were set, until the user changes them
    virtual void SetFont(const CFont& font) = 0;
    virtual void Show(bool visible) = 0;
    virtual bool IsVisible() const = 0;  // on the screen: its parents are visible too
    virtual void Enable(bool enabled) = 0;
    virtual bool IsEnabled() const = 0;
    // Takes the toolkit's keyboard focus. Not reported back: the library tells the windows itself.
    virtual void TakeFocus() = 0;

    // The whole window with its borders and bars, in its parent's client coordinates (on the screen for one
    // without a parent). A size that differs is reported by WM_SIZE, but for the first time it is shown.
    virtual void Move(const CRect& rect) = 0;
    virtual CRect GetRect() const = 0;
    virtual CSize GetClientSize() const = 0;
    virtual CPoint ClientToScreen(CPoint point) const = 0;
    virtual CPoint ScreenToClient(CPoint point) const = 0;

    // Null: the whole client area.
    virtual void Invalidate(const CRect* rect) = 0;
    virtual void UpdateNow() = 0;  // paints at once what is invalid; nothing while hidden
    // Moves the pixels of `rect` by (dx, dy) inside it and invalidates what is uncovered; child windows stay.
    virtual void Scroll(int dx, int dy, const CRect& rect) = 0;
    // For the paint that is under way, once a paint; null when there is none. The clip is what is invalid.
    virtual std::unique_ptr<Painter> BeginPaint() = 0;
    virtual std::unique_ptr<Painter> ClientPainter() = 0;  // never null; may only measure

    virtual void SetScroll(int bar, const ScrollState& state) = 0;
    virtual ScrollState GetScroll(int bar) const = 0;

    virtual void SetCapture() = 0;
    virtual void ReleaseCapture() = 0;  // not reported back
    // Keeps the pointer in a rectangle of the client area; nothing: free. Where the desktop does not allow
    // that, positions that are reported are clamped.
    virtual void ConfinePointer(const std::optional<CRect>& rect) = 0;
    virtual void SetCursor(PointerShape shape) = 0;

    // Reports WM_TIMER again and again until stopped. Starting one that runs sets its period anew.
    virtual void StartTimer(UINT_PTR id, UINT milliseconds) = 0;
    virtual void StopTimer(UINT_PTR id) = 0;

    // The object that handled the messages was taken off. One that stands for a widget of the host may take
    // its Window away.
    virtual void ObjectLeft();

    // Name and description for screen readers; the text that is shown stays as it is.
    virtual void SetAccessibleText(std::string_view name, std::string_view description) = 0;
    // The window shows a table, which must live as long as it or until null is set, which the library does
    // when the object is taken off. The default tells nobody.
    virtual void SetAccessibleTable(AccessibleTable* table);
    virtual void TellTableChange(TableChange change, AccessibleTable::Cell cell);

    // The operations of particular controls; null for all other windows.
    virtual NativeCombo* AsCombo();
    virtual NativeButton* AsButton();
    virtual NativeList* AsList();
    virtual NativeTabs* AsTabs();
};

class KORTAVIN_SEAM NativeButton {
  public:
    virtual ~NativeButton();
    virtual bool IsChecked() const = 0;
    virtual void SetChecked(bool checked) = 0;  // not reported
};

// A combo box. What the program does to it is not reported; what the user does is, by NotifyParent with the
// CBN_ codes, after it has happened.
class KORTAVIN_SEAM NativeCombo {
  public:
    virtual ~NativeCombo();
    virtual int Count() const = 0;
    virtual void Insert(int index, std::string_view text) = 0;  // 0 .. Count(); selects nothing
    virtual void Remove(int index) = 0;
    virtual void Clear() = 0;
    virtual CString ItemText(int index) const = 0;
    virtual int Selection() const = 0;                      // -1: none
    virtual void Select(int index) = 0;                     // -1: none, and the edit field becomes empty
    virtual void SetItemHeight(int index, int height) = 0;  // -1: the selection field; else all items
    virtual int ItemHeight(int index) const = 0;
    virtual void SetDroppedWidth(int width) = 0;
    virtual void ShowList(bool open) = 0;
    virtual bool IsListOpen() const = 0;
    // What a screen reader says for an item in place of its text.
    virtual void SetItemAccessibleName(int index, std::string_view name) = 0;
    // The selection in the edit field as byte offsets of its text; -1 as the end: to the end. Nothing for a
    // combo without an edit field.
    virtual void SetEditSelection(int first, int last) = 0;
    // For a combo with an edit field (CBS_DROPDOWN): what stands for the field as a window of its own. The
    // field has the focus for the combo, and keys, characters and the focus are reported to it; its default
    // handling of them is the combo's. The combo outlives it.
    virtual std::unique_ptr<NativeWindow> MakeEditField(WindowRecord& field);  // null: there is none
};

// A list box with at most one item selected. What the program does to it is not reported; what the user does
// is, with the LBN_ codes, after it has happened.
class KORTAVIN_SEAM NativeList {
  public:
    virtual ~NativeList();
    virtual int Count() const = 0;
    virtual void Insert(int index, std::string_view text) = 0;  // 0 .. Count()
    virtual void Remove(int index) = 0;
    virtual void Clear() = 0;
    virtual CString ItemText(int index) const = 0;
    virtual int Selection() const = 0;  // -1: none
    virtual void Select(int index) = 0;
};

// A row of tabs over a frame in which pages are shown; the pages are windows of their own, beside this one.
// The user's choice of another tab, also by Ctrl with PgUp and PgDn from anywhere in the dialog, is reported
// with TCN_SELCHANGE when the tab has changed already; who does not agree selects the former one again.
class KORTAVIN_SEAM NativeTabs {
  public:
    virtual ~NativeTabs();
    virtual void Add(std::string_view text) = 0;
    virtual int Selection() const = 0;                  // -1: none
    virtual void Select(int index) = 0;                 // not reported
    virtual CRect Around(const CRect& page) const = 0;  // where the whole window lies if the page lies there
    virtual CRect TabRect(int index) const = 0;         // in the client area
};

enum class WindowKind { Plain, Dialog, Static, Button, ComboBox, Edit, ListBox, Tabs };

// What the library asks a toolkit to make.
struct WindowRequest {
    WindowKind kind = WindowKind::Plain;
    NativeWindow* parent = nullptr;
    DWORD style = 0;
    CRect rect;  // in the parent's client coordinates; for a dialog only the size of its client area counts
    CString text;
    const CFont* font = nullptr;  // null: the toolkit's own
};

// What a modal colour chooser is given.
struct ColorRequest {
    COLORREF initial = 0;
    bool preselect = false;  // starts with `initial`; otherwise with black
    bool fullOpen = false;   // with the part for custom colours open
    NativeWindow* parent = nullptr;
};

// What a modal file chooser is given.
struct FileRequest {
    struct Filter {
        CString name;      // as people see it
        CString patterns;  // separated by ';', letter case without meaning
    };
    bool forOpening = true;  // an existing file; else a name to write to
    bool confirmReplacing = false;
    std::vector<Filter> filters;
    CString defaultExtension;  // added to a name typed without one; empty: nothing is
    CString initialName;       // the system's own bytes
    NativeWindow* parent = nullptr;
};

class KORTAVIN_SEAM Toolkit {
  public:
    virtual ~Toolkit();

    // Made hidden unless the style has WS_VISIBLE. CResourceException when it cannot be made.
    virtual std::unique_ptr<NativeWindow> MakeWindow(const WindowRequest& request, WindowRecord& window) = 0;
    virtual std::shared_ptr<const NativeFont> MakeFont(const LOGFONT& description) = 0;
    virtual LOGFONT MessageBoxFont() const = 0;
    virtual COLORREF SystemColor(int index) const = 0;
    virtual int SystemMetric(int index) const = 0;
    // The desktop's setting of how many lines a notch of the wheel scrolls, as a decimal number ("-1": a
    // page); empty when there is none.
    virtual CString WheelScrollLines() const { return {}; }
    virtual CSize PixelsPerInch() const { return {96, 96}; }  // per logical inch

    virtual CPoint PointerPosition() const = 0;         // on the screen
    virtual bool IsKeyDown(UINT virtualKey) const = 0;  // Shift, Ctrl, Alt and the mouse buttons

    // Has DispatchPosted called from the loop, after what is being handled now.
    virtual void RequestDispatch() = 0;
    // Shows the dialog and runs the loop until EndModal is called for it.
    virtual void RunModal(NativeWindow& dialog) = 0;
    virtual void EndModal(NativeWindow& dialog) = 0;

    virtual int ShowMessageBox(std::string_view text, UINT type, NativeWindow* parent) = 0;
    // Runs the chooser; nothing when the user cancels. CResourceException when it cannot open.
    virtual std::optional<COLORREF> ChooseColor(const ColorRequest& request) = 0;
    // The same for a file: its path in the system's own bytes.
    virtual std::optional<CString> ChooseFile(const FileRequest& request) = 0;

    virtual void SetClipboardText(std::string_view text) = 0;
};

using ToolkitFactory = std::unique_ptr<Toolkit> (*)();

// A toolkit that is linked into the program (or loaded) names itself; called once while the program or
// library is loaded. The factory runs when the first window is needed; CResourceException where it cannot
// serve.
KORTAVIN_SEAM void RegisterToolkit(ToolkitFactory factory);

// Puts a toolkit in place (a test's own), or takes it away (null); answers the former. No window may exist.
// With null the next need makes one anew.
KORTAVIN_SEAM std::unique_ptr<Toolkit> SetToolkit(std::unique_ptr<Toolkit> toolkit);

// The toolkit in use: made by the registered factory at first, which libkortavin-qt, loaded from beside this
// library, registers if no other did. CResourceException, each time, where none can be had.
KORTAVIN_SEAM Toolkit& RequireToolkit();
KORTAVIN_SEAM Toolkit* CurrentToolkit();  // null while none is in use

}  // namespace kortavin::window
