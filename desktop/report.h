#pragma once

#include <QtWidgets/QWidget>
#include <functional>
#include <stdexcept>

namespace kortavin::desktop {

// What the host itself refuses to do. The text is UTF-8 and for people.
class Failure : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Runs the body. An error that leaves it is told in a message box over the window: what could not be done,
// and below that the reason in the words of whoever refused. False then.
bool Reported(QWidget& window, const QString& undone, const std::function<void()>& body);

}  // namespace kortavin::desktop
