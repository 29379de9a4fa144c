#include "kortavin/window/dataexchange.h"

#include "kortavin/base/exception.h"
#include "kortavin/base/texts.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

using base::TextId;

namespace {

[[noreturn]] void ThrowForControl(TextId text, int id) {
    CString message;
    message.Format(Text(text), id);
    throw CNotSupportedException(message);
}

}  // namespace

window::WindowRecord* CDataExchange::PrepareCtrl(int id) const {
    window::WindowRecord* const dialog = window::RecordOf(m_pDlgWnd);
    window::WindowRecord* const control = dialog != nullptr ? dialog->Child(id) : nullptr;
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

}  // namespace kortavin
