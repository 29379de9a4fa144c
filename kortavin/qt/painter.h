#pragma once

#include <QPainter>
#include <QWidget>
#include <memory>
#include <optional>

#include "kortavin/window/toolkit.h"

namespace kortavin::qt {

// For one paint. The origin of the painter's coordinates is that of the client area, or of what else the
// receiver is told to paint in.
class QtPainter : public window::Painter {
  public:
    // Begins to paint a widget, within a paint event of it; `origin` is the client area's in the widget.
    QtPainter(QWidget& widget, const QRect& clip, QPoint origin = {});
    // Paints with what a style or a view paints with, and leaves it as it was.
    QtPainter(QPainter& painter, const QRect& clip);
    ~QtPainter() override;

    bool CanDraw() const override { return true; }
    CSize PixelsPerInch() const override;
    CRect ClipBox() const override { return m_clipBox; }
    void SetClip(const CRect& rect) override;

    void FillRect(const CRect& rect, const window::Fill& fill) override;
    void InvertRect(const CRect& rect) override;
    void DrawPolyline(std::span<const CPoint> points, const window::Stroke& stroke) override;
    void DrawEllipse(const CRect& rect, const window::Fill& fill, const window::Stroke* outline) override;
    void DrawText(CPoint corner, std::string_view text, const window::NativeFont& font,
                  COLORREF color) override;

  private:
    void Prepare();

    std::optional<QPainter> m_own;
    QPainter& m_painter;
    CRect m_clipBox;
};

// Answers measures only.
class MeasuringPainter : public window::Painter {
  public:
    explicit MeasuringPainter(const QPaintDevice& device);

    bool CanDraw() const override { return false; }
    CSize PixelsPerInch() const override { return m_pixelsPerInch; }
    CRect ClipBox() const override { return {}; }
    void SetClip(const CRect&) override {}
    void FillRect(const CRect&, const window::Fill&) override {}
    void InvertRect(const CRect&) override {}
    void DrawPolyline(std::span<const CPoint>, const window::Stroke&) override {}
    void DrawEllipse(const CRect&, const window::Fill&, const window::Stroke*) override {}
    void DrawText(CPoint, std::string_view, const window::NativeFont&, COLORREF) override {}

  private:
    CSize m_pixelsPerInch;
};

}  // namespace kortavin::qt
