#pragma once

#include <QtCore/QElapsedTimer>
#include <QtWidgets/QProgressDialog>
#include <functional>
#include <memory>

namespace kortavin::desktop {

// The user pressed the progress window's button. Thrown by Progress alone.
struct Cancelled {};

// Tells of work that goes on on the thread of the user interface: at first by the pointer, then by a window
// from which the work can be cancelled. Until that window is there no event is handled, so that no other
// command can come in between; afterwards it keeps all others away.
class Progress {
  public:
    Progress(QWidget& window, const QString& title);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    // To be called often: `text` is asked a few times in a second. Throws Cancelled.
    void Update(const std::function<QString()>& text);

  private:
    void ShowWindow(const QString& text);
    void RestorePointer();

    QWidget& m_window;
    QString m_title;
    QElapsedTimer m_clock;
    qint64 m_next;  // when to tell, in milliseconds
    bool m_pointerWaits = true;
    std::unique_ptr<QProgressDialog> m_dialog;
};

}  // namespace kortavin::desktop
