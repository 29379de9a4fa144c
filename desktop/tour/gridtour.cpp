#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>

#include "desktop/gridpage.h"
#include "desktop/tour/driver.h"
#include "desktop/tour/tour.h"

namespace kortavin::desktop {
namespace {

// The middle of a cell that shows, in the grid's widget.
QPoint MiddleOf(const CGridCtrl& grid, int row, int col) {
    CRect rect;
    if (!grid.GetCellRect(row, col, &rect))
        throw TourFailure("a cell of the table does not show");
    return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
}

void Drag(QWidget& widget, QPoint from, QPoint to) {
    const auto send = [&](QEvent::Type type, QPointF place, Qt::MouseButton button, Qt::MouseButtons held) {
        QMouseEvent event(type, place, widget.mapToGlobal(place), button, held, Qt::NoModifier);
        QApplication::sendEvent(&widget, &event);
    };
    send(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    send(QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton);
    send(QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton);
}

}  // namespace

void UseGridPage(Driver& driver, const GridPage& page) {
    const CGridCtrl& grid = page.Grid();
    auto& widget = driver.Find<QWidget>("grid");
    driver.ExpectChange(widget, "a click into the table",
                        [&] { driver.Click(widget, MiddleOf(grid, 3, 2)); });
    driver.ExpectChange(widget, "the End key", [&] { driver.Key(Qt::Key_End); });
    driver.Key(Qt::Key_Right);
    const int last = grid.GetRowCount() - 1;
    driver.Expect([&] { return grid.GetFocusCell() == CGridPos(last, 3); },
                  "End goes to the last row, an arrow key to the next cell");
    driver.Type(QStringLiteral("长安"));
    driver.Key(Qt::Key_Tab);
    driver.Expect([&] { return grid.GetItemText(last, 3).ToUtf8() == "长安" && grid.GetModified(last, 3); },
                  "what was typed into a cell is taken over by Tab");
    driver.Expect([&] { return widget.findChild<QComboBox*>() != nullptr; },
                  "Tab goes on to the list of the next cell");
    driver.Key(Qt::Key_Down);
    driver.Key(Qt::Key_Return);
    driver.Expect([&] { return grid.GetModified(last, 4); }, "what was chosen from the list is taken over");
    driver.Key(Qt::Key_Home);
    auto& listMode = driver.Find<QCheckBox>("listMode");
    driver.Click(listMode);
    driver.ExpectChange(widget, "a click on a heading sorts",
                        [&] { driver.Click(widget, MiddleOf(grid, 0, 4)); });
    driver.ExpectChange(widget, "a click on another heading sorts by that",
                        [&] { driver.Click(widget, MiddleOf(grid, 0, 0)); });
    driver.Expect([&] { return grid.GetItemText(1, 0).TrimLeft() == "1"; }, "the rows are as before");
    driver.Click(listMode);
}

// The table as it is, some of its cells, its rows, and both kinds of editors.
void ShootGridPage(Driver& driver, const GridPage& page) {
    const ListedGrid& grid = page.Grid();
    auto& widget = driver.Find<QWidget>("grid");
    driver.Click(widget, MiddleOf(grid, 3, 2));
    driver.Shoot(*page.window(), QStringLiteral("table"));
    Drag(widget, MiddleOf(grid, 5, 2), MiddleOf(grid, 8, 4));
    driver.Shoot(widget, QStringLiteral("table-cells"));
    auto& listMode = driver.Find<QCheckBox>("listMode");
    driver.Click(listMode);
    driver.Click(widget, MiddleOf(grid, 6, 3));
    driver.Shoot(widget, QStringLiteral("table-rows"));
    driver.Click(listMode);
    driver.Click(widget, MiddleOf(grid, 4, 3));
    driver.Type(QStringLiteral("长安"));
    driver.Shoot(widget, QStringLiteral("table-edit"));
    driver.Key(Qt::Key_Escape);
    driver.Click(widget, MiddleOf(grid, 4, grid.ListedColumn()));
    driver.Key(Qt::Key_Return);
    driver.Key(Qt::Key_F4);
    driver.Shoot(widget, QStringLiteral("table-list"));
    driver.Key(Qt::Key_Escape);
    driver.Key(Qt::Key_Escape);
}

}  // namespace kortavin::desktop
