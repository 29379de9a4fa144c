#pragma once

#include "kortavin/grid/gridctrl.h"

namespace kortavin::grid {

// A heading as the library's own tables have them: centred both ways, its words wrapped.
void SetHeading(CGridCtrl& grid, int row, int col, const CString& text);

}  // namespace kortavin::grid
