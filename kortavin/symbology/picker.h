#pragma once

#include <optional>
#include <span>

#include "kortavin/base/texts.h"
#include "kortavin/window/combobox.h"

// What the pickers of this folder share. Not installed.
namespace kortavin::symbology {

// One item of a picker's list; an item's index is its row in the picker's table.
struct PickerItem {
    base::TextId name;       // for screen readers, which cannot see the picture
    int value = 0;           // what the picture is made from; each table says what its numbers are
    const char* text = " ";  // GBK
};

// The row of an item number; null for a number that has none (-1: the selection field without a selection).
const PickerItem* FindItem(std::span<const PickerItem> items, int number);

// Adds the items to a list that is empty. Any other list is left as it is.
void EnsureItems(CComboBox& combo, std::span<const PickerItem> items);

// Fills the list if need be, selects the item, the first one for a number outside the table, and answers
// which.
int SelectItem(CComboBox& combo, std::span<const PickerItem> items, int number);

// The user's choice; the first item when none is selected.
int SelectedItem(const CComboBox& combo);

// Has the parent paint its whole client area, the control included, before this returns.
void RepaintParent(const CWnd& control);

// Runs the colour chooser; nothing when the user cancels. Throws CResourceException when it cannot open.
std::optional<COLORREF> ChooseColor(COLORREF initial);

// Whether a control still exists after a chooser ran, in whose loop its host may have destroyed it.
class WindowGuard {
  public:
    explicit WindowGuard(const CWnd& control) : m_control(&control), m_window(control.m_hWnd) {}
    bool IsThere() const;

  private:
    const CWnd* m_control;
    HWND m_window;
};

// Puts a context's pen and brush back at the end of the scope. To be declared behind the objects that are
// selected meanwhile, so that these are still there when they are deselected.
class SelectionGuard {
  public:
    explicit SelectionGuard(CDC& dc) : m_dc(dc), m_pen(dc.GetCurrentPen()), m_brush(dc.GetCurrentBrush()) {}
    SelectionGuard(const SelectionGuard&) = delete;
    SelectionGuard& operator=(const SelectionGuard&) = delete;
    ~SelectionGuard() {
        m_dc.SelectObject(m_brush);
        m_dc.SelectObject(m_pen);
    }

  private:
    CDC& m_dc;
    CPen* m_pen;
    CBrush* m_brush;
};

}  // namespace kortavin::symbology
