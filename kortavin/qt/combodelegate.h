#pragma once

#include <QStyledItemDelegate>

#include "kortavin/window/windowrecord.h"

class QPainter;
class QPalette;

namespace kortavin::qt {

// Has the control draw one of its items (-1: none, in the selection field) in `rect` of what the painter
// paints in, with the current colours of the palette. `state`: ODS_ bits.
void DrawComboItem(window::WindowRecord& control, QPainter& painter, const QPalette& palette,
                   const QRect& rect, int item, UINT state);

// The items of a combo's list at a height that was set. Drawn by the control itself when there is one to ask:
// such items show no selection, so the current one stands in a frame, for which there is room around each.
class ComboDelegate : public QStyledItemDelegate {
  public:
    explicit ComboDelegate(window::WindowRecord* drawnBy) : m_drawnBy(drawnBy) {}

    void SetItemHeight(int height);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    window::WindowRecord* m_drawnBy;
    int m_itemHeight = 0;  // 0: not set
};

}  // namespace kortavin::qt
