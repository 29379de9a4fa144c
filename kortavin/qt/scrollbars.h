#pragma once

#include <QObject>
#include <QPointer>
#include <QScrollBar>
#include <array>

#include "kortavin/window/windowrecord.h"

namespace kortavin::qt {

// The two scroll bars of a window, along the right and the lower edge of its widget. They ask for scrolling
// by messages and move when the window sets their position; only the thumb follows the pointer by itself.
class ScrollBars : public QObject {
  public:
    ScrollBars(QWidget& widget, window::WindowRecord& window);
    ~ScrollBars() override;

    void Set(int bar, const window::ScrollState& state);
    window::ScrollState Get(int bar) const;

    // What the shown bars leave of the widget's inner area.
    QRect Remaining(const QRect& inner) const;
    // Puts the shown bars along the edges of the inner area, and on top of other widgets.
    void Place(const QRect& inner);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Bar {
        QPointer<QScrollBar> widget;
        window::ScrollState state;
        bool isShown = false;
    };

    void Connect(int bar);
    void OnAction(int bar, int action);
    void OnReleased(int bar);
    void Request(int bar, UINT request);

    QWidget& m_widget;
    window::WindowRecord& m_window;
    std::array<Bar, 2> m_bars;
    QPointer<QWidget> m_corner;  // between the ends of both
};

// Of a widget that scrolls by itself: it shows the bar where its style has one and its content needs it.
inline Qt::ScrollBarPolicy BarPolicy(DWORD style, DWORD bar) {
    return (style & bar) != 0 ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff;
}

}  // namespace kortavin::qt
