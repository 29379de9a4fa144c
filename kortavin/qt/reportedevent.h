#pragma once

#include <QEvent>

#include "kortavin/qt/window.h"

namespace kortavin::qt {

// A message that is being reported, and the event behind it (null: the message has none left to hand on).
struct QtWindow::ReportedEvent {
    QEvent* event;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    ReportedEvent* outer;
    bool wasHanded = false;

    bool Is(UINT otherMessage, WPARAM otherWParam, LPARAM otherLParam) const {
        return message == otherMessage && wParam == otherWParam && lParam == otherLParam;
    }
};

}  // namespace kortavin::qt
