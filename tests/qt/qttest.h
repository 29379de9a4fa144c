#pragma once

#include <gmock/gmock.h>

#include <QApplication>
#include <QImage>
#include <QTest>
#include <QTimer>
#include <functional>
#include <optional>

#include "kortavin/qt/qtwidgets.h"
#include "kortavin/window/windowrecord.h"
#include "tests/support/memory/surface.h"
#include "tests/window/testwindow.h"

// What the tests of real events share. Events are sent, so the desktop's pointer stays where it is.
namespace kortavin::testing {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using Record = TestWindow::Record;

// A recording window that asks for the keys which its test chooses, and lets it answer messages.
class EventWindow : public TestWindow {
  public:
    std::function<std::optional<LRESULT>(UINT message)> script;
    UINT dialogCode = 0;
    CPoint point;  // of the latest mouse message

    ~EventWindow() override { script = nullptr; }
    Record TakeRecord() { return std::exchange(record, {}); }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message >= WM_MOUSEMOVE && message <= WM_MOUSEWHEEL)
            point = PointOfParam(lParam);
        if (std::ranges::find(interest, message) != interest.end())
            record.emplace_back(message, wParam);
        const auto answer = message == WM_GETDLGCODE ? dialogCode : script ? script(message) : std::nullopt;
        return answer ? *answer : CWnd::WindowProc(message, wParam, lParam);
    }
};

inline QWidget& WidgetOf(const CWnd& window) {
    return *qt::WidgetOf(window);
}

inline void Activate(QWidget& top) {
    top.show();
    top.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&top] { return QApplication::activeWindow() == &top; }));
}

inline void MoveMouse(QWidget& widget, QPoint place, Qt::MouseButtons buttons = {},
                      Qt::KeyboardModifiers keys = {}) {
    QMouseEvent move(QEvent::MouseMove, place, widget.mapToGlobal(place), Qt::NoButton, buttons, keys);
    QCoreApplication::sendEvent(&widget, &move);
}

inline void TurnWheel(QWidget& widget, int delta, Qt::KeyboardModifiers keys = {}) {
    const QPointF middle = widget.rect().center();
    QWheelEvent wheel(middle, widget.mapToGlobal(middle), {}, {0, delta}, {}, keys, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &wheel);
}

// What the user does in the modal box that opens next.
template <class Box>
void InNextBox(const std::function<void(Box&)>& script) {
    QTimer::singleShot(0, [script] {
        auto* const box = qobject_cast<Box*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr) << "no such box is open";
        Activate(*box);
        script(*box);
        if (QApplication::activeModalWidget() == box) {
            ADD_FAILURE() << "the box stays open";
            box->close();
        }
    });
}

// Rendered with `scale` by `scale` pixels for each.
inline QImage PictureOf(QWidget& widget, int scale = 1) {
    QImage image(widget.size() * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    widget.render(&image);
    image.setDevicePixelRatio(1);
    return image;
}

inline QImage PictureOf(const PixelSurface& surface) {
    QImage image(surface.Bounds().Width(), surface.Bounds().Height(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const COLORREF color = surface.At(x, y);
            image.setPixel(x, y, qRgb(GetRValue(color), GetGValue(color), GetBValue(color)));
        }
    return image;
}

// Leaves no widget, and no error that the user would have been shown.
class QtTest : public ::testing::Test {
  protected:
    QtTest() {
        window::SetMessageBoxHandler([](const char* text, UINT) { return ADD_FAILURE() << text, IDOK; });
    }
    ~QtTest() override {
        window::SetMessageBoxHandler({});
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // Qt keeps the desktop's widget, which texts of several lines are measured with.
        const auto isLeft = [](const QWidget* widget) { return widget->windowType() != Qt::Desktop; };
        EXPECT_EQ(std::ranges::count_if(QApplication::allWidgets(), isLeft), 0);
    }
};

}  // namespace kortavin::testing
