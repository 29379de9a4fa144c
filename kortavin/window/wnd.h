#pragma once

#include <memory>

#include "kortavin/base/object.h"
#include "kortavin/window/dc.h"
#include "kortavin/window/keys.h"
#include "kortavin/window/messagemap.h"
#include "kortavin/window/messages.h"
#include "kortavin/window/pointershape.h"
#include "kortavin/window/styles.h"

namespace kortavin {

class CDataExchange;
namespace window {
class WindowRecord;
}

// A command's or menu entry's state as its handler sets it.
class CCmdUI {
  public:
    UINT m_nID = 0;
    virtual ~CCmdUI() = default;
    virtual void Enable(BOOL on = TRUE) = 0;
};

// A window, or an object that can be attached to one. Without a window its operations do nothing and answer
// 0, FALSE, null or empty. The object does not own itself: when it is destroyed with its window attached, the
// window is destroyed too (a window that the object was merely attached to by SubclassWindow is left in place
// and handles its messages itself again). Coordinates are pixels of the client area unless told otherwise.
class KORTAVIN_API CWnd : public CObject {
  public:
    static const CRuntimeClass classCWnd;

    CWnd();
    ~CWnd() override;
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;
    const CRuntimeClass* GetRuntimeClass() const override;

    HWND m_hWnd = nullptr;
    HWND GetSafeHwnd() const { return m_hWnd; }
    // The object attached to a window, or a plain one made for the asking that lives as long as the window;
    // null for null.
    static CWnd* FromHandle(HWND window);

    // Makes a window of a registered class ("Static", "Button", "ComboBox", or what RegisterWindowClass
    // named) and attaches the object to it. FALSE when it cannot be made: no such class, no parent for a
    // child, the object has a window already, or the toolkit refuses. CResourceException without a toolkit.
    virtual BOOL Create(const char* className, const char* windowName, DWORD style, const CRect& rect,
                        CWnd* parent, UINT id);
    // Attaches the object to a window that another made. FALSE when either has one already.
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    // Answers the window, which stays; null when it stood for a widget of a host and goes with its object.
    HWND UnsubclassWindow();
    virtual BOOL DestroyWindow();

    // Messages. Send is at once, Post from the loop after what is being handled.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    // Tree. Notifications go to the owner, which is the parent unless set.
    CWnd* GetParent() const;
    CWnd* GetOwner() const;
    void SetOwner(CWnd* owner);
    CWnd* GetDlgItem(int id) const;  // null when there is no child of that id
    int GetDlgCtrlID() const;
    int SetDlgCtrlID(int id);  // answers the former
    DWORD GetStyle() const;
    BOOL IsChild(const CWnd* window) const;  // at any depth

    void SetWindowText(const char* text);
    void GetWindowText(CString& text) const;
    CString GetWindowText() const;
    int GetWindowTextLength() const;  // in bytes
    void SetDlgItemText(int id, const char* text);
    void SetFont(CFont* font, BOOL redraw = TRUE);
    CFont* GetFont() const;

    BOOL EnableWindow(BOOL enable = TRUE);  // answers whether it was disabled before
    BOOL IsWindowEnabled() const;
    BOOL ShowWindow(BOOL show);  // answers whether it was visible before
    BOOL IsWindowVisible() const;
    CWnd* SetFocus();  // answers the window that had it, null for none of the library's
    static CWnd* GetFocus();

    void MoveWindow(const CRect& rect, BOOL repaint = TRUE);  // parent's client coordinates
    void GetClientRect(CRect* rect) const;
    void GetWindowRect(CRect* rect) const;  // screen coordinates
    void ClientToScreen(CPoint* point) const;
    void ClientToScreen(CRect* rect) const;
    void ScreenToClient(CPoint* point) const;
    void ScreenToClient(CRect* rect) const;

    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(const CRect* rect, BOOL erase = TRUE);  // null: all
    void UpdateWindow();
    // RDW_INVALIDATE invalidates the rectangle (null: all), RDW_UPDATENOW paints at once, children included.
    BOOL RedrawWindow(const CRect* rect = nullptr, UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE);
    void ScrollWindow(int dx, int dy, const CRect* rect = nullptr);

    // One of the window's own bars (SB_HORZ, SB_VERT).
    int GetScrollPos(int bar) const;
    int GetScrollTrackPos(int bar) const;
    int SetScrollPos(int bar, int position, BOOL redraw = TRUE);  // answers the former
    void SetScrollRange(int bar, int minimum, int maximum, BOOL redraw = TRUE);
    void GetScrollRange(int bar, int* minimum, int* maximum) const;
    void SetScrollPage(int bar, int page, BOOL redraw = TRUE);
    int GetScrollPage(int bar) const;

    CWnd* SetCapture();  // answers the window that had it
    static CWnd* GetCapture();
    static void ReleaseCapture();
    void ConfinePointer(const CRect& rect);
    static void ReleasePointer();
    void SetCursor(window::PointerShape shape);

    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds);  // answers the id, 0 without a window
    BOOL KillTimer(UINT_PTR id);

    void SetAccessibleText(const char* name, const char* description = "");

    // Moves data between controls and members by DoDataExchange: into members when `save`. FALSE when that
    // failed, after its error was shown.
    BOOL UpdateData(BOOL save = TRUE);

    // Has the handler of a command's state set it, for a host's menu that shows the command. FALSE when there
    // is none.
    BOOL UpdateCommand(CCmdUI* state);

    // The message map of the object's class.
    virtual const window::MessageMap* GetMessageMap() const;

    // What a message goes through: the map, then the default handling. Overridden rarely.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

  protected:
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // The default handling of the message that is being handled. Called from its handler.
    LRESULT Default();

    virtual void PreSubclassWindow();                      // attached, nothing was handled yet
    virtual void PostNcDestroy();                          // the window is gone; the object may delete itself
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);  // TRUE: handled
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    // A notification, drawing or measuring request of this control itself, before the parent sees it; TRUE:
    // handled.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual void DoDataExchange(CDataExchange* exchange);

  private:
    friend class window::WindowRecord;
    friend class CDialog;
    bool Route(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL Attach(HWND window);

    bool m_ownsWindow = false;
};

namespace window {

// Names a class of plain windows for Create and dialog templates. Naming it again does nothing.
KORTAVIN_API void RegisterWindowClass(const char* className);
KORTAVIN_API bool IsWindowClass(const char* className);

// False for null and for a window that is gone.
KORTAVIN_API bool IsWindow(HWND window);

}  // namespace window

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CCmdUI;
using kortavin::CWnd;
#endif
