#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "kortavin/base/codepage.h"
#include "kortavin/window/windowclass.h"
#include "kortavin/window/windowrecord.h"
#include "kortavin/window/wnd.h"

namespace kortavin {

namespace window {
namespace {

struct NamedKind {
    std::string_view name;
    WindowKind kind;
};
constexpr std::array kControls{
    NamedKind{"Static", WindowKind::Static},     NamedKind{"Button", WindowKind::Button},
    NamedKind{"ComboBox", WindowKind::ComboBox}, NamedKind{"Edit", WindowKind::Edit},
    NamedKind{"ListBox", WindowKind::ListBox},   NamedKind{"Tabs", WindowKind::Tabs}};

std::vector<std::string>& RegisteredClasses() {
    static auto* classes = new std::vector<std::string>;
    return *classes;
}

}  // namespace

std::optional<WindowKind> KindOfClass(const char* className) {
    const std::string_view name = className != nullptr ? className : "";
    const auto isName = [name](std::string_view other) { return base::CompareNoCase(name, other) == 0; };
    const auto control = std::ranges::find_if(kControls, isName, &NamedKind::name);
    if (control != kControls.end())
        return control->kind;
    if (std::ranges::any_of(RegisteredClasses(), isName))
        return WindowKind::Plain;
    return std::nullopt;
}

void RegisterWindowClass(const char* className) {
    if (!IsWindowClass(className))
        RegisteredClasses().emplace_back(className);
}

bool IsWindowClass(const char* className) {
    return KindOfClass(className).has_value();
}

}  // namespace window

CWnd* CWnd::GetParent() const {
    return m_hWnd != nullptr ? FromHandle(window::RecordOf(m_hWnd)->Parent()) : nullptr;
}

CWnd* CWnd::GetOwner() const {
    return m_hWnd != nullptr ? FromHandle(window::RecordOf(m_hWnd)->Receiver()) : nullptr;
}

void CWnd::SetOwner(CWnd* owner) {
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->SetOwner(window::RecordOf(owner));
}

CWnd* CWnd::GetDlgItem(int id) const {
    return m_hWnd != nullptr ? FromHandle(window::RecordOf(m_hWnd)->Child(id)) : nullptr;
}

int CWnd::GetDlgCtrlID() const {
    return m_hWnd != nullptr ? window::RecordOf(m_hWnd)->Id() : 0;
}

int CWnd::SetDlgCtrlID(int id) {
    const int former = GetDlgCtrlID();
    if (m_hWnd != nullptr)
        window::RecordOf(m_hWnd)->SetId(id);
    return former;
}

DWORD CWnd::GetStyle() const {
    return m_hWnd != nullptr ? window::RecordOf(m_hWnd)->Style() : 0;
}

BOOL CWnd::IsChild(const CWnd* other) const {
    if (m_hWnd == nullptr || other == nullptr || other->m_hWnd == nullptr)
        return FALSE;
    for (window::WindowRecord* ancestor = window::RecordOf(other)->Parent(); ancestor != nullptr;
         ancestor = ancestor->Parent())
        if (ancestor == m_hWnd)
            return TRUE;
    return FALSE;
}

CWnd* CWnd::SetFocus() {
    window::WindowRecord* const former = window::FocusWindow();
    window::SetFocusTo(m_hWnd);
    return FromHandle(former);
}

CWnd* CWnd::GetFocus() {
    return FromHandle(window::FocusWindow());
}

CWnd* CWnd::SetCapture() {
    window::WindowRecord* const former = window::CaptureWindow();
    if (m_hWnd != nullptr)
        window::SetCaptureTo(m_hWnd);
    return FromHandle(former);
}

CWnd* CWnd::GetCapture() {
    return FromHandle(window::CaptureWindow());
}

void CWnd::ReleaseCapture() {
    window::SetCaptureTo(nullptr);
}

}  // namespace kortavin
