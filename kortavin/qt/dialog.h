#pragma once

#include <QEventLoop>

#include "kortavin/qt/window.h"

namespace kortavin::qt {

// A dialog of fixed size, modal while it runs. Enter presses the default button, Esc and the close box
// cancel.
class QtDialog : public QtWindow {
  public:
    QtDialog(window::WindowRecord& window, const window::WindowRequest& request);
    ~QtDialog() override;

    // Qt puts it in the middle when it first shows.
    void Move(const CRect& rect) override;
    // Shows it and runs a loop until End; at once when that was called before. It may be gone afterwards.
    void Run();
    void End();

  protected:
    void Resize(QSize size) override;

  private:
    QPointer<QEventLoop> m_loop;  // while it runs
    bool m_hasEnded = false;
};

}  // namespace kortavin::qt
