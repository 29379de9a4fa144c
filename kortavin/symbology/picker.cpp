#include "kortavin/symbology/picker.h"

#include <algorithm>

#include "kortavin/window/colordialog.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin::symbology {

const PickerItem* FindItem(std::span<const PickerItem> items, int number) {
    const bool exists = number >= 0 && static_cast<std::size_t>(number) < items.size();
    return exists ? &items[static_cast<std::size_t>(number)] : nullptr;
}

void EnsureItems(CComboBox& combo, std::span<const PickerItem> items) {
    if (combo.GetCount() != 0)
        return;
    for (const PickerItem& item : items)
        combo.SetItemAccessibleName(combo.AddString(item.text), Text(item.name));
}

int SelectItem(CComboBox& combo, std::span<const PickerItem> items, int number) {
    EnsureItems(combo, items);
    const int existing = FindItem(items, number) != nullptr ? number : 0;
    combo.SetCurSel(existing);
    return existing;
}

int SelectedItem(const CComboBox& combo) {
    return std::max(combo.GetCurSel(), 0);
}

void RepaintParent(const CWnd& control) {
    if (CWnd* parent = control.GetParent(); parent != nullptr)
        parent->RedrawWindow(nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

bool WindowGuard::IsThere() const {
    return window::IsWindow(m_window) && window::RecordOf(m_window)->Object() == m_control;
}

std::optional<COLORREF> ChooseColor(COLORREF initial) {
    CColorDialog dialog(initial, CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR);
    return dialog.DoModal() == IDOK ? std::optional(dialog.GetColor()) : std::nullopt;
}

}  // namespace kortavin::symbology
