#pragma once

#include <QWidget>

#include "kortavin/window/accessibletable.h"

// Windows that show a table, for screen readers. The heading rows and columns are cells of it like the
// others.
namespace kortavin::qt {

class QtWindow;

// Once an application: from then on the widgets of windows that have a table are accessible as tables.
void InstallTableAccess();

// Has the next one who asks for the widget's accessible interface get a new one.
void ForgetAccessible(QWidget& widget);

// Nothing while no screen reader listens. The widget's window has a table.
void TellTableChange(QWidget& widget, window::TableChange change, window::AccessibleTable::Cell cell);

// The window's widget gets the focus: its cell is told of once Qt has told of the widget.
void TellFocusLater(QtWindow& window);

}  // namespace kortavin::qt
