#include "kortavin/qt/combodelegate.h"

#include <QPainter>
#include <memory>

#include "kortavin/qt/colors.h"
#include "kortavin/qt/geometry.h"
#include "kortavin/qt/painter.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/dc.h"

namespace kortavin::qt {
namespace {

constexpr int kFrameWidth = 2;

UINT ItemState(QStyle::State state) {
    const bool isSelected = (state & QStyle::State_Selected) != 0;
    const bool isFocused = (state & QStyle::State_HasFocus) != 0;
    const bool isEnabled = (state & QStyle::State_Enabled) != 0;
    return (isSelected ? ODS_SELECTED : 0) | (isFocused ? ODS_FOCUS : 0) | (isEnabled ? 0 : ODS_DISABLED);
}

}  // namespace

void DrawComboItem(window::WindowRecord& control, QPainter& painter, const QPalette& palette,
                   const QRect& rect, int item, UINT state) {
    static_cast<QtWindow&>(control.Native()).GuardPainting(item, [&] {
        CDC dc(std::make_unique<QtPainter>(painter, rect), &control.Font());
        dc.SetTextColor(FromQt(palette.color(QPalette::Text)));
        dc.SetBkColor(FromQt(palette.color(QPalette::Base)));
        DRAWITEMSTRUCT request;
        request.CtlType = ODT_COMBOBOX;
        request.CtlID = static_cast<UINT>(control.Id());
        request.itemID = static_cast<UINT>(item);
        request.itemAction = ODA_DRAWENTIRE;
        request.itemState = state;
        request.hwndItem = &control;
        request.hDC = &dc;
        request.rcItem = FromQt(rect);
        control.OfferToControl(WM_DRAWITEM, request.CtlID, reinterpret_cast<LPARAM>(&request));
    });
}

void ComboDelegate::SetItemHeight(int height) {
    m_itemHeight = height;
    emit sizeHintChanged({});
}

void ComboDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const {
    if (m_drawnBy == nullptr) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const bool isCurrent = (option.state & QStyle::State_Selected) != 0;
    const QRect item = option.rect.adjusted(kFrameWidth, kFrameWidth, -kFrameWidth, -kFrameWidth);
    QPalette palette = option.palette;
    palette.setCurrentColorGroup((option.state & QStyle::State_Enabled) != 0 ? QPalette::Active
                                                                             : QPalette::Disabled);
    painter->fillRect(option.rect, palette.color(isCurrent ? QPalette::Highlight : QPalette::Base));
    painter->fillRect(item, palette.color(QPalette::Base));
    DrawComboItem(*m_drawnBy, *painter, palette, item, index.row(), ItemState(option.state));
}

QSize ComboDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (m_itemHeight > 0)
        size.setHeight(m_itemHeight);
    return m_drawnBy == nullptr ? size : size + QSize(2 * kFrameWidth, 2 * kFrameWidth);
}

}  // namespace kortavin::qt
