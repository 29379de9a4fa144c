#pragma once

#include "grid/gridctrl.h"

// What both in-place editors share. Not installed.
namespace kortavin::grid {

// What the first character does to an editor's text.
struct FirstCharacter {
    bool selectsAll;  // else the caret goes to the end
    bool isTyped;     // the editor gets it as WM_CHAR
};
// A list editor treats Tab and the blank as characters.
FirstCharacter EffectOfFirst(UINT firstChar, bool isList);

// PgUp, PgDn and the arrows.
bool IsLeavingKey(UINT key);

// Tells the grid the new text, and has the editor closed. The editor may be gone afterwards.
void ReportEdit(CWnd& editor, CGridPos cell, const CString& text, UINT lastChar);

}  // namespace kortavin::grid
