#include "kortavin/grid/heading.h"

namespace kortavin::grid {

void SetHeading(CGridCtrl& grid, int row, int col, const CString& text) {
    GridItem item;
    item.row = row;
    item.col = col;
    item.mask = GridItemText | GridItemFormat;
    item.nFormat = DT_CENTER | DT_VCENTER | DT_WORDBREAK;
    item.text = text;
    grid.SetItem(&item);
}

}  // namespace kortavin::grid
