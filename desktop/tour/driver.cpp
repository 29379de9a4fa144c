#include "desktop/tour/driver.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressDialog>

namespace kortavin::desktop {
namespace {

constexpr int kPatience = 5000;  // milliseconds

QWidget* KeyboardTarget() {
    QWidget* popup = QApplication::activePopupWidget();
    if (!popup)
        return QApplication::focusWidget();
    return popup->focusWidget() ? popup->focusWidget() : popup;
}

void SendKey(QEvent::Type type, int key, const QString& text) {
    QWidget* target = KeyboardTarget();
    if (!target)
        throw TourFailure("nothing has the keyboard");
    QKeyEvent event(type, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &event);
}

void SendMouse(QWidget& widget, QEvent::Type type, const QPointF& place, Qt::MouseButtons held) {
    QMouseEvent event(type, place, widget.mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
    QApplication::sendEvent(&widget, &event);
}

// What the window has painted so far. Platforms hand that out in true pixels only; at other scales it is
// painted anew.
QImage OnScreen(QWidget& window) {
    const bool isTrue = window.devicePixelRatioF() == 1;
    return (isTrue ? window.screen()->grabWindow(window.winId()) : window.grab()).toImage();
}

// The part of its window, and the list that is open beside it.
QImage Picture(const QWidget& part, QWidget* list) {
    QWidget& window = *part.window();
    QRect area(part.mapTo(&window, QPoint()), part.size());
    const QPoint listCorner = list ? window.mapFromGlobal(list->mapToGlobal(QPoint())) : QPoint();
    if (list)
        area |= QRect(listCorner, list->size());
    const QImage whole = OnScreen(window);
    const double scale = whole.devicePixelRatio();
    QImage picture(area.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(window.palette().color(QPalette::Window));
    QPainter painter(&picture);
    painter.drawImage(-area.topLeft(), whole);
    if (list)
        painter.drawImage(listCorner - area.topLeft(), OnScreen(*list));
    return picture;
}

[[noreturn]] void Refuse(QWidget& dialog) {
    const auto* box = qobject_cast<QMessageBox*>(&dialog);
    throw TourFailure("a dialog opens that should not: " +
                      (box ? box->text() : dialog.windowTitle()).toStdString());
}

}  // namespace

Driver::Driver(QWidget& window, const QDir& folder) : m_window(window), m_folder(folder) {
    m_window.show();
    Activate();
}

// As a window manager does, with the dialog that keeps the others away.
void Driver::Activate() {
    QWidget* dialog = QApplication::activeModalWidget();
    QWidget& front = dialog ? *dialog : m_window;
    front.activateWindow();
    Expect([&front] { return front.isActiveWindow(); }, "the window does not become active");
    Settle();
}

void Driver::Key(int key, const QString& text) {
    SendKey(QEvent::KeyPress, key, text);
    if (KeyboardTarget())  // none where the press closed a dialog
        SendKey(QEvent::KeyRelease, key, text);
    Settle();
}

void Driver::Type(const QString& text) {
    for (const QChar character : text)
        Key(character.toUpper().unicode(), character);
}

void Driver::Click(QWidget& widget, QPoint place) {
    SendMouse(widget, QEvent::MouseButtonPress, place, Qt::LeftButton);
    SendMouse(widget, QEvent::MouseButtonRelease, place, Qt::NoButton);
    Settle();
}

void Driver::DoubleClick(QWidget& widget, QPoint place) {
    Click(widget, place);
    SendMouse(widget, QEvent::MouseButtonDblClick, place, Qt::LeftButton);
    SendMouse(widget, QEvent::MouseButtonRelease, place, Qt::NoButton);
    Settle();
}

void Driver::TabTo(const QWidget& widget) {
    Key(Qt::Key_Tab);
    Expect([&] { return widget.hasFocus(); },
           "the Tab key does not reach " + widget.objectName().toStdString());
}

void Driver::InDialogs(const std::function<void()>& open, const std::vector<Answer>& answers) {
    const QWidget* below = QApplication::activeModalWidget();
    std::size_t answered = 0;
    bool isAnswering = false;
    std::exception_ptr failure;  // none may pass through the dialog's loop
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &m_window, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (isAnswering || !dialog || dialog == below || qobject_cast<QProgressDialog*>(dialog))
            return;
        isAnswering = true;
        const bool isExpected = answered < answers.size() && !failure;
        Run(isExpected ? answers[answered++] : Answer(&Refuse), *dialog, failure);
        isAnswering = false;
    });
    poll.start(0);
    open();
    if (failure)
        std::rethrow_exception(failure);
    if (answered < answers.size())
        throw TourFailure("no dialog opens");
    Activate();
}

// Closes the dialog if the answer has not. What failed first is what counts.
void Driver::Run(const Answer& answer, QWidget& dialog, std::exception_ptr& failure) {
    const QPointer<QWidget> alive(&dialog);
    try {
        Expect([&dialog] { return dialog.isActiveWindow(); }, "the dialog does not become active");
        answer(dialog);
    } catch (...) {
        failure = failure ? failure : std::current_exception();
    }
    if (alive && alive == QApplication::activeModalWidget())
        alive->close();
}

void Driver::Expect(const std::function<bool()>& happened, const std::string& what) {
    QElapsedTimer clock;
    for (clock.start(); !happened(); QApplication::processEvents(QEventLoop::AllEvents, 10))
        if (clock.elapsed() > kPatience)
            throw TourFailure(what);
}

void Driver::ExpectChange(QWidget& shown, const std::string& what, const std::function<void()>& step) {
    const QImage before = Picture(shown, nullptr);
    step();
    Expect([&] { return Picture(shown, nullptr) != before; }, what);
}

void Driver::Shoot(const QWidget& part, const QString& name) {
    Settle();
    const QString path = m_folder.filePath(name + m_suffix + QStringLiteral(".png"));
    if (!Picture(part, QApplication::activePopupWidget()).save(path))
        throw TourFailure("the picture cannot be written: " + path.toStdString());
}

void Driver::Settle() {
    for (int i = 0; i < 3; ++i) {
        QApplication::sendPostedEvents();
        QApplication::processEvents();
    }
}

}  // namespace kortavin::desktop
