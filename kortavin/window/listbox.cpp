#include "kortavin/window/listbox.h"

#include "kortavin/window/windowrecord.h"

namespace kortavin {

namespace {

window::NativeList* ListOf(HWND window) {
    return window != nullptr ? window::RecordOf(window)->Native().AsList() : nullptr;
}

// Behind its equals.
int PlaceInOrder(const window::NativeList& list, const CString& text) {
    int first = 0;
    for (int behind = list.Count(); first < behind;) {
        const int middle = first + (behind - first) / 2;
        if (text < list.ItemText(middle))
            behind = middle;
        else
            first = middle + 1;
    }
    return first;
}

}  // namespace

CListBox::~CListBox() = default;

BOOL CListBox::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return Create("ListBox", "", style, rect, parent, id);
}

int CListBox::GetCount() const {
    const auto* const list = ListOf(m_hWnd);
    return list != nullptr ? list->Count() : 0;
}

int CListBox::AddString(const char* text) {
    auto* const list = ListOf(m_hWnd);
    if (list == nullptr)
        return LB_ERR;
    const CString item(text);
    const int place = (GetStyle() & LBS_SORT) != 0 ? PlaceInOrder(*list, item) : list->Count();
    list->Insert(place, item.View());
    return place;
}

int CListBox::DeleteString(UINT index) {
    auto* const list = ListOf(m_hWnd);
    if (list == nullptr || index >= static_cast<UINT>(list->Count()))
        return LB_ERR;
    list->Remove(static_cast<int>(index));
    return list->Count();
}

void CListBox::ResetContent() {
    if (auto* const list = ListOf(m_hWnd); list != nullptr)
        list->Clear();
}

int CListBox::GetText(int index, CString& text) const {
    if (index < 0 || index >= GetCount())
        return LB_ERR;
    text = ListOf(m_hWnd)->ItemText(index);
    return text.GetLength();
}

int CListBox::GetCurSel() const {
    const auto* const list = ListOf(m_hWnd);
    return list != nullptr ? list->Selection() : LB_ERR;
}

int CListBox::SetCurSel(int index) {
    auto* const list = ListOf(m_hWnd);
    if (list == nullptr)
        return LB_ERR;
    const int selected = index >= 0 && index < list->Count() ? index : LB_ERR;
    list->Select(selected);
    return selected;
}

}  // namespace kortavin
