#include "kortavin/grid/celleditor.h"

#include "kortavin/window/windowrecord.h"

namespace kortavin::grid {

FirstCharacter EffectOfFirst(UINT firstChar, bool isList) {
    switch (firstChar) {
        case VK_LBUTTON:
        case VK_RETURN:
            return {false, false};
        case VK_BACK:
            return {false, true};
        case VK_TAB:
        case VK_SPACE:
            return {true, isList};
        default:
            return {true, firstChar < VK_PRIOR || firstChar > VK_DOWN};
    }
}

bool IsLeavingKey(UINT key, bool evenWithoutCtrl) {
    const bool leads = key == VK_PRIOR || key == VK_NEXT || (key >= VK_LEFT && key <= VK_DOWN);
    return leads && (evenWithoutCtrl || window::RequireToolkit().IsKeyDown(VK_CONTROL));
}

void ReportEdit(CWnd& editor, CGridPos cell, const CString& text, UINT lastChar) {
    const HWND window = editor.m_hWnd;
    GridEditNotify record;
    record.hdr = {window, static_cast<UINT_PTR>(editor.GetDlgCtrlID()), GridNotifyEndEdit};
    record.item.mask = GridItemText | GridItemParam;
    record.item.row = cell.row;
    record.item.col = cell.col;
    record.item.text = text;
    record.item.lParam = lastChar;
    if (CWnd* const owner = editor.GetOwner(); owner != nullptr)
        owner->SendMessage(WM_NOTIFY, record.hdr.idFrom, reinterpret_cast<LPARAM>(&record));
    window::PostMessage(window, WM_CLOSE);
}

}  // namespace kortavin::grid
