#include "desktop/colors.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

namespace kortavin::desktop {
namespace {

QPalette DarkPalette() {
    const QColor text(230, 230, 230), grey(130, 130, 130);
    QPalette palette(QColor(60, 63, 65), QColor(45, 47, 49));  // the shades of edges are made from these
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, grey);
    }
    palette.setColor(QPalette::Base, QColor(35, 36, 38));
    palette.setColor(QPalette::AlternateBase, QColor(50, 52, 54));
    palette.setColor(QPalette::ToolTipBase, QColor(60, 63, 65));
    palette.setColor(QPalette::PlaceholderText, grey);
    palette.setColor(QPalette::Highlight, QColor(60, 110, 180));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(110, 170, 250));
    return palette;
}

}  // namespace

void UseColors(Colors colors) {
    QApplication::setStyle(QStringLiteral("fusion"));
    QApplication::setPalette(colors == Colors::Dark ? DarkPalette()
                                                    : QApplication::style()->standardPalette());
}

}  // namespace kortavin::desktop
