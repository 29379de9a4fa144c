#include "kortavin/qt/capture.h"

#include <QCoreApplication>
#include <QMouseEvent>

#include "kortavin/qt/window.h"

namespace kortavin::qt {
namespace {

bool IsMouseEvent(const QEvent& event) {
    switch (event.type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
            return true;
        default:
            return false;
    }
}

void SendTo(QWidget& widget, const QMouseEvent& mouse) {
    QMouseEvent led(mouse.type(), widget.mapFromGlobal(mouse.globalPosition()), mouse.globalPosition(),
                    mouse.button(), mouse.buttons(), mouse.modifiers(), mouse.pointingDevice());
    QCoreApplication::sendEvent(&widget, &led);
}

}  // namespace

// Never destroyed, as the application whose filter it is may live on.
Capture& Capture::Instance() {
    static auto* const instance = new Capture;
    return *instance;
}

void Capture::Begin(QtWindow& window) {
    Instance().m_holder = &window;
    QCoreApplication::instance()->installEventFilter(&Instance());
}

void Capture::End() {
    Instance().m_holder = nullptr;
    if (QCoreApplication::instance() != nullptr)
        QCoreApplication::instance()->removeEventFilter(&Instance());
}

QtWindow* Capture::Holder() {
    return Instance().m_holder;
}

bool Capture::eventFilter(QObject* watched, QEvent* event) {
    if (m_holder == nullptr || !watched->isWidgetType())
        return false;
    const auto& widget = static_cast<const QWidget&>(*watched);
    if (event->type() == QEvent::Show && widget.isWindow() &&
        (widget.windowType() == Qt::Popup || widget.isModal()))
        m_holder->LoseCapture();
    QWidget* const captor = m_holder != nullptr ? m_holder->Widget() : nullptr;
    if (captor == nullptr || captor == watched || !IsMouseEvent(*event))
        return false;
    SendTo(*captor, static_cast<const QMouseEvent&>(*event));
    return true;
}

}  // namespace kortavin::qt
