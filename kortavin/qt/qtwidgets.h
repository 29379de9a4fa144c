#pragma once

#include "kortavin/base/export.h"
#include "kortavin/window/wnd.h"

class QWidget;

// What a Qt host needs to put the library's windows beside its own. Linking with this library is enough to
// make Qt the toolkit; a QApplication of the host is used, and must exist when the first window is made. All
// on the thread of the user interface.
namespace kortavin::qt {

// The widget of a window; null without one. Qt owns a widget that has a parent: destroying it destroys the
// window, and the object's m_hWnd becomes null.
KORTAVIN_API QWidget* WidgetOf(const CWnd& window);

// Attaches an object (a picker, a grid) to a widget that the host made, for example with a form: a combo box
// to a QComboBox (CBS_DROPDOWNLIST, owner-drawn when the object's class is derived from CComboBox), a label
// to a QLabel or plain QWidget, a button to a QAbstractButton, an edit box to a QLineEdit or QPlainTextEdit,
// anything else to a plain QWidget. The widget stays the host's, and its alone again when the object goes
// first. FALSE when either has a partner already.
KORTAVIN_API BOOL AttachTo(CWnd& window, QWidget& widget, UINT id = 0);

// A window standing for a widget of the host, to be given as the parent of dialogs and message boxes. It
// lives as long as the widget; null for null.
KORTAVIN_API CWnd* WindowOf(QWidget* widget);

}  // namespace kortavin::qt
