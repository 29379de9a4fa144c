#pragma once

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kortavin::desktop {

// A step of the tour had not the effect that it has for a person.
class TourFailure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Plays the person before the screen: sends widgets the events that keys and the mouse make, looks at what
// the window then shows, and keeps pictures of it.
class Driver {
  public:
    Driver(QWidget& window, const QDir& folder);

    void Key(int key, const QString& text = {});  // to what has the keyboard
    void Type(const QString& text);               // the same
    void Click(QWidget& widget, QPoint place);
    void Click(QWidget& widget) { Click(widget, widget.rect().center()); }
    void DoubleClick(QWidget& widget, QPoint place);
    void TabTo(const QWidget& widget);  // from the widget before it

    // Runs `open`, which is to open a modal dialog and to return when that closes, and `answer` on the
    // dialog. May be called within an answer, for a dialog above that one.
    using Answer = std::function<void(QWidget&)>;
    void InDialog(const std::function<void()>& open, const Answer& answer) { InDialogs(open, {answer}); }
    // The same with one after the other. Windows that tell of progress do not count.
    void InDialogs(const std::function<void()>& open, const std::vector<Answer>& answers);

    void Expect(const std::function<bool()>& happened, const std::string& what);  // soon
    // Runs the step, which is to change what the widget shows.
    void ExpectChange(QWidget& shown, const std::string& what, const std::function<void()>& step);

    void SetSuffix(const QString& suffix) { m_suffix = suffix; }  // of the pictures that follow
    void Shoot(const QWidget& part, const QString& name);         // with the list that is open
    template <class Widget>
    Widget& Find(const char* name) {
        auto* found = m_window.findChild<Widget*>(QString::fromLatin1(name));
        return found ? *found : throw TourFailure(std::string("no widget is called ") + name);
    }

  private:
    void Activate();
    static void Settle();
    void Run(const Answer& answer, QWidget& dialog, std::exception_ptr& failure);

    QWidget& m_window;  // dialogs have their own
    QDir m_folder;
    QString m_suffix;
};

}  // namespace kortavin::desktop
