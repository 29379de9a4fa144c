#include "kortavin/window/edit.h"

namespace kortavin {

CEdit::~CEdit() = default;

BOOL CEdit::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return Create("Edit", "", style, rect, parent, id);
}

void CEdit::SetSel(int first, int last) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(first), last);
    SendMessage(EM_SCROLLCARET);
}

void CEdit::GetSel(int& first, int& last) {
    const auto ends = static_cast<std::uint64_t>(SendMessage(EM_GETSEL));
    first = LOWORD(ends);
    last = HIWORD(ends);
}

}  // namespace kortavin
