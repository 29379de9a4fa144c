#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "tests/support/memory/toolkit.h"

// The controls that behave by themselves, and the dialog's keys.
namespace kortavin::testing {

class MemoryButton : public MemoryWindow, public window::NativeButton {
  public:
    using MemoryWindow::MemoryWindow;

    // A check box or radio button changes its state before it notifies.
    void Click();
    bool IsPushButton() const { return KindOfButton() <= BS_DEFPUSHBUTTON; }
    bool IsDefault() const { return KindOfButton() == BS_DEFPUSHBUTTON; }

    bool TakesFocusByClick() const override { return true; }
    bool IsHitBy(CPoint clientPoint) const override;
    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    window::NativeButton* AsButton() override { return this; }
    bool IsChecked() const override { return m_checked; }
    void SetChecked(bool checked) override { m_checked = checked; }

  private:
    DWORD KindOfButton() const { return m_record.Style() & BS_TYPEMASK; }
    void CheckAloneInGroup();

    bool m_pressed = false;
    bool m_checked = false;
};

// While the list is open, keys move its highlight; picking an item selects it.
class MemoryCombo : public MemoryWindow, public window::NativeCombo {
  public:
    MemoryCombo(MemoryToolkit& toolkit, window::Window& record, const window::WindowRequest& request);

    void Pick(int index);  // in the open list, which closes
    void DrawItem(int index, UINT state, std::unique_ptr<window::Painter> painter, const CRect& rect);
    CString ItemAccessibleName(int index) const {
        return m_items.at(static_cast<size_t>(index)).accessibleName;
    }
    int DroppedWidth() const { return m_droppedWidth; }
    CString SelectedText() const;  // in the edit field

    bool TakesFocusByClick() const override { return true; }
    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetText(std::string_view text) override;
    CString GetText() const override;
    void Move(const CRect& rect) override;
    window::NativeCombo* AsCombo() override { return this; }

    int Count() const override { return static_cast<int>(m_items.size()); }
    void Insert(int index, std::string_view text) override;
    void Remove(int index) override;
    void Clear() override;
    CString ItemText(int index) const override { return m_items.at(static_cast<size_t>(index)).text; }
    int Selection() const override { return m_selection; }
    void Select(int index) override;
    void SetItemHeight(int index, int height) override;
    int ItemHeight(int index) const override { return index < 0 ? m_fieldHeight : m_itemHeight; }
    void SetDroppedWidth(int width) override { m_droppedWidth = width; }
    void ShowList(bool open) override;
    bool IsListOpen() const override { return m_isOpen; }
    void SetItemAccessibleName(int index, std::string_view name) override;
    void SetEditSelection(int first, int last) override;

  protected:
    void PaintByDefault(std::unique_ptr<window::Painter> painter) override;

  private:
    struct Item {
        CString text;
        CString accessibleName;
    };

    bool HasEditField() const { return (m_record.Style() & CBS_DROPDOWNLIST) == CBS_DROPDOWN; }
    void ToggleList();
    void HandleKey(UINT key);
    void Erase(bool isForward);
    void TypeCharacter(UINT character);
    void ReplaceSelection(std::string_view text);
    void MoveSelection(int index);
    CRect WithFieldHeight(const CRect& rect) const;

    std::vector<Item> m_items;
    int m_selection = -1;
    int m_highlight = -1;  // in the open list
    int m_fieldHeight;
    int m_itemHeight;
    int m_droppedWidth = 0;
    bool m_isOpen = false;
    size_t m_editFirst = 0;  // byte offsets; the caret stands at the last
    size_t m_editLast = 0;
};

// The keys that a dialog takes from its controls: Tab moves the focus, Enter presses a push button, Esc
// cancels. A control keeps those that it asks for by its dialog code. True: the key was the dialog's.
bool HandleDialogKey(HWND target, UINT key);

}  // namespace kortavin::testing
