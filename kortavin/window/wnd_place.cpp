#include "kortavin/window/windowrecord.h"
#include "kortavin/window/wnd.h"

namespace kortavin {

namespace {

constinit HWND s_confining = nullptr;

void InvalidateWithChildren(window::WindowRecord* window, const CRect* rect) {
    window->Native().Invalidate(rect);
    for (window::WindowRecord* const child : window->Children()) {
        if (rect == nullptr) {
            InvalidateWithChildren(child, nullptr);
            continue;
        }
        CRect part;
        if (part.IntersectRect(child->Native().GetRect(), *rect)) {
            const CPoint origin = child->Native().ScreenToClient(window->Native().ClientToScreen({0, 0}));
            part.OffsetRect(origin);
            InvalidateWithChildren(child, &part);
        }
    }
}

// A paint may take windows away, so each is looked at again.
void UpdateWithChildren(window::WindowRecord* window) {
    window->Native().UpdateNow();
    if (!window::IsWindow(window))
        return;
    const auto children = window->Children();
    for (window::WindowRecord* const child : children)
        if (window::IsWindow(child))
            UpdateWithChildren(child);
}

}  // namespace

void CWnd::SetWindowText(const char* text) {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().SetText(text != nullptr ? text : "");
}

CString CWnd::GetWindowText() const {
    return m_hWnd != nullptr ? window::RecordOf(m_hWnd)->Native().GetText() : CString();
}

void CWnd::GetWindowText(CString& text) const {
    text = GetWindowText();
}

int CWnd::GetWindowTextLength() const {
    return GetWindowText().GetLength();
}

void CWnd::SetDlgItemText(int id, const char* text) {
    if (CWnd* const item = GetDlgItem(id); item != nullptr)
        item->SetWindowText(text);
}

void CWnd::SetFont(CFont* font, BOOL redraw) {
    if (font != nullptr && font->GetNative() != nullptr)
        SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font), redraw);
}

CFont* CWnd::GetFont() const {
    return reinterpret_cast<CFont*>(window::SendMessage(m_hWnd, WM_GETFONT));
}

BOOL CWnd::EnableWindow(BOOL enable) {
    const BOOL wasDisabled = m_hWnd != nullptr && !IsWindowEnabled();
    window::WindowRecord* const window = window::RecordOf(m_hWnd);
    if (window != nullptr && wasDisabled == (enable != FALSE)) {
        window->Native().Enable(enable != FALSE);
        window::SendMessage(window, WM_ENABLE, enable != FALSE);
    }
    return wasDisabled;
}

BOOL CWnd::IsWindowEnabled() const {
    return m_hWnd != nullptr && window::RecordOf(m_hWnd)->Native().IsEnabled();
}

BOOL CWnd::ShowWindow(BOOL show) {
    const BOOL wasVisible = IsWindowVisible();
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().Show(show != FALSE);
    return wasVisible;
}

BOOL CWnd::IsWindowVisible() const {
    return m_hWnd != nullptr && window::RecordOf(m_hWnd)->Native().IsVisible();
}

void CWnd::MoveWindow(const CRect& rect, BOOL repaint) {
    window::WindowRecord* const window = window::RecordOf(m_hWnd);
    if (window != nullptr)
        window->Native().Move(rect);
    if (repaint && window::IsWindow(window))
        window->Native().Invalidate(nullptr);
}

void CWnd::GetClientRect(CRect* rect) const {
    *rect = m_hWnd != nullptr ? CRect({0, 0}, window::RecordOf(m_hWnd)->Native().GetClientSize()) : CRect();
}

// Through the client area, since the two systems meet there.
void CWnd::GetWindowRect(CRect* rect) const {
    rect->SetRectEmpty();
    if (m_hWnd == nullptr)
        return;
    *rect = window::RecordOf(m_hWnd)->Native().GetRect();
    if (window::WindowRecord* const parent = window::RecordOf(m_hWnd)->Parent();
        window::IsWindow(parent) && window::RecordOf(m_hWnd)->Kind() != window::WindowKind::Dialog)
        rect->OffsetRect(parent->Native().ClientToScreen({0, 0}));
}

void CWnd::ClientToScreen(CPoint* point) const {
    if (m_hWnd != nullptr)
        *point = window::RecordOf(m_hWnd)->Native().ClientToScreen(*point);
}

void CWnd::ScreenToClient(CPoint* point) const {
    if (m_hWnd != nullptr)
        *point = window::RecordOf(m_hWnd)->Native().ScreenToClient(*point);
}

void CWnd::ClientToScreen(CRect* rect) const {
    CPoint corner = rect->TopLeft();
    ClientToScreen(&corner);
    *rect = CRect(corner, rect->Size());
}

void CWnd::ScreenToClient(CRect* rect) const {
    CPoint corner = rect->TopLeft();
    ScreenToClient(&corner);
    *rect = CRect(corner, rect->Size());
}

void CWnd::Invalidate(BOOL erase) {
    InvalidateRect(nullptr, erase);
}

// Painting covers its background itself, so there is nothing that would not be erased.
void CWnd::InvalidateRect(const CRect* rect, BOOL /*erase*/) {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().Invalidate(rect);
}

void CWnd::UpdateWindow() {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().UpdateNow();
}

BOOL CWnd::RedrawWindow(const CRect* rect, UINT flags) {
    if (m_hWnd == nullptr)
        return FALSE;
    if ((flags & RDW_INVALIDATE) != 0)
        InvalidateWithChildren(window::RecordOf(m_hWnd), rect);
    if ((flags & RDW_UPDATENOW) != 0)
        UpdateWithChildren(window::RecordOf(m_hWnd));
    return TRUE;
}

void CWnd::ScrollWindow(int dx, int dy, const CRect* rect) {
    CRect area;
    GetClientRect(&area);
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().Scroll(dx, dy, rect != nullptr ? *rect : area);
}

void CWnd::ConfinePointer(const CRect& rect) {
    ReleasePointer();
    if (m_hWnd == nullptr)
        return;
    s_confining = m_hWnd;
    window::RecordOf(m_hWnd)->Native().ConfinePointer(rect);
}

void CWnd::ReleasePointer() {
    if (window::IsWindow(s_confining))
        window::RecordOf(s_confining)->Native().ConfinePointer(std::nullopt);
    s_confining = nullptr;
}

void CWnd::SetCursor(window::PointerShape shape) {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().SetCursor(shape);
}

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT milliseconds) {
    if (m_hWnd == nullptr)
        return 0;
    window::RecordOf(m_hWnd)->Native().StartTimer(id, milliseconds);
    return id;
}

BOOL CWnd::KillTimer(UINT_PTR id) {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().StopTimer(id);
    return m_hWnd != nullptr;
}

void CWnd::SetAccessibleText(const char* name, const char* description) {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->Native().SetAccessibleText(name != nullptr ? name : "",
                                                             description != nullptr ? description : "");
}

}  // namespace kortavin
