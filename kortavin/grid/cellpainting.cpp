#include <algorithm>

#include "kortavin/grid/darkness.h"
#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/metrics.h"

namespace kortavin {

// The picture of one cell. Rectangles have their last pixels as right and bottom.

namespace {

// Puts a context back as it was.
class SavedState {
  public:
    explicit SavedState(CDC& dc) : m_dc(dc), m_level(dc.SaveDC()) {}
    ~SavedState() { m_dc.RestoreDC(m_level); }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;

  private:
    CDC& m_dc;
    int m_level;
};

// The same rectangle with exclusive right and bottom, which covers the pixels of the grid lines.
CRect Widened(CRect rect) {
    rect.InflateRect(0, 0, 1, 1);
    return rect;
}

COLORREF OwnOr(COLORREF own, COLORREF fallback) {
    return own == kGridDefaultColor ? fallback : own;
}

void DrawFrame(CDC& dc, const CRect& rect, COLORREF color) {
    CPen pen(PS_SOLID, 1, color);
    CPen* const former = dc.SelectObject(&pen);
    dc.SelectStockObject(NULL_BRUSH);
    dc.Rectangle(rect);
    dc.SelectObject(former);
}

// A line in each of two sides that meet in a corner, from the upper right one on.
void DrawRaisedSides(CDC& dc, const CRect& rect) {
    CPen light(PS_SOLID, 1, GetSysColor(COLOR_3DHIGHLIGHT));
    CPen dark(PS_SOLID, 1, GetSysColor(COLOR_3DDKSHADOW));
    CPen* const former = dc.SelectObject(&light);
    dc.MoveTo(rect.right, rect.top);
    dc.LineTo(rect.left, rect.top);
    dc.LineTo(rect.left, rect.bottom);
    dc.SelectObject(&dark);
    dc.MoveTo(rect.right, rect.top);
    dc.LineTo(rect.right, rect.bottom);
    dc.LineTo(rect.left, rect.bottom);
    dc.SelectObject(former);
}

}  // namespace

BOOL CGridCtrl::PaintCell(CDC* pDC, int row, int col, CRect rect) {
    const CGridCell* const cell = CellAt(row, col);
    if (!m_allowDraw || cell == nullptr)
        return FALSE;
    CDC& dc = *pDC;
    const SavedState saved(dc);
    dc.SetBkMode(TRANSPARENT);
    const bool hasFocus = (cell->state & GridStateFocused) != 0;
    const bool isSelected = !hasFocus && (cell->state & GridStateSelected) != 0;
    const COLORREF ground = isSelected ? GetSysColor(COLOR_HIGHLIGHT) : OwnOr(cell->bkColour, m_textBkColour);
    const COLORREF text = isSelected ? GetSysColor(COLOR_HIGHLIGHTTEXT) : OwnOr(cell->fgColour, m_textColour);
    dc.FillSolidRect(Widened(rect), ground);
    dc.SetTextColor(text);
    if (hasFocus || (cell->state & GridStateDropHilited) != 0)
        DrawFrame(dc, rect, grid::IsDark(ground) ? text : RGB(0, 0, 0));
    if (hasFocus)
        rect.DeflateRect(1, 1);
    DrawCellContent(dc, row, col, rect, FontFor(row, col, false));
    return TRUE;
}

// Kept, since making a font takes longer than drawing a cell.
CFont& CGridCtrl::FontFor(int row, int col, bool semiBold) {
    const CGridCell* const cell = CellAt(row, col);
    if (cell == nullptr || cell->font == nullptr)
        return semiBold ? m_boldFont : m_font;
    CFont& font = m_cellFonts[{cell->font, semiBold}];
    if (font.GetNative() == nullptr) {
        LOGFONT description = *cell->font;
        if (semiBold)
            description.lfWeight = FW_SEMIBOLD;
        font = CFont(description);
    }
    return font;
}

CSize CGridCtrl::ImageSizeOf(int row, int col) const {
    const int image = GetItemImage(row, col);
    const bool exists = m_imageList != nullptr && image >= 0 && image < m_imageList->GetImageCount();
    return exists ? m_imageList->GetImageSize(image) : CSize();
}

// The picture at the left, the text as the cell's format says in what is left of the rectangle.
void CGridCtrl::DrawCellContent(CDC& dc, int row, int col, CRect rect, CFont& font) {
    rect.DeflateRect(m_margin, 0);
    if (const CSize size = ImageSizeOf(row, col); size.cx > 0) {
        m_imageList->Draw(&dc, GetItemImage(row, col), rect.TopLeft());
        rect.left += size.cx + m_margin;
    }
    CFont* const former = dc.SelectObject(&font);
    dc.DrawText(GetItemText(row, col).View(), &rect, GetItemFormat(row, col));
    dc.SelectObject(former);
}

bool CGridCtrl::IsInLineWithFocus(int row, int col) const {
    return IsValid(m_focusCell) && (m_focusCell.row == row || m_focusCell.col == col);
}

BOOL CGridCtrl::PaintFixedCell(CDC* pDC, int row, int col, CRect rect) {
    const CGridCell* const cell = CellAt(row, col);
    if (!m_allowDraw || cell == nullptr)
        return FALSE;
    CDC& dc = *pDC;
    const SavedState saved(dc);
    dc.FillSolidRect(Widened(rect), OwnOr(cell->bkColour, m_fixedBkColour));
    dc.SetTextColor(OwnOr(cell->fgColour, m_fixedTextColour));
    const bool isPressed = IsInLineWithFocus(row, col);
    if (isPressed)
        dc.DrawEdge(Widened(rect), BDR_SUNKENINNER, BF_RECT);
    else
        DrawRaisedSides(dc, rect);
    rect.DeflateRect(1, 1);
    dc.SetBkMode(TRANSPARENT);
    DrawCellContent(dc, row, col, rect, FontFor(row, col, isPressed));
    return TRUE;
}

}  // namespace kortavin
