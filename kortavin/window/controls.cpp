#include "kortavin/window/button.h"
#include "kortavin/window/static.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

namespace {

window::NativeButton* ButtonOf(HWND window) {
    return window != nullptr ? window::RecordOf(window)->Native().AsButton() : nullptr;
}

}  // namespace

CStatic::~CStatic() = default;

BOOL CStatic::Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return Create("Static", text, style, rect, parent, id);
}

CButton::~CButton() = default;

BOOL CButton::Create(const char* text, DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return Create("Button", text, style, rect, parent, id);
}

int CButton::GetCheck() const {
    const auto* const button = ButtonOf(m_hWnd);
    return button != nullptr && button->IsChecked() ? 1 : 0;
}

void CButton::SetCheck(int check) {
    if (auto* const button = ButtonOf(m_hWnd); button != nullptr)
        button->SetChecked(check != 0);
}

}  // namespace kortavin
