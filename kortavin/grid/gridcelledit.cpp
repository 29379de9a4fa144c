#include "kortavin/grid/gridcelledit.h"

#include <algorithm>
#include <memory>

#include "kortavin/window/toolkit.h"

namespace kortavin {

using namespace window;
using namespace grid;

CGridCellEdit::CGridCellEdit(const CRect& rect, int row, int col, const CString& initText, UINT nFirstChar)
    : CellEditor({row, col}, initText), m_exitOnArrows(nFirstChar != VK_LBUTTON), m_rect(rect) {}

CGridCellEdit::~CGridCellEdit() = default;

// Until it has a window the editor is ours; from then on its window's end is its own.
void CGridCellEdit::Open(CWnd* pParent, const CRect& rect, DWORD dwStyle, UINT nID, int row, int col,
                         const CString& initText, UINT nFirstChar) {
    std::unique_ptr<CGridCellEdit> editor(new CGridCellEdit(rect, row, col, initText, nFirstChar));
    CRect place = rect;
    place.InflateRect(0, 0, 1, 1);
    if (editor->Create(dwStyle | WS_CHILD | WS_VISIBLE | WS_BORDER | ES_AUTOHSCROLL, place, pParent, nID))
        editor.release()->Begin(nFirstChar);
}

void CGridCellEdit::Begin(UINT firstChar) {
    const HWND window = m_hWnd;
    SetFont(GetParent()->GetFont());
    SetWindowText(InitialText());
    SetFocus();
    if (!IsWindow(window))
        return;
    const FirstCharacter first = EffectOfFirst(firstChar, false);
    const int end = InitialText().GetLength();
    SetSel(first.selectsAll ? 0 : end, end);
    if (first.isTyped)
        SendMessage(WM_CHAR, firstChar, 1);
}

const MessageMap* CGridCellEdit::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {
        OnMessage<WM_KEYDOWN, &CGridCellEdit::OnKeyDown>(),
        OnMessage<WM_CHAR, &CGridCellEdit::OnChar>(),
    };
    static const MessageMap map{CellEditor::GetMessageMap(), kEntries};
    return &map;
}

void CGridCellEdit::OnKeyDown(UINT nChar, UINT, UINT) {
    if (IsLeavingKey(nChar, m_exitOnArrows != FALSE))
        LeaveBy(nChar);
    else
        Default();
}

void CGridCellEdit::OnChar(UINT nChar, UINT, UINT) {
    if (nChar == VK_TAB || nChar == VK_RETURN || nChar == VK_ESCAPE) {
        LeaveBy(nChar);
        return;
    }
    const HWND window = m_hWnd;
    Default();
    if (IsWindow(window))
        GrowToText();
}

// To the width of the text and two blanks, at most to the right edge of the grid; never smaller.
void CGridCellEdit::GrowToText() {
    const CFont* const font = GetFont();
    const int width = font->GetNative()->Width((GetWindowText() + "  ").View());
    CRect client;
    GetParent()->GetClientRect(&client);
    const int right = std::min(m_rect.left + width, client.right);
    if (right <= m_rect.right)
        return;
    m_rect.right = right;
    MoveWindow({m_rect.left, m_rect.top, m_rect.right, m_rect.bottom + 1});
}

}  // namespace kortavin
