#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <optional>

#include "framework/qt/qtwidgets.h"
#include "framework/window/window.h"
#include "tests/framework/window/testwindow.h"

// What the tests of real events share. Events are sent by QTest, which leaves the desktop's pointer alone,
// but for moves without a button.
namespace kortavin::testing {

// A recording window whose test may answer messages itself and chooses its keys.
class EventWindow : public TestWindow {
  public:
    using Script = std::function<std::optional<LRESULT>(UINT message, WPARAM wParam, LPARAM lParam)>;

    ~EventWindow() override { script = nullptr; }

    Script script;  // nothing: the window's own handling
    UINT dialogCode = 0;
    CPoint point;  // of the latest mouse message

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == WM_GETDLGCODE)
            return dialogCode;
        if (message >= WM_MOUSEMOVE && message <= WM_MOUSEWHEEL)
            point = PointOfParam(lParam);
        if (std::ranges::find(interest, message) != interest.end())
            record.emplace_back(message, wParam);
        const auto answer = script ? script(message, wParam, lParam) : std::nullopt;
        return answer ? *answer : CWnd::WindowProc(message, wParam, lParam);
    }

    Record TakeRecord() { return std::exchange(record, {}); }
};

inline QWidget& WidgetOf(const CWnd& window) {
    return *qt::WidgetOf(window);
}

// On the screen, and the active window.
inline void Activate(QWidget& top) {
    top.show();
    top.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&top] { return QApplication::activeWindow() == &top; }));
}

inline void MoveMouse(QWidget& widget, QPoint place, Qt::MouseButtons buttons = {},
                      Qt::KeyboardModifiers modifiers = {}) {
    QMouseEvent move(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton, buttons, modifiers);
    QCoreApplication::sendEvent(&widget, &move);
}

inline bool Turn(QWidget& widget, int delta, Qt::KeyboardModifiers modifiers = {}) {
    const QPointF middle = widget.rect().center();
    QWheelEvent wheel(middle, widget.mapToGlobal(middle), {}, {0, delta}, {}, modifiers, Qt::NoScrollPhase,
                      false);
    return QCoreApplication::sendEvent(&widget, &wheel) && wheel.isAccepted();
}

// What the user will do in the modal box that opens next.
template <class Box>
void InNextBox(const std::function<void(Box&)>& script) {
    QTimer::singleShot(0, [script] {
        auto* const box = qobject_cast<Box*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr) << "no such box is open";
        script(*box);
        if (box == QApplication::activeModalWidget()) {
            ADD_FAILURE() << "the box stays open";
            box->close();
        }
    });
}

// Every test leaves no widget, and no error that would have been shown.
class QtTest : public ::testing::Test {
  protected:
    QtTest() {
        window::SetMessageBoxHandler([](const char* text, UINT) { return ADD_FAILURE() << text, IDOK; });
    }
    ~QtTest() override {
        window::SetMessageBoxHandler({});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(QApplication::allWidgets().isEmpty())
            << QApplication::allWidgets().first()->metaObject()->className();
    }
};

}  // namespace kortavin::testing
