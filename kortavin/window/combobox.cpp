#include "kortavin/window/combobox.h"

#include <string_view>

#include "kortavin/base/codepage.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

using window::NativeCombo;

namespace {

NativeCombo* ComboOf(HWND window) {
    return window != nullptr ? window::RecordOf(window)->Native().AsCombo() : nullptr;
}

std::string_view ViewOf(const char* text) {
    return text != nullptr ? text : "";
}

bool BeginsWith(std::string_view text, std::string_view beginning) {
    return text.size() >= beginning.size() &&
           base::CompareNoCase(text.substr(0, beginning.size()), beginning) == 0;
}

// The first item behind `startAfter`, wrapping round, for which `matches` holds.
template <class Matches>
int FindItem(HWND window, int startAfter, Matches matches) {
    const auto* const combo = ComboOf(window);
    const int count = combo != nullptr ? combo->Count() : 0;
    const int before = startAfter >= 0 && startAfter < count ? startAfter : -1;
    for (int step = 1; step <= count; ++step)
        if (const int index = (before + step) % count; matches(combo->ItemText(index).View()))
            return index;
    return CB_ERR;
}

}  // namespace

CComboBox::~CComboBox() = default;

BOOL CComboBox::Create(DWORD style, const CRect& rect, CWnd* parent, UINT id) {
    return Create("ComboBox", "", style, rect, parent, id);
}

int CComboBox::GetCount() const {
    const auto* const combo = ComboOf(m_hWnd);
    return combo != nullptr ? combo->Count() : 0;
}

int CComboBox::AddString(const char* text) {
    return InsertString(-1, text);
}

int CComboBox::InsertString(int index, const char* text) {
    auto* const combo = ComboOf(m_hWnd);
    if (combo == nullptr || index < -1 || index > combo->Count())
        return CB_ERR;
    const int place = index < 0 ? combo->Count() : index;
    combo->Insert(place, ViewOf(text));
    return place;
}

int CComboBox::DeleteString(UINT index) {
    auto* const combo = ComboOf(m_hWnd);
    if (combo == nullptr || index >= static_cast<UINT>(combo->Count()))
        return CB_ERR;
    combo->Remove(static_cast<int>(index));
    return combo->Count();
}

void CComboBox::ResetContent() {
    if (auto* const combo = ComboOf(m_hWnd); combo != nullptr)
        combo->Clear();
}

int CComboBox::GetLBText(int index, CString& text) const {
    if (index < 0 || index >= GetCount())
        return CB_ERR;
    text = ComboOf(m_hWnd)->ItemText(index);
    return text.GetLength();
}

int CComboBox::GetCurSel() const {
    const auto* const combo = ComboOf(m_hWnd);
    return combo != nullptr ? combo->Selection() : CB_ERR;
}

int CComboBox::SetCurSel(int index) {
    auto* const combo = ComboOf(m_hWnd);
    if (combo == nullptr)
        return CB_ERR;
    const int selected = index >= 0 && index < combo->Count() ? index : CB_ERR;
    combo->Select(selected);
    return selected;
}

int CComboBox::FindString(int startAfter, const char* text) const {
    const std::string_view beginning = ViewOf(text);
    return FindItem(m_hWnd, startAfter, [beginning](std::string_view item) {
        return !beginning.empty() && BeginsWith(item, beginning);
    });
}

int CComboBox::FindStringExact(int startAfter, const char* text) const {
    const std::string_view whole = ViewOf(text);
    return FindItem(m_hWnd, startAfter, [whole](std::string_view item) {
        return !whole.empty() && base::CompareNoCase(item, whole) == 0;
    });
}

int CComboBox::SelectString(int startAfter, const char* text) {
    const int index = FindString(startAfter, text);
    return index == CB_ERR ? CB_ERR : SetCurSel(index);
}

int CComboBox::SetItemHeight(int index, UINT height) {
    auto* const combo = ComboOf(m_hWnd);
    if (combo == nullptr || index < -1 || height < 1 || height > 0xFF)
        return CB_ERR;
    combo->SetItemHeight(index, static_cast<int>(height));
    return 0;
}

int CComboBox::GetItemHeight(int index) const {
    const auto* const combo = ComboOf(m_hWnd);
    return combo != nullptr ? combo->ItemHeight(index) : CB_ERR;
}

void CComboBox::SetDroppedWidth(UINT width) {
    if (auto* const combo = ComboOf(m_hWnd); combo != nullptr)
        combo->SetDroppedWidth(static_cast<int>(width));
}

void CComboBox::ShowDropDown(BOOL show) {
    if (auto* const combo = ComboOf(m_hWnd); combo != nullptr)
        combo->ShowList(show != FALSE);
}

BOOL CComboBox::GetDroppedState() const {
    const auto* const combo = ComboOf(m_hWnd);
    return combo != nullptr && combo->IsListOpen();
}

BOOL CComboBox::SetEditSel(int first, int last) {
    auto* const combo = ComboOf(m_hWnd);
    if (combo == nullptr)
        return FALSE;
    combo->SetEditSelection(first, last);
    return TRUE;
}

void CComboBox::SetItemAccessibleName(int index, const char* name) {
    if (index >= 0 && index < GetCount())
        ComboOf(m_hWnd)->SetItemAccessibleName(index, ViewOf(name));
}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT) {}
void CComboBox::DrawItem(LPDRAWITEMSTRUCT) {}

void CComboBox::PreSubclassWindow() {
    if ((GetStyle() & CBS_OWNERDRAWFIXED) == 0)
        return;
    MEASUREITEMSTRUCT request;
    request.CtlType = ODT_COMBOBOX;
    request.CtlID = static_cast<UINT>(GetDlgCtrlID());
    request.itemHeight = static_cast<UINT>(GetItemHeight(0));
    MeasureItem(&request);
    SetItemHeight(0, request.itemHeight);
}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    switch (message) {
        case WM_DRAWITEM:
            DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
            return TRUE;
        case WM_MEASUREITEM:
            MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
            return TRUE;
        default:
            return CWnd::OnChildNotify(message, wParam, lParam, result);
    }
}

}  // namespace kortavin
