#include <QFrame>
#include <QPixmap>
#include <algorithm>
#include <cmath>
#include <utility>

#include "kortavin/qt/geometry.h"
#include "kortavin/qt/painter.h"
#include "kortavin/qt/window.h"

// Where a window lies, how large it is, and what is painted and scrolled in it.
namespace kortavin::qt {
namespace {

QPoint ClientOriginOfParent(const QWidget& widget) {
    const QtWindow* const parent = widget.isWindow() ? nullptr : QtWindow::Of(widget.parentWidget());
    return parent != nullptr ? parent->ClientArea().topLeft() : QPoint();
}

// Not at a scale that is no whole number, where they would not lie as they are painted; and not under a
// child, whose pixels Qt would move as well.
bool CanMovePixels(const QWidget& widget, const QRect& part) {
    const qreal scale = widget.devicePixelRatioF();
    const auto children = widget.findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    return scale == std::floor(scale) && std::ranges::none_of(children, [&part](const QWidget* child) {
               return !child->isWindow() && child->isVisible() && child->geometry().intersects(part);
           });
}

}  // namespace

int QtWindow::BorderWidth() const {
    const auto* const frame = qobject_cast<const QFrame*>(m_widget.data());
    return frame != nullptr && m_window.Kind() == window::WindowKind::Plain ? frame->frameWidth() : 0;
}

QRect QtWindow::InnerArea() const {
    const int border = BorderWidth();
    const QRect area =
        m_widget != nullptr ? m_widget->rect().adjusted(border, border, -border, -border) : QRect();
    return {area.topLeft(), area.size().expandedTo({0, 0})};
}

QRect QtWindow::ClientArea() const {
    return m_bars != nullptr && m_widget != nullptr ? m_bars->Remaining(InnerArea()) : InnerArea();
}

void QtWindow::Resize(QSize size) {
    m_widget->resize(size);
}

void QtWindow::Move(const CRect& rect) {
    if (m_widget == nullptr)
        return;
    const QPointer<QtWindow> alive(this);
    const QSize frame = m_widget->frameGeometry().size() - m_widget->size();
    m_widget->move(ToQt(rect.TopLeft()) + ClientOriginOfParent(*m_widget));
    Resize((QSize(rect.Width(), rect.Height()) - frame).expandedTo({0, 0}));
    if (alive != nullptr)
        ReportSize();
}

CRect QtWindow::GetRect() const {
    if (m_widget == nullptr)
        return {};
    if (m_widget->isWindow())
        return FromQt(m_widget->frameGeometry());
    const QPoint corner = m_window.Parent() != nullptr ? m_widget->pos() - ClientOriginOfParent(*m_widget)
                                                       : m_widget->mapToGlobal(QPoint());
    return FromQt(QRect(corner, m_widget->size()));
}

CSize QtWindow::GetClientSize() const {
    const QSize size = ClientArea().size();
    return {size.width(), size.height()};
}

CPoint QtWindow::ClientToScreen(CPoint point) const {
    return m_widget != nullptr ? FromQt(m_widget->mapToGlobal(ToQt(point) + ClientArea().topLeft())) : point;
}

CPoint QtWindow::ScreenToClient(CPoint point) const {
    return m_widget != nullptr ? FromQt(m_widget->mapFromGlobal(ToQt(point)) - ClientArea().topLeft())
                               : point;
}

// The first show of a window as large as it was made is none of its business.
void QtWindow::ReportSize() {
    if (m_bars != nullptr)
        m_bars->Place(InnerArea());
    const CSize size = GetClientSize();
    if (m_isReporting && std::exchange(m_reportedSize, size) != size)
        window::Report(
            m_window, WM_SIZE, 0,
            static_cast<LPARAM>(MakeWParam(static_cast<WORD>(size.cx), static_cast<WORD>(size.cy))));
}

void QtWindow::Invalidate(const CRect* rect) {
    if (!IsVisible())
        return;
    const QRect area = ClientArea();
    const QRect part = rect != nullptr ? ToQt(*rect).translated(area.topLeft()) & area : area;
    m_invalid += part;
    m_widget->update(part);
}

// Qt repaints what it is told to, so what is invalid is kept here.
void QtWindow::UpdateNow() {
    const QRegion region = std::exchange(m_invalid, QRegion());
    if (IsVisible() && !region.isEmpty() && !m_widget->testAttribute(Qt::WA_WState_InPaintEvent))
        m_widget->repaint(region);
}

void QtWindow::Scroll(int dx, int dy, const CRect& rect) {
    if (!IsVisible())
        return;
    const QRect area = ClientArea();
    const QRect part = ToQt(rect).translated(area.topLeft()) & area;
    if (!CanMovePixels(*m_widget, part)) {
        m_invalid += part;
        m_widget->update(part);
        return;
    }
    m_invalid = (m_invalid - part) + ((m_invalid & part).translated(dx, dy) & part);
    m_invalid += QRegion(part) - part.translated(dx, dy);
    m_widget->scroll(dx, dy, part);
}

std::unique_ptr<window::Painter> QtWindow::BeginPaint() {
    if (m_widget == nullptr || !std::exchange(m_mayBeginPaint, false))
        return nullptr;
    const QRect area = ClientArea();
    const QRect clip = m_paintRegion.boundingRect() & area;
    return std::make_unique<QtPainter>(*m_widget, clip.translated(-area.topLeft()), area.topLeft());
}

std::unique_ptr<window::Painter> QtWindow::ClientPainter() {
    if (m_widget != nullptr)
        return std::make_unique<MeasuringPainter>(*m_widget);
    return std::make_unique<MeasuringPainter>(QPixmap(1, 1));
}

void QtWindow::SetScroll(int bar, const window::ScrollState& state) {
    if (m_widget == nullptr)
        return;
    if (m_bars == nullptr)
        m_bars = std::make_unique<ScrollBars>(*m_widget, m_window);
    m_bars->Set(bar, state);
    ReportSize();
}

window::ScrollState QtWindow::GetScroll(int bar) const {
    return m_bars != nullptr ? m_bars->Get(bar) : window::ScrollState();
}

}  // namespace kortavin::qt
