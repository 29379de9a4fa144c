#include "kortavin/grid/gridcellcombo.h"

#include <algorithm>
#include <memory>

#include "kortavin/window/metrics.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

using namespace window;
using namespace grid;

namespace {

// Keys whose release ends a list editor.
bool EndsOnRelease(UINT key) {
    return key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE;
}

LPARAM KeyParam(UINT repeats, UINT flags) {
    return static_cast<LPARAM>(MakeWParam(static_cast<WORD>(repeats), static_cast<WORD>(flags)));
}

}  // namespace

CGridCellCombo::CGridCellCombo(int row, int col, const CString& initText)
    : CellEditor({row, col}, initText) {}
CGridCellCombo::~CGridCellCombo() = default;

void CGridCellCombo::Open(CWnd* pParent, const CRect& rect, DWORD dwStyle, UINT nID, int row, int col,
                          const CStringArray& items, const CString& initText, UINT nFirstChar) {
    std::unique_ptr<CGridCellCombo> editor(new CGridCellCombo(row, col, initText));
    CRect place = rect;
    place.InflateRect(0, 0, 1, 1);
    const int cellHeight = place.Height();
    place.bottom += editor->m_numLines * cellHeight + GetSystemMetrics(SM_CYHSCROLL);
    if (!editor->Create(dwStyle | WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | CBS_AUTOHSCROLL, place,
                        pParent, nID))
        return;
    editor->Fill(place, items);
    editor->SetItemHeight(-1, static_cast<UINT>(std::min(cellHeight, 255)));
    editor.release()->Begin(nFirstChar);
}

void CGridCellCombo::Fill(const CRect& rect, const CStringArray& items) {
    CFont* const font = GetParent()->GetFont();
    SetFont(font);
    int widest = 0;
    for (int i = 0; i < items.GetSize(); ++i) {
        AddString(items[i]);
        widest = std::max(widest, font->GetNative()->Width(items[i].View()));
    }
    const int width = widest + GetSystemMetrics(SM_CXVSCROLL) + 2 * font->GetNative()->Width(" ");
    MoveWindow({rect.left, rect.top, std::max(rect.right, rect.left + width), rect.bottom});
    SetDroppedWidth(static_cast<UINT>(width));
    if (SelectString(-1, InitialText()) == CB_ERR)
        SetWindowText(InitialText());
}

void CGridCellCombo::Begin(UINT firstChar) {
    const HWND window = m_hWnd;
    const bool hasField = m_edit.SubclassDlgItem(kComboEditId, this) != FALSE;
    SetFocus();
    if (!hasField || !IsWindow(window))
        return;
    const FirstCharacter first = EffectOfFirst(firstChar, true);
    const int end = GetWindowTextLength();
    SetEditSel(first.selectsAll ? 0 : end, end);
    if (first.isTyped)
        SendMessage(WM_CHAR, firstChar, 1);
}

const MessageMap* CGridCellCombo::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        OnMessage<WM_KEYDOWN, &CGridCellCombo::OnKeyDown>(),
        OnMessage<WM_KEYUP, &CGridCellCombo::OnKeyUp>(),
    };
    static const MessageMap map{CellEditor::GetMessageMap(), kEntries};
    return &map;
}

// With an edit field it is that which has the focus and loses it.
bool CGridCellCombo::HoldsFocusItself() const {
    return m_edit.m_hWnd == nullptr;
}

// A key that ends the edit on its release has nothing to do before but to close the list.
void CGridCellCombo::OnKeyDown(UINT nChar, UINT, UINT) {
    if (IsLeavingKey(nChar, m_exitOnArrows != FALSE))
        LeaveBy(nChar);
    else if (!EndsOnRelease(nChar) || GetDroppedState())
        Default();
}

void CGridCellCombo::OnKeyUp(UINT nChar, UINT, UINT) {
    if (EndsOnRelease(nChar))
        LeaveBy(nChar);
    else
        Default();
}

CGridComboEdit::~CGridComboEdit() = default;

const MessageMap* CGridComboEdit::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        OnMessage<WM_KILLFOCUS, &CGridComboEdit::OnKillFocus>(),
        OnMessage<WM_KEYDOWN, &CGridComboEdit::OnKeyDown>(),
        OnMessage<WM_KEYUP, &CGridComboEdit::OnKeyUp>(),
    };
    static const MessageMap map{KeyKeeper::GetMessageMap(), kEntries};
    return &map;
}

void CGridComboEdit::OnKillFocus(CWnd*) {
    const HWND owner = GetOwner()->m_hWnd;
    Default();
    if (auto* const combo = dynamic_cast<CGridCellCombo*>(FromHandle(owner)); combo != nullptr)
        combo->EndEdit();
}

void CGridComboEdit::OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags) {
    auto* const combo = dynamic_cast<CGridCellCombo*>(GetOwner());
    if (combo != nullptr && GetDlgCtrlID() == kComboEditId && IsLeavingKey(nChar, false))
        combo->SendMessage(WM_KEYDOWN, nChar, KeyParam(nRepCnt, nFlags));
    else if (!EndsOnRelease(nChar) || (combo != nullptr && combo->GetDroppedState()))
        Default();
}

void CGridComboEdit::OnKeyUp(UINT nChar, UINT nRepCnt, UINT nFlags) {
    CWnd* const combo = GetOwner();
    if (EndsOnRelease(nChar) && combo != nullptr)
        combo->SendMessage(WM_KEYUP, nChar, KeyParam(nRepCnt, nFlags));
    else
        Default();
}

}  // namespace kortavin
