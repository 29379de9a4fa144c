#include "kortavin/grid/mateupsamplegrid.h"

#include "kortavin/grid/gridcelledit.h"

namespace kortavin {

CMateupSampleGrid::~CMateupSampleGrid() = default;

void CMateupSampleGrid::CreateCellEditor(CRect& rect, DWORD, UINT nID, int row, int col, const char* text,
                                         int nChar) {
    CGridCellEdit::Open(this, rect, ES_CENTER, nID, row, col, text, static_cast<UINT>(nChar));
}

}  // namespace kortavin
