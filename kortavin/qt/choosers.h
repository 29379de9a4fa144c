#pragma once

#include <QWidget>
#include <optional>
#include <string_view>

#include "kortavin/window/toolkit.h"

// Modal boxes. `parent`: null for the active window.
namespace kortavin::qt {

// The window that a box opens over: that of the widget which the program names, else the one that the user
// works in. A dialog that was just closed may still count as active, but takes its children along when it
// goes.
QWidget* WindowBelowBox(QWidget* named);

// A plain text with one button; answers IDOK.
int ShowMessageBox(std::string_view text, QWidget* parent);

// Of the request all but its parent; the part for custom colours is always open.
std::optional<COLORREF> ChooseColor(const window::ColorRequest& request, QWidget* parent);

std::optional<CString> ChooseFile(const window::FileRequest& request, QWidget* parent);

}  // namespace kortavin::qt
