#include <QtWidgets/QCheckBox>

#include "demo/driver.h"
#include "demo/gridpage.h"
#include "demo/tour.h"

namespace kortavin::demo {
namespace {

// The middle of a cell that shows, in the grid's widget.
QPoint MiddleOf(const CGridCtrl& grid, int row, int col) {
    CRect rect;
    if (!grid.GetCellRect(row, col, &rect))
        throw TourFailure("a cell of the table does not show");
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

}  // namespace

void UseGridPage(Driver& driver, const GridPage& page) {
    const CGridCtrl& grid = page.Grid();
    auto& widget = driver.Find<QWidget>("grid");
    driver.ExpectChange(widget, "a click into the table",
                        [&] { driver.Click(widget, MiddleOf(grid, 3, 2)); });
    driver.Key(Qt::Key_Right);
    driver.Expect([&] { return grid.GetFocusCell() == CGridPos(3, 3); },
                  "an arrow key moves to the next cell");
    driver.Type(QStringLiteral("长安"));
    driver.Key(Qt::Key_Tab);
    driver.Expect([&] { return grid.GetItemText(3, 3).ToUtf8() == "长安" && grid.GetModified(3, 3); },
                  "what was typed into a cell is taken over by Tab");
    driver.Shoot(widget, QStringLiteral("table-edit"));
    driver.Key(Qt::Key_Escape);
    driver.ExpectChange(widget, "the End key", [&] { driver.Key(Qt::Key_End); });
    driver.Expect([&] { return grid.GetFocusCell().row == grid.GetRowCount() - 1; },
                  "End goes to the last row");
    driver.Key(Qt::Key_Home);
    driver.Click(driver.Find<QCheckBox>("listMode"));
    driver.ExpectChange(widget, "a click on a heading sorts",
                        [&] { driver.Click(widget, MiddleOf(grid, 0, 4)); });
    driver.ExpectChange(widget, "a row is selected", [&] { driver.Click(widget, MiddleOf(grid, 5, 2)); });
}

void ShootGridPage(Driver& driver, const GridPage& page) {
    driver.Shoot(*page.window(), QStringLiteral("table"));
}

}  // namespace kortavin::demo
