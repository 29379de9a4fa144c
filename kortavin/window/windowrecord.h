#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "kortavin/window/toolkit.h"
#include "kortavin/window/wnd.h"

namespace kortavin::window {

// How a window stands among the others.
struct WindowPlace {
    WindowKind kind = WindowKind::Plain;
    WindowRecord* parent = nullptr;  // it lies in this one and is destroyed with it
    WindowRecord* owner = nullptr;   // gets its notifications; null: the parent does
    int id = 0;
    DWORD style = 0;
};

// The library's record of one native window: its place in the tree, the object that handles its messages, and
// the focus, capture and posted messages that concern it. WindowRecord* points to one. Without an object its
// messages go to the toolkit's own handling.
class KORTAVIN_SEAM WindowRecord {
  public:
    using MakeNative = std::function<std::unique_ptr<NativeWindow>(WindowRecord&)>;

    // Makes the record and, by `make`, what it stands for. The record owns itself until Destroy. Null when
    // that makes nothing.
    static WindowRecord* Create(const WindowPlace& place, const MakeNative& make);
    // As asked of the toolkit in use, which is loaded if need be.
    static WindowRecord* Create(const WindowPlace& place, const WindowRequest& request);

    // Takes the window and all its children away: the focus and the capture leave it, WM_DESTROY and
    // WM_NCDESTROY go out, posted messages are dropped, and the native window is destroyed. Raises no error.
    void Destroy() noexcept;

    WindowRecord(const WindowRecord&) = delete;
    WindowRecord& operator=(const WindowRecord&) = delete;

    NativeWindow& Native() const { return *m_native; }
    WindowKind Kind() const { return m_place.kind; }
    WindowRecord* Parent() const { return m_place.parent; }
    void SetParent(WindowRecord* parent);  // behind its other children; null: none
    WindowRecord* Receiver() const { return m_place.owner != nullptr ? m_place.owner : m_place.parent; }
    void SetOwner(WindowRecord* owner) { m_place.owner = owner; }
    int Id() const { return m_place.id; }
    void SetId(int id) { m_place.id = id; }
    DWORD Style() const { return m_place.style; }
    const std::vector<WindowRecord*>& Children() const { return m_children; }
    WindowRecord* Child(int id) const;  // null when there is none; the first made counts

    // It is being destroyed, or a window that it lies in is: it takes neither focus nor capture any more.
    bool IsDying() const { return m_dying || (m_place.parent != nullptr && m_place.parent->IsDying()); }

    // The object that handles the messages; not owned. Null: the toolkit's own handling.
    CWnd* Object() const { return m_object; }
    void SetObject(CWnd* object) { m_object = object; }
    // The object, or one made for the asking that lives as long as the window.
    CWnd* ObjectForAsking();
    bool WasAskedFor() const { return m_madeObject != nullptr; }

    // A notification or a request of this control: its object may answer it, else the receiver does.
    LRESULT OfferToControl(UINT message, WPARAM wParam, LPARAM lParam);

    // The font last set; the message-box font before.
    CFont& Font();
    void SetFont(const CFont& font) { m_font = font; }

  private:
    explicit WindowRecord(const WindowPlace& place);
    ~WindowRecord();

    WindowPlace m_place;
    std::unique_ptr<NativeWindow> m_native;
    CWnd* m_object = nullptr;
    std::unique_ptr<CWnd> m_madeObject;
    std::vector<WindowRecord*> m_children;
    CFont m_font;
    bool m_dying = false;
};

// What a handle stands for; null for null.
inline WindowRecord* RecordOf(HWND window) {
    return static_cast<WindowRecord*>(window);
}
// What an object is attached to; null for null.
KORTAVIN_SEAM WindowRecord* RecordOf(const CWnd* window);

// What a toolkit reports. No error leaves these: one of the framework's is shown in a message box, any
// other ends the innermost modal run and is thrown by its DoModal. A window may be gone when they return.

// A message to the window's object, else to the toolkit's own handling. Mouse and key messages, WM_PAINT,
// WM_SIZE, WM_TIMER, WM_HSCROLL and WM_VSCROLL, WM_SETCURSOR, WM_CLOSE, WM_DRAWITEM and WM_MEASUREITEM (to
// the control itself), WM_GETDLGCODE, WM_SYSCOLORCHANGE.
KORTAVIN_SEAM LRESULT Report(WindowRecord& window, UINT message, WPARAM wParam = 0,
                             LPARAM lParam = 0) noexcept;
// The control notifies with `code`: it may handle that itself (a reflected notification), else its owner or
// parent gets WM_COMMAND.
KORTAVIN_SEAM void ReportNotification(WindowRecord& control, WORD code) noexcept;
// The user moved the keyboard focus; null: out of the library's windows. Not for popups of the focus window.
KORTAVIN_SEAM void ReportFocus(HWND gainer) noexcept;
// The capture ended without ReleaseCapture.
KORTAVIN_SEAM void ReportCaptureLost() noexcept;
// The host destroyed what the window stands for.
KORTAVIN_SEAM void ReportGone(WindowRecord& window) noexcept;
// Sends what was posted, in its order, until the queue is empty; what is posted meanwhile comes last.
KORTAVIN_SEAM void DispatchPosted() noexcept;
// For a toolkit's own code under the same rule: in a catch clause, and around a piece of code.
KORTAVIN_SEAM void ReportCurrentError() noexcept;
template <class Body>
void Guarded(Body&& body) noexcept {
    try {
        body();
    } catch (...) {
        ReportCurrentError();
    }
}

// What the library itself uses.

// To the window's object at once; errors reach the caller. 0 for a window that is gone.
KORTAVIN_SEAM LRESULT SendMessage(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
// Later, from the loop; dropped if the window is gone by then. FALSE for one that is gone already.
KORTAVIN_SEAM BOOL PostMessage(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
// As ReportNotification, but errors reach the caller.
KORTAVIN_SEAM LRESULT NotifyReceiver(HWND control, WORD code);
KORTAVIN_SEAM WindowRecord* FocusWindow();
// Null: no window of the library. `byUser`: as if the user had moved it there by keys.
KORTAVIN_SEAM void SetFocusTo(HWND gainer, bool byUser = false);
KORTAVIN_SEAM WindowRecord* CaptureWindow();
KORTAVIN_SEAM void SetCaptureTo(HWND gainer);  // null: released
// What a message comes to when no handler took it. For a window that exists.
LRESULT HandleByDefault(WindowRecord* window, UINT message, WPARAM wParam, LPARAM lParam);
void DropPosted(HWND window);                     // it is going
void LeaveFocusAndCapture(HWND window) noexcept;  // it is going

// Runs a dialog's loop; an error that ended it is thrown again.
KORTAVIN_SEAM void RunModal(WindowRecord* dialog);

}  // namespace kortavin::window
