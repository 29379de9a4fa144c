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

// The caret stands at one end of the selection, never inside a character.
class MemoryEdit : public MemoryWindow {
  public:
    using MemoryWindow::MemoryWindow;

    void Select(int first, int last);  // as EM_SETSEL does

    bool TakesFocusByClick() const override { return true; }
    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetText(std::string_view text) override;

  protected:
    void PaintByDefault(std::unique_ptr<window::Painter> painter) override { PaintText(*painter, GetText()); }
    virtual void Tell(WORD code);  // an EN_ code

  private:
    std::optional<size_t> PlaceFor(UINT key, bool extends) const;  // of the caret; nothing: it stays
    void HandleKey(UINT key);
    void TypeCharacter(UINT character);
    void EraseTo(size_t place);  // from the caret, or the selection
    void ReplaceSelection(std::string_view text);
    bool IsReadOnly() const;
    bool BreaksLines() const;

    size_t m_anchor = 0;  // byte offsets
    size_t m_caret = 0;
};

// While the list is open, keys move its highlight; picking an item selects it. The edit field, where there is
// one, is a window that keeps the text and the focus.
class MemoryCombo : public MemoryWindow, public window::NativeCombo {
  public:
    MemoryCombo(MemoryToolkit& toolkit, window::WindowRecord& record, const window::WindowRequest& request);

    void Pick(int index);  // in the open list, which closes
    void DrawItem(int index, UINT state, std::unique_ptr<window::Painter> painter, const CRect& rect);
    CString ItemAccessibleName(int index) const {
        return m_items.at(static_cast<size_t>(index)).accessibleName;
    }
    int DroppedWidth() const { return m_droppedWidth; }
    const CRect& RectWithList() const { return m_rectWithList; }  // as it was given

    bool TakesFocusByClick() const override { return true; }
    window::WindowRecord* FocusPlace() const override {
        return m_field != nullptr ? &m_field->Record() : &m_record;
    }
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
    std::unique_ptr<window::NativeWindow> MakeEditField(window::WindowRecord& field) override;

  protected:
    void PaintByDefault(std::unique_ptr<window::Painter> painter) override;

  private:
    class Field;
    struct Item {
        CString text;
        CString accessibleName;
    };

    void ToggleList();
    bool HandleKey(UINT key);  // false: it is not the list's
    void MoveSelection(int index);
    CRect FieldRect() const;
    CRect ClosedRect() const {
        return {m_rectWithList.TopLeft(), CSize(m_rectWithList.Width(), m_fieldHeight)};
    }
    void FollowFieldHeight();

    std::vector<Item> m_items;
    MemoryEdit* m_field = nullptr;
    CRect m_rectWithList;
    int m_selection = -1;
    int m_highlight = -1;  // in the open list
    int m_fieldHeight;
    int m_itemHeight;
    int m_droppedWidth = 0;
    bool m_isOpen = false;
};

class MemoryList : public MemoryWindow, public window::NativeList {
  public:
    static constexpr int kItemHeight = 16;
    using MemoryWindow::MemoryWindow;

    bool TakesFocusByClick() const override { return true; }
    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    window::NativeList* AsList() override { return this; }
    int Count() const override { return static_cast<int>(m_items.size()); }
    void Insert(int index, std::string_view text) override { m_items.emplace(m_items.begin() + index, text); }
    void Remove(int index) override;
    void Clear() override;
    CString ItemText(int index) const override { return m_items.at(static_cast<size_t>(index)); }
    int Selection() const override { return m_selection; }
    void Select(int index) override { m_selection = index; }

  private:
    void SelectByUser(int index);
    void Tell(WORD code);

    std::vector<CString> m_items;
    int m_selection = -1;
};

class MemoryTabs : public MemoryWindow, public window::NativeTabs {
  public:
    using MemoryWindow::MemoryWindow;

    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    window::NativeTabs* AsTabs() override { return this; }
    void Add(std::string_view) override { ++m_count; }
    int Selection() const override { return m_selection; }
    void Select(int index) override { m_selection = index; }
    CRect Around(const CRect& page) const override;
    CRect TabRect(int index) const override;

  private:
    static constexpr int kFrame = 2;
    static constexpr CSize kTab{60, 20};

    void SelectByUser(int index);

    int m_count = 0;
    int m_selection = -1;
};

// The keys that a dialog takes from its controls: Tab moves the focus, Enter presses a push button, Esc
// cancels. A control keeps those that it asks for by its dialog code. True: the key was the dialog's.
bool HandleDialogKey(window::WindowRecord* target, UINT key);

}  // namespace kortavin::testing
