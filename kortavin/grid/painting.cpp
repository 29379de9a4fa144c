#include <algorithm>

#include "kortavin/grid/darkness.h"
#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/metrics.h"

namespace kortavin {

// The picture of a grid as a whole: its background, which cells are painted, and the lines between them.

BOOL CGridCtrl::OnEraseBkgnd(CDC*) {
    return TRUE;  // a paint covers everything
}

void CGridCtrl::OnPaint() {
    CPaintDC dc(this);
    OnDraw(&dc);
    if (m_band)
        dc.InvertRect(*m_band);
}

// The cells that a paint walks through, with where their first one lies.
struct CGridCtrl::Pass {
    CGridRange cells;
    CPoint corner;
    bool fixed;
};

void CGridCtrl::OnDraw(CDC* pDC) {
    CRect clip;
    if (!pDC->GetClipBox(&clip))
        return;
    CRect extent;
    const CGridRange visible = GetVisibleScrollRange(&extent);
    DrawBackground(*pDC, clip, extent);
    const int fixedHeight = GetFixedRowsHeight();
    const int fixedWidth = GetFixedColumnsWidth();
    const int lastFixedRow = m_fixedRowCount - 1;
    const int lastFixedCol = m_fixedColCount - 1;
    const Pass passes[] = {
        {{0, 0, lastFixedRow, lastFixedCol}, {0, 0}, true},
        {{visible.minRow, 0, visible.maxRow, lastFixedCol}, {0, fixedHeight}, true},
        {{0, visible.minCol, lastFixedRow, visible.maxCol}, {fixedWidth, 0}, true},
        {visible, {fixedWidth, fixedHeight}, false},
    };
    for (const Pass& pass : passes)
        DrawCells(*pDC, clip, pass);
    DrawGridLines(*pDC, visible, extent);
    pDC->SelectStockObject(NULL_PEN);
}

// Only the parts that the clip touches, with right and bottom exclusive.
void CGridCtrl::DrawBackground(CDC& dc, const CRect& clip, const CRect& extent) const {
    const int fixedHeight = GetFixedRowsHeight();
    const int fixedWidth = GetFixedColumnsWidth();
    if (clip.left < fixedWidth && clip.top < extent.bottom)
        dc.FillSolidRect({clip.left, clip.top, fixedWidth, extent.bottom}, m_fixedBkColour);
    if (clip.top < fixedHeight && clip.right > fixedWidth && clip.left < extent.right)
        dc.FillSolidRect({fixedWidth - 1, clip.top, extent.right, fixedHeight}, m_fixedBkColour);
    CRect cells;
    if (cells.IntersectRect(extent, clip)) {
        cells.left = std::max(cells.left, fixedWidth);
        cells.top = std::max(cells.top, fixedHeight);
        dc.FillSolidRect(cells, m_textBkColour);
    }
    if (extent.right < clip.right)
        dc.FillSolidRect({extent.right, clip.top, clip.right, clip.bottom}, m_bkColour);
    if (extent.bottom < clip.bottom && clip.left < extent.right)
        dc.FillSolidRect({clip.left, extent.bottom, extent.right, clip.bottom}, m_bkColour);
}

// Cells before the clip are stepped over and those behind it end the walk.
void CGridCtrl::DrawCells(CDC& dc, const CRect& clip, const Pass& pass) {
    int top = pass.corner.y;
    for (int row = pass.cells.minRow; row <= pass.cells.maxRow && top <= clip.bottom; ++row) {
        const int bottom = top + m_rows.SizeAt(row) - 1;
        int left = pass.corner.x;
        for (int col = pass.cells.minCol;
             bottom >= clip.top && col <= pass.cells.maxCol && left <= clip.right; ++col) {
            const CRect rect(left, top, left + m_columns.SizeAt(col) - 1, bottom);
            if (rect.right >= clip.left)
                pass.fixed ? PaintFixedCell(&dc, row, col, rect) : PaintCell(&dc, row, col, rect);
            left = rect.right + 1;
        }
        top = bottom + 1;
    }
}

bool CGridCtrl::HasLines(int lines) const {
    return m_gridLines == GridLinesBoth || m_gridLines == lines;
}

// The usual light grey would be glaring on a dark desktop.
COLORREF CGridCtrl::LineColor() const {
    const bool isUsual = m_gridColour == kUsualLineColor;
    return isUsual && grid::IsDark(m_textBkColour) ? grid::Softened(m_gridColour, m_textBkColour)
                                                   : m_gridColour;
}

void CGridCtrl::DrawGridLines(CDC& dc, const CGridRange& visible, const CRect& extent) const {
    CPen pen(PS_SOLID, 1, LineColor());
    CPen* const former = dc.SelectObject(&pen);
    const int fixedHeight = GetFixedRowsHeight();
    const int fixedWidth = GetFixedColumnsWidth();
    int x = fixedWidth;
    for (int col = visible.minCol; HasLines(GridLinesVert) && col <= visible.maxCol; ++col) {
        x += m_columns.SizeAt(col);
        dc.MoveTo(x - 1, fixedHeight);
        dc.LineTo(x - 1, extent.bottom);
    }
    int y = fixedHeight;
    for (int row = visible.minRow; HasLines(GridLinesHorz) && row <= visible.maxRow; ++row) {
        y += m_rows.SizeAt(row);
        dc.MoveTo(fixedWidth, y - 1);
        dc.LineTo(extent.right, y - 1);
    }
    dc.SelectObject(former);
}

BOOL CGridCtrl::RedrawCell(int row, int col, CDC* pDC) {
    CRect rect;
    if (!m_allowDraw || !IsCellVisible(row, col) || !GetCellRect(row, col, &rect))
        return FALSE;
    if (pDC != nullptr)
        return DrawSingleCell(*pDC, row, col, rect);
    CClientDC dc(this);
    if (dc.CanDraw())
        return DrawSingleCell(dc, row, col, rect);
    rect.InflateRect(0, 0, 1, 1);
    InvalidateRect(&rect);
    return TRUE;
}

BOOL CGridCtrl::DrawSingleCell(CDC& dc, int row, int col, const CRect& rect) {
    if (IsCellFixed(row, col))
        return PaintFixedCell(&dc, row, col, rect);
    const BOOL painted = PaintCell(&dc, row, col, rect);
    CPen pen(PS_SOLID, 1, LineColor());
    CPen* const former = dc.SelectObject(&pen);
    if (HasLines(GridLinesHorz)) {
        dc.MoveTo(rect.left, rect.bottom);
        dc.LineTo(rect.right + 1, rect.bottom);
    }
    if (HasLines(GridLinesVert)) {
        dc.MoveTo(rect.right, rect.top);
        dc.LineTo(rect.right, rect.bottom + 1);
    }
    dc.SelectObject(former);
    return painted;
}

BOOL CGridCtrl::RedrawRow(int row) {
    return RedrawCells({row, 0, row, GetColumnCount() - 1});
}

BOOL CGridCtrl::RedrawColumn(int col) {
    return RedrawCells({0, col, GetRowCount() - 1, col});
}

// On one device context. What is out of view cannot be drawn, so only the cells that show are tried.
BOOL CGridCtrl::RedrawCells(const CGridRange& cells) {
    if (!IsDrawn() || !IsValid(cells))
        return FALSE;
    const CGridRange visible = GetVisibleScrollRange();
    const auto shows = [](int index, int fixedCount, int first, int last) {
        return index < fixedCount || (index >= first && index <= last);
    };
    CClientDC dc(this);
    CDC* const drawing = dc.CanDraw() ? &dc : nullptr;
    BOOL all = TRUE;
    for (int row = cells.minRow; row <= cells.maxRow; ++row) {
        const bool rowShows = shows(row, m_fixedRowCount, visible.minRow, visible.maxRow);
        for (int col = cells.minCol; rowShows && col <= cells.maxCol; ++col)
            all = RedrawCell(row, col, drawing) && all;
        if (rowShows)
            continue;
        all = FALSE;
        if (row > visible.maxRow)
            break;
        row = std::max(row, std::min(visible.minRow, cells.maxRow + 1) - 1);
    }
    return all;
}

BOOL CGridCtrl::InvalidateCell(CGridPos cell) {
    CRect rect;
    if (!IsDrawn() || !IsCellVisible(cell.row, cell.col) || !GetCellRect(cell, &rect))
        return FALSE;
    rect.InflateRect(0, 0, 1, 1);
    InvalidateRect(&rect);
    return TRUE;
}

}  // namespace kortavin
