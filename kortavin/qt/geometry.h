#pragma once

#include <QPoint>
#include <QRect>

#include "kortavin/base/geometry.h"

namespace kortavin::qt {

inline QPoint ToQt(CPoint point) {
    return {point.x, point.y};
}
inline QRect ToQt(const CRect& rect) {
    return {rect.left, rect.top, rect.Width(), rect.Height()};
}
inline CPoint FromQt(QPoint point) {
    return {point.x(), point.y()};
}
inline CRect FromQt(const QRect& rect) {
    return {FromQt(rect.topLeft()), CSize(rect.width(), rect.height())};
}

}  // namespace kortavin::qt
