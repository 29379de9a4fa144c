#include "desktop/progress.h"

#include <QtWidgets/QApplication>

namespace kortavin::desktop {
namespace {

constexpr qint64 kUntilWindow = 400;  // milliseconds
constexpr qint64 kBetweenTexts = 100;
constexpr int kWidth = 360;

}  // namespace

Progress::Progress(QWidget& window, const QString& title)
    : m_window(window), m_title(title), m_next(kUntilWindow) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_clock.start();
}

Progress::~Progress() {
    RestorePointer();
}

void Progress::RestorePointer() {
    if (m_pointerWaits)
        QApplication::restoreOverrideCursor();
    m_pointerWaits = false;
}

void Progress::Update(const std::function<QString()>& text) {
    if (m_clock.elapsed() < m_next)
        return;
    m_next = m_clock.elapsed() + kBetweenTexts;
    if (!m_dialog)
        ShowWindow(text());
    else
        m_dialog->setLabelText(text());
    QApplication::processEvents();
    if (m_dialog->wasCanceled())
        throw Cancelled();
}

// Without an end that could be told: nobody knows how many rows there will be.
void Progress::ShowWindow(const QString& text) {
    m_dialog = std::make_unique<QProgressDialog>(text, QStringLiteral("取消"), 0, 0, m_window.window());
    m_dialog->setWindowTitle(m_title);
    m_dialog->setWindowModality(Qt::ApplicationModal);
    m_dialog->setMinimumWidth(kWidth);
    m_dialog->show();
    RestorePointer();
}

}  // namespace kortavin::desktop
