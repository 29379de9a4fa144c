#include "framework/window/dataexchange.h"

#include "framework/base/exception.h"
#include "framework/window/window.h"
#include "resources/texts.h"

using kortavin::resources::TextId;

namespace {

[[noreturn]] void ThrowForControl(TextId text, int id) {
    CString message;
    message.Format(Text(text), id);
    throw CNotSupportedException(message);
}

}  // namespace

HWND CDataExchange::PrepareCtrl(int id) const {
    const HWND dialog = m_pDlgWnd != nullptr ? m_pDlgWnd->m_hWnd : nullptr;
    const HWND control = dialog != nullptr ? dialog->Child(id) : nullptr;
    if (control == nullptr)
        ThrowForControl(TextId::NoSuchControl, id);
    return control;
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (control.m_hWnd != nullptr)
        return;
    if (!control.SubclassWindow(exchange->PrepareCtrl(id)))
        ThrowForControl(TextId::ControlTaken, id);
}

void DDX_Text(CDataExchange* exchange, int id, CString& text) {
    CWnd* const control = CWnd::FromHandle(exchange->PrepareCtrl(id));
    if (exchange->m_bSaveAndValidate)
        control->GetWindowText(text);
    else if (control->GetWindowText() != text)
        control->SetWindowText(text);
}
