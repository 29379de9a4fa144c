#pragma once

#include <QObject>

namespace kortavin::qt {

class QtWindow;

// Leads the mouse events of all widgets to the window that has the capture. The screen's pointer is not
// grabbed, which not every platform can: while a button is held, Qt gets all its events anyway.
class Capture : public QObject {
  public:
    static void Begin(QtWindow& window);
    static void End();
    static QtWindow* Holder();  // null: none

  protected:
    // Of the application, while there is a holder. A popup or a modal window ends the capture.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QtWindow* m_holder = nullptr;
    static Capture& Instance();
};

}  // namespace kortavin::qt
