#pragma once

#include <QColor>

#include "kortavin/window/metrics.h"

namespace kortavin::qt {

QColor ToQt(COLORREF color);
COLORREF FromQt(const QColor& color);

// Of the application's palette and style as they are now; 0 for an unknown index.
COLORREF SystemColor(int index);
int SystemMetric(int index);

}  // namespace kortavin::qt
