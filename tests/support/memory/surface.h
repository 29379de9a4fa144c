#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "kortavin/base/geometry.h"
#include "kortavin/window/toolkit.h"

// A drawing surface in memory and a painter on it, with a font of fixed cells: what was drawn can be told to
// the pixel.
namespace kortavin::testing {

class PixelSurface {
  public:
    PixelSurface(int width, int height, COLORREF color = RGB(255, 255, 255));

    CRect Bounds() const { return m_bounds; }
    COLORREF At(int x, int y) const;  // std::out_of_range outside
    void Set(int x, int y, COLORREF color);
    void Fill(const CRect& rect, COLORREF color);  // its part on the surface

    // How many pixels of the rectangle have the colour.
    int CountOf(COLORREF color, const CRect& rect) const;
    int CountOf(COLORREF color) const { return CountOf(color, m_bounds); }

    // The rectangle, a line of text for each row and a character for each pixel, behind an empty line; `?`
    // for colours that the legend has not.
    using Legend = std::vector<std::pair<COLORREF, char>>;
    std::string Picture(const CRect& rect, const Legend& legend) const;
    // For failure messages: a picture of all colours, and what stands for which.
    std::string Dump(const CRect& rect) const;
    std::string Dump() const { return Dump(m_bounds); }

  private:
    CRect m_bounds;
    std::vector<COLORREF> m_pixels;
};

// One call of a painter's drawing operation, in client coordinates, whatever was clipped from it.
struct DrawingOperation {
    enum class Kind { FillRect, InvertRect, Polyline, Ellipse, Text };

    Kind kind = Kind::FillRect;
    CRect rect = {};                    // what is filled, inverted or outlined; the cell of a text
    std::vector<CPoint> points = {};    // of a polyline
    window::Fill fill = {};             // of a rectangle or ellipse
    std::optional<COLORREF> line = {};  // colour of a polyline, an outline or a text
    std::string text = {};
    LOGFONT font = {};  // of a text, if drawn in a FixedFont
};
using DrawingLog = std::vector<DrawingOperation>;

// Every byte takes a cell of 8 by 16 pixels, so a double-byte character is 16 wide. Ascent 12, descent 4.
class FixedFont : public window::NativeFont {
  public:
    static constexpr int kCellWidth = 8;
    static constexpr int kCellHeight = 16;
    static constexpr int kAscent = 12;

    explicit FixedFont(const LOGFONT& description = {}) : m_description(description) {}

    const LOGFONT& Description() const { return m_description; }
    TEXTMETRIC Metrics() const override;
    int Width(std::string_view text) const override;

  private:
    LOGFONT m_description;
};

// Paints on a surface, which must outlive it. The ink of a character is a block that leaves one pixel of its
// cell's width free at either side, from 3 pixels below the cell's top down to the baseline: 6 by 9 pixels
// for a single byte of the fixed font, 14 by 9 for a double-byte character. A space has no ink.
class SurfacePainter : public window::Painter {
  public:
    // The client area's upper left corner lies at `origin` of the surface; `clip` is in client coordinates.
    // What is drawn goes to the log too, if there is one.
    SurfacePainter(PixelSurface& surface, CPoint origin, const CRect& clip, DrawingLog* log = nullptr);
    // All of the surface.
    explicit SurfacePainter(PixelSurface& surface, DrawingLog* log = nullptr)
        : SurfacePainter(surface, {}, surface.Bounds(), log) {}

    void SetPixelsPerInch(CSize pixels) { m_pixelsPerInch = pixels; }

    bool CanDraw() const override { return true; }
    CSize PixelsPerInch() const override { return m_pixelsPerInch; }
    CRect ClipBox() const override { return m_clipBox; }
    void SetClip(const CRect& rect) override { m_clip.IntersectRect(rect, m_clipBox); }

    void FillRect(const CRect& rect, const window::Fill& fill) override;
    void InvertRect(const CRect& rect) override;
    void DrawPolyline(std::span<const CPoint> points, const window::Stroke& stroke) override;
    void DrawEllipse(const CRect& rect, const window::Fill& fill, const window::Stroke* outline) override;
    void DrawText(CPoint corner, std::string_view text, const window::NativeFont& font,
                  COLORREF color) override;

  private:
    void Log(DrawingOperation operation);
    // In client coordinates, and within the clip. No colour: nothing.
    void PaintRect(CRect rect, COLORREF color);
    void PaintPixel(int x, int y, std::optional<COLORREF> color);

    PixelSurface& m_surface;
    CPoint m_origin;
    CRect m_clipBox;
    CRect m_clip;
    CSize m_pixelsPerInch{96, 96};
    DrawingLog* m_log;
};

}  // namespace kortavin::testing
