#include "kortavin/window/wnd.h"

#include <utility>

#include "kortavin/window/dataexchange.h"
#include "kortavin/window/windowclass.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

namespace {

// The messages that are being handled, innermost first, so that a handler can ask for the default handling of
// its own. Kept beside the objects, which may be gone when a handler returns.
struct HandledMessage {
    HandledMessage(const CWnd* handler, const window::Message& handled);
    ~HandledMessage();
    HandledMessage(const HandledMessage&) = delete;
    HandledMessage& operator=(const HandledMessage&) = delete;

    const CWnd* object;
    window::Message message;
    HandledMessage* outer;
};

constinit HandledMessage* s_handled = nullptr;

HandledMessage::HandledMessage(const CWnd* handler, const window::Message& handled)
    : object(handler), message(handled), outer(std::exchange(s_handled, this)) {}
HandledMessage::~HandledMessage() {
    s_handled = outer;
}

}  // namespace

constinit const CRuntimeClass CWnd::classCWnd{"CWnd", &CObject::classCObject};

CWnd::CWnd() = default;

CWnd::~CWnd() {
    if (m_ownsWindow)
        CWnd::DestroyWindow();
    UnsubclassWindow();  // from one that is being destroyed already, too
}

const CRuntimeClass* CWnd::GetRuntimeClass() const {
    return &classCWnd;
}

CWnd* CWnd::FromHandle(HWND handle) {
    return window::IsWindow(handle) ? window::RecordOf(handle)->ObjectForAsking() : nullptr;
}

BOOL CWnd::Create(const char* className, const char* windowName, DWORD style, const CRect& rect, CWnd* parent,
                  UINT id) {
    const auto kind = window::KindOfClass(className);
    window::WindowRecord* const parentWindow = window::RecordOf(parent);
    if (m_hWnd != nullptr || !kind || ((style & WS_CHILD) != 0 && parentWindow == nullptr))
        return FALSE;
    window::WindowRequest request{*kind, nullptr, style, rect, CString(windowName), nullptr};
    if (parentWindow != nullptr)
        request.parent = &parentWindow->Native();
    window::RequireToolkit();
    window::WindowRecord* made = nullptr;
    try {
        made = window::WindowRecord::Create({*kind, parentWindow, nullptr, static_cast<int>(id), style},
                                            request);
        m_ownsWindow = Attach(made) != FALSE;
    } catch (const CResourceException&) {
        return FALSE;
    } catch (...) {
        if (window::IsWindow(made))
            made->Destroy();
        throw;
    }
    return m_ownsWindow;
}

BOOL CWnd::Attach(HWND handle) {
    if (m_hWnd != nullptr || !window::IsWindow(handle) || window::RecordOf(handle)->Object() != nullptr)
        return FALSE;
    m_hWnd = handle;
    m_ownsWindow = false;
    window::RecordOf(handle)->SetObject(this);
    PreSubclassWindow();
    return TRUE;
}

BOOL CWnd::SubclassWindow(HWND handle) {
    return Attach(handle);
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
    return parent != nullptr && parent->m_hWnd != nullptr &&
           Attach(window::RecordOf(parent)->Child(static_cast<int>(id)));
}

HWND CWnd::UnsubclassWindow() {
    window::WindowRecord* const former = window::RecordOf(std::exchange(m_hWnd, nullptr));
    if (former != nullptr && former->Object() == this) {
        former->SetObject(nullptr);
        former->Native().SetAccessibleTable(nullptr);  // which was the object's
        former->Native().ObjectLeft();
    }
    return window::IsWindow(former) ? former : nullptr;
}

BOOL CWnd::DestroyWindow() {
    if (m_hWnd == nullptr)
        return FALSE;
    window::RecordOf(m_hWnd)->Destroy();
    return TRUE;
}

void CWnd::PreSubclassWindow() {}
void CWnd::PostNcDestroy() {}
void CWnd::DoDataExchange(CDataExchange*) {}

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return window::SendMessage(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    return window::PostMessage(m_hWnd, message, wParam, lParam);
}

const window::MessageMap* CWnd::GetMessageMap() const {
    static constexpr window::MessageMap kMap{nullptr, {}};
    return &kMap;
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const HandledMessage handled(this, {message, wParam, lParam});
    LRESULT result = 0;
    return Route(message, wParam, lParam, &result) ? result : DefWindowProc(message, wParam, lParam);
}

bool CWnd::Route(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND)
        return OnCommand(wParam, lParam) != FALSE;
    if (message == WM_NOTIFY)
        return OnNotify(wParam, lParam, result) != FALSE;
    const auto* const entry = GetMessageMap()->Find(window::RouteKind::Window, message);
    if (entry != nullptr)
        *result = entry->invoke(*this, {message, wParam, lParam});
    return entry != nullptr;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return m_hWnd != nullptr ? window::HandleByDefault(window::RecordOf(m_hWnd), message, wParam, lParam) : 0;
}

LRESULT CWnd::Default() {
    const HandledMessage* handled = s_handled;
    while (handled != nullptr && handled->object != this)
        handled = handled->outer;
    if (handled == nullptr)
        return 0;
    const auto [message, wParam, lParam] = handled->message;
    return DefWindowProc(message, wParam, lParam);
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const auto* const entry =
        GetMessageMap()->Find(window::RouteKind::Command, WM_COMMAND, HIWORD(wParam), LOWORD(wParam));
    if (entry != nullptr)
        entry->invoke(*this, {WM_COMMAND, wParam, lParam});
    return entry != nullptr;
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) {
    const auto* const head = reinterpret_cast<const NMHDR*>(lParam);
    const auto* const entry = GetMessageMap()->Find(window::RouteKind::Notify, WM_NOTIFY, head->code,
                                                    static_cast<int>(head->idFrom));
    if (entry != nullptr)
        *result = entry->invoke(*this, {WM_NOTIFY, wParam, lParam});
    return entry != nullptr;
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_COMMAND)
        return FALSE;
    const auto* const entry = GetMessageMap()->Find(window::RouteKind::Reflected, WM_COMMAND, HIWORD(wParam));
    if (entry != nullptr)
        *result = entry->invoke(*this, {WM_COMMAND, wParam, lParam});
    return entry != nullptr;
}

BOOL CWnd::UpdateCommand(CCmdUI* state) {
    const auto* const entry =
        GetMessageMap()->Find(window::RouteKind::Update, 0, 0, static_cast<int>(state->m_nID));
    if (entry != nullptr)
        entry->invoke(*this, {0, 0, reinterpret_cast<LPARAM>(state)});
    return entry != nullptr;
}

BOOL CWnd::UpdateData(BOOL save) {
    if (m_hWnd == nullptr)
        return FALSE;
    CDataExchange exchange(this, save);
    try {
        DoDataExchange(&exchange);
        return TRUE;
    } catch (const CException&) {
        window::ReportCurrentError();
        return FALSE;
    }
}

}  // namespace kortavin
