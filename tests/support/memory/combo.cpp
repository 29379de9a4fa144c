#include <algorithm>

#include "kortavin/window/combobox.h"
#include "kortavin/window/dc.h"
#include "kortavin/window/edit.h"
#include "kortavin/window/keys.h"
#include "kortavin/window/metrics.h"
#include "tests/support/memory/controls.h"

namespace kortavin::testing {
namespace {

constexpr int kFieldMargin = 8;  // what the selection field has above and below its text
constexpr int kPageItems = 5;

}  // namespace

// What is not for the text is the combo box's.
class MemoryCombo::Field : public MemoryEdit {
  public:
    Field(MemoryCombo& combo, window::WindowRecord& record, const window::WindowRequest& request)
        : MemoryEdit(combo.m_toolkit, record, request), m_combo(combo) {}
    ~Field() override { m_combo.m_field = nullptr; }

    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_GETDLGCODE || message == WM_SETFOCUS || message == WM_KILLFOCUS)
            return m_combo.DefaultProc(message, wParam, lParam);
        if (message == WM_KEYDOWN && m_combo.HandleKey(static_cast<UINT>(wParam)))
            return 0;
        return MemoryEdit::DefaultProc(message, wParam, lParam);
    }

  protected:
    void Tell(WORD) override { window::ReportNotification(m_combo.m_record, CBN_EDITCHANGE); }

  private:
    MemoryCombo& m_combo;
};

MemoryCombo::MemoryCombo(MemoryToolkit& toolkit, window::WindowRecord& record,
                         const window::WindowRequest& request)
    : MemoryWindow(toolkit, record, request),
      m_rectWithList(request.rect),
      m_fieldHeight(TextFont().GetNative()->Metrics().tmHeight + kFieldMargin),
      m_itemHeight(TextFont().GetNative()->Metrics().tmHeight) {
    SetRect(ClosedRect());
}

CRect MemoryCombo::FieldRect() const {
    return {0, 0, std::max(0, GetClientSize().cx - kScrollBarSize), m_fieldHeight};
}

std::unique_ptr<window::NativeWindow> MemoryCombo::MakeEditField(window::WindowRecord& field) {
    const CFont& font = TextFont();
    auto made = std::make_unique<Field>(
        *this, field,
        window::WindowRequest{window::WindowKind::Edit, this, field.Style(), FieldRect(), m_text, &font});
    m_field = made.get();
    return made;
}

// The rectangle that a combo box is given holds its open list too.
void MemoryCombo::Move(const CRect& rect) {
    m_rectWithList = rect;
    FollowFieldHeight();
}

void MemoryCombo::FollowFieldHeight() {
    MemoryWindow::Move(ClosedRect());
    if (m_field != nullptr)
        m_field->Move(FieldRect());
}

void MemoryCombo::SetItemHeight(int index, int height) {
    (index < 0 ? m_fieldHeight : m_itemHeight) = height;
    FollowFieldHeight();
}

void MemoryCombo::SetText(std::string_view text) {
    if (m_field != nullptr)
        m_field->SetText(text);
}

CString MemoryCombo::GetText() const {
    if (m_field != nullptr)
        return m_field->GetText();
    return m_selection >= 0 ? ItemText(m_selection) : CString();
}

void MemoryCombo::Insert(int index, std::string_view text) {
    m_items.insert(m_items.begin() + index, Item{CString(text), {}});
    if (m_selection >= index)
        ++m_selection;
}

void MemoryCombo::Remove(int index) {
    m_items.erase(m_items.begin() + index);
    if (m_selection >= index)
        m_selection = m_selection == index ? -1 : m_selection - 1;
}

void MemoryCombo::Clear() {
    m_items.clear();
    Select(-1);
}

void MemoryCombo::Select(int index) {
    m_selection = m_highlight = index;
    SetText(index >= 0 ? ItemText(index).View() : "");
    SetEditSelection(0, -1);
    Invalidate(nullptr);
}

void MemoryCombo::SetItemAccessibleName(int index, std::string_view name) {
    m_items.at(static_cast<size_t>(index)).accessibleName = CString(name);
}

void MemoryCombo::SetEditSelection(int first, int last) {
    if (m_field != nullptr)
        m_field->Select(first, last);
}

void MemoryCombo::ShowList(bool open) {
    if (open && !m_isOpen)
        m_toolkit.EndCapture();
    m_isOpen = open;
    m_highlight = m_selection;
}

void MemoryCombo::ToggleList() {
    ShowList(!m_isOpen);
    window::ReportNotification(m_record, m_isOpen ? CBN_DROPDOWN : CBN_CLOSEUP);
}

void MemoryCombo::Pick(int index) {
    Select(index);
    window::WindowRecord* const self = &m_record;
    ToggleList();
    if (window::IsWindow(self))
        window::ReportNotification(m_record, CBN_SELCHANGE);
}

// By a key or the wheel.
void MemoryCombo::MoveSelection(int index) {
    index = std::clamp(index, 0, std::max(Count() - 1, 0));
    if (Count() == 0 || index == (m_isOpen ? m_highlight : m_selection))
        return;
    if (m_isOpen) {
        m_highlight = index;
        return;
    }
    Select(index);
    window::ReportNotification(m_record, CBN_SELCHANGE);
}

bool MemoryCombo::HandleKey(UINT key) {
    const int current = m_isOpen ? m_highlight : m_selection;
    const bool isToggle = key == VK_F4 || (m_toolkit.IsKeyDown(VK_MENU) && (key == VK_UP || key == VK_DOWN));
    const bool isEnd = m_isOpen && (key == VK_RETURN || key == VK_ESCAPE);
    if (isEnd && key == VK_RETURN && m_highlight >= 0)
        Pick(m_highlight);
    else if (isToggle || isEnd)
        ToggleList();
    else if (key == VK_UP || key == VK_DOWN)
        MoveSelection(current + (key == VK_UP ? -1 : 1));
    else if (key == VK_PRIOR || key == VK_NEXT)
        MoveSelection(current + (key == VK_PRIOR ? -kPageItems : kPageItems));
    else if ((key == VK_HOME || key == VK_END) && m_field == nullptr)
        MoveSelection(key == VK_HOME ? 0 : Count() - 1);
    else
        return false;
    return true;
}

LRESULT MemoryCombo::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    window::WindowRecord* const self = &m_record;
    switch (message) {
        case WM_GETDLGCODE:
            return m_isOpen ? DLGC_WANTALLKEYS : DLGC_WANTARROWS;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            ToggleList();
            return 0;
        case WM_KEYDOWN:
        case WM_CHAR:
            if (m_field != nullptr)
                m_field->DefaultProc(message, wParam, lParam);
            else if (message == WM_KEYDOWN)
                HandleKey(static_cast<UINT>(wParam));
            return 0;
        case WM_MOUSEWHEEL:
            MoveSelection(m_selection - static_cast<SHORT>(HIWORD(wParam)) / WHEEL_DELTA);
            return 1;
        case WM_SETFOCUS:
            window::ReportNotification(m_record, CBN_SETFOCUS);
            return 0;
        case WM_KILLFOCUS:
            if (m_isOpen)
                ToggleList();
            if (window::IsWindow(self))
                window::ReportNotification(m_record, CBN_KILLFOCUS);
            return 0;
        default:
            return MemoryWindow::DefaultProc(message, wParam, lParam);
    }
}

void MemoryCombo::PaintByDefault(std::unique_ptr<window::Painter> painter) {
    const bool isOwnerDrawn = (m_record.Style() & CBS_OWNERDRAWFIXED) != 0;
    PaintText(*painter, isOwnerDrawn ? CString() : GetText());
    if (!isOwnerDrawn)
        return;
    const UINT focused = window::FocusWindow() == &m_record ? ODS_FOCUS | ODS_SELECTED : 0;
    DrawItem(m_selection, ODS_COMBOBOXEDIT | focused, std::move(painter), FieldRect());
}

void MemoryCombo::DrawItem(int index, UINT state, std::unique_ptr<window::Painter> painter,
                           const CRect& rect) {
    CDC dc(std::move(painter), &TextFont());
    dc.SetTextColor(m_toolkit.SystemColor(COLOR_WINDOWTEXT));
    dc.SetBkColor(m_toolkit.SystemColor(COLOR_WINDOW));
    const auto id = static_cast<UINT>(m_record.Id());
    DRAWITEMSTRUCT request{.CtlType = ODT_COMBOBOX,
                           .CtlID = id,
                           .itemID = static_cast<UINT>(index),
                           .itemAction = ODA_DRAWENTIRE,
                           .itemState = state | (IsEnabled() ? 0 : ODS_DISABLED),
                           .hwndItem = &m_record,
                           .hDC = &dc,
                           .rcItem = rect};
    window::Report(m_record, WM_DRAWITEM, id, reinterpret_cast<LPARAM>(&request));
}

}  // namespace kortavin::testing
