#include <algorithm>

#include "framework/base/codepage.h"
#include "framework/window/dc.h"
#include "framework/window/keys.h"
#include "framework/window/metrics.h"
#include "tests/support/memory/controls.h"

namespace kortavin::testing {
namespace {

constexpr int kFieldMargin = 8;  // what the selection field has above and below its text
constexpr int kPageItems = 5;

}  // namespace

MemoryCombo::MemoryCombo(MemoryToolkit& toolkit, window::Window& record, const window::WindowRequest& request)
    : MemoryWindow(toolkit, record, request),
      m_fieldHeight(TextFont().GetNative()->Metrics().tmHeight + kFieldMargin),
      m_itemHeight(TextFont().GetNative()->Metrics().tmHeight) {
    SetRect(WithFieldHeight(request.rect));
}

// The rectangle that a combo box is given holds its open list too.
CRect MemoryCombo::WithFieldHeight(const CRect& rect) const {
    return {rect.TopLeft(), CSize(rect.Width(), m_fieldHeight)};
}

void MemoryCombo::Move(const CRect& rect) {
    MemoryWindow::Move(WithFieldHeight(rect));
}

void MemoryCombo::SetItemHeight(int index, int height) {
    (index < 0 ? m_fieldHeight : m_itemHeight) = height;
    Move(GetRect());
}

void MemoryCombo::SetText(std::string_view text) {
    if (!HasEditField())
        return;
    m_text = CString(text);
    m_editFirst = m_editLast = 0;
    Invalidate(nullptr);
}

CString MemoryCombo::GetText() const {
    if (HasEditField())
        return m_text;
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
    if (HasEditField()) {
        m_text = index >= 0 ? ItemText(index) : CString();
        SetEditSelection(0, -1);
    }
    Invalidate(nullptr);
}

void MemoryCombo::SetItemAccessibleName(int index, std::string_view name) {
    m_items.at(static_cast<size_t>(index)).accessibleName = CString(name);
}

void MemoryCombo::SetEditSelection(int first, int last) {
    const size_t length = m_text.View().size();
    m_editFirst = std::min(length, static_cast<size_t>(std::max(first, 0)));
    m_editLast = last < 0 ? length : std::min(length, static_cast<size_t>(last));
    if (m_editFirst > m_editLast)
        std::swap(m_editFirst, m_editLast);
}

CString MemoryCombo::SelectedText() const {
    return CString(m_text.View().substr(m_editFirst, m_editLast - m_editFirst));
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
    const HWND self = &m_record;
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

void MemoryCombo::HandleKey(UINT key) {
    const int current = m_isOpen ? m_highlight : m_selection;
    const bool isForField = HasEditField() && !m_isOpen;
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
    else if ((key == VK_HOME || key == VK_END) && !isForField)
        MoveSelection(key == VK_HOME ? 0 : Count() - 1);
    else if (key == VK_DELETE && isForField)
        Erase(true);
}

// Erases the selection, or the character that begins at the caret or ends there.
void MemoryCombo::Erase(bool isForward) {
    const std::string_view text = m_text.View();
    if (m_editFirst == m_editLast && isForward)
        m_editLast += base::CharacterLength(text.substr(m_editLast));
    else if (m_editFirst == m_editLast && m_editFirst > 0)
        m_editFirst = base::CharacterBoundary(text, 0, m_editFirst - 1);
    ReplaceSelection("");
}

void MemoryCombo::TypeCharacter(UINT character) {
    if (character == VK_BACK)
        return Erase(false);
    if (character < VK_SPACE)
        return;
    std::string bytes(1, static_cast<char>(character));
    while ((character >>= 8) != 0)
        bytes.insert(bytes.begin(), static_cast<char>(character));
    ReplaceSelection(bytes);
}

void MemoryCombo::ReplaceSelection(std::string_view text) {
    if (text.empty() && m_editFirst == m_editLast)
        return;
    m_text.GetStorage().replace(m_editFirst, m_editLast - m_editFirst, text);
    m_editFirst = m_editLast = m_editFirst + text.size();
    Invalidate(nullptr);
    window::ReportNotification(m_record, CBN_EDITCHANGE);
}

LRESULT MemoryCombo::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto key = static_cast<UINT>(wParam);
    const HWND self = &m_record;
    switch (message) {
        case WM_GETDLGCODE:
            return m_isOpen ? DLGC_WANTALLKEYS : DLGC_WANTARROWS;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONDBLCLK:
            ToggleList();
            return 0;
        case WM_KEYDOWN:
            HandleKey(key);
            return 0;
        case WM_CHAR:
            if (HasEditField())
                TypeCharacter(key);
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
    painter->FillRect(ClientRect(), {std::nullopt, m_toolkit.SystemColor(COLOR_WINDOW), std::nullopt});
    if ((m_record.Style() & CBS_OWNERDRAWFIXED) == 0)
        return painter->DrawText({2, kFieldMargin / 2}, GetText().View(), *TextFont().GetNative(),
                                 m_toolkit.SystemColor(COLOR_WINDOWTEXT));
    const CRect field(0, 0, std::max(0, GetClientSize().cx - kScrollBarSize), m_fieldHeight);
    const UINT focused = window::FocusWindow() == &m_record ? ODS_FOCUS | ODS_SELECTED : 0;
    DrawItem(m_selection, ODS_COMBOBOXEDIT | focused, std::move(painter), field);
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
