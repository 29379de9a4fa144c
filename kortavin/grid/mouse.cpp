#include <algorithm>
#include <utility>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

// What the mouse does.

using window::PointerShape;

namespace {

constexpr UINT_PTR kAutoScrollTimer = 513;
constexpr int kBandWidth = 2;  // of the line that is dragged with a border

}  // namespace

void CGridCtrl::SetMouseMode(GridMouseMode mode) {
    m_mouseMode = mode;
    const bool onColumn = mode == MouseOverColumnBorder || mode == MouseResizingColumn;
    const bool onRow = mode == MouseOverRowBorder || mode == MouseResizingRow;
    SetCursor(onColumn ? PointerShape::SizeHorizontal
              : onRow  ? PointerShape::SizeVertical
                       : PointerShape::Arrow);
}

GridMouseMode CGridCtrl::BorderModeAt(CPoint point) const {
    if (m_allowColumnResize && IsOnColumnBorder(point))
        return MouseOverColumnBorder;
    if (m_allowRowResize && IsOnRowBorder(point))
        return MouseOverRowBorder;
    return MouseIdle;
}

bool CGridCtrl::IsOverBorder() const {
    return m_mouseMode == MouseOverColumnBorder || m_mouseMode == MouseOverRowBorder;
}

void CGridCtrl::OnLButtonDown(UINT nFlags, CPoint point) {
    const Life life(*this);
    m_leftClickDownPoint = point;
    m_leftClickDownCell = HitTestCell(point);
    const CGridPos cell = m_leftClickDownCell;
    if (!IsValid(cell))
        return;
    m_selectionStartCell = (nFlags & MK_SHIFT) != 0 ? m_focusCell : cell;
    const bool hadFocus = GetFocus() == this;
    SetFocus();  // which ends an open edit
    if (!life || !IsValid(cell))
        return;
    if (cell == m_focusCell) {
        m_mouseMode = MouseArmedEdit;
        return;
    }
    if (!IsOverBorder()) {
        SetFocusCell(-1, -1);
        if (life)
            SetFocusCell(std::max(cell.row, m_fixedRowCount), std::max(cell.col, m_fixedColCount));
        if (!life)
            return;
    }
    if (m_allowDragPrepare && hadFocus && (GetItemState(cell.row, cell.col) & GridStateSelected) != 0) {
        m_mouseMode = MouseArmedDrag;
        return;
    }
    StartDrag(nFlags, point, cell);
}

void CGridCtrl::StartDrag(UINT flags, CPoint point, CGridPos cell) {
    m_lastMousePoint = point;
    SetCapture();
    if (m_mouseMode == MouseIdle)
        if (const GridMouseMode mode = BorderModeAt(point); mode != MouseIdle)
            SetMouseMode(mode);
    if (m_mouseMode == MouseOverColumnBorder)
        StartResizing(MouseResizingColumn, point);
    else if (m_mouseMode == MouseOverRowBorder)
        StartResizing(MouseResizingRow, point);
    else
        StartSelecting(flags, cell);
}

// A press near the start of a column or row is meant for the border of the one before.
void CGridCtrl::StartResizing(GridMouseMode mode, CPoint point) {
    const bool isColumn = mode == MouseResizingColumn;
    const auto startOf = [&](int index) {
        return isColumn ? ColumnView().StartOf(index) : RowView().StartOf(index);
    };
    int& index = isColumn ? m_leftClickDownCell.col : m_leftClickDownCell.row;
    const int position = isColumn ? point.x : point.y;
    auto start = startOf(index);
    if (start && position - *start <= m_resizeCaptureRange)
        start = startOf(--index);
    if (!start)
        return;
    SetMouseMode(mode);
    ShowBandAt(point);
    CRect area;
    GetClientRect(&area);
    (isColumn ? area.left : area.top) = *start;
    ConfinePointer(area);
}

void CGridCtrl::StartSelecting(UINT flags, CGridPos cell) {
    m_draggedTo = CGridPos();
    m_prevSelectedCells.clear();
    if ((flags & MK_CONTROL) != 0)
        m_prevSelectedCells = m_selectedCells;
    const Life life(*this);
    if (!IsCellFixed(cell.row, cell.col)) {
        m_mouseMode = m_listMode ? MouseSelectingRows : MouseSelectingCells;
        ExtendSelection(cell);
    } else if (cell.row >= m_fixedRowCount) {
        OnRowHeadingClick(cell);
    } else {
        OnColumnHeadingClick(cell);
    }
    if (life)
        m_timerId = SetTimer(kAutoScrollTimer, static_cast<UINT>(m_timerInterval));
}

void CGridCtrl::OnRowHeadingClick(CGridPos& cell) {
    if (!IsValid(cell))
        return;
    m_mouseMode = cell.row >= m_fixedRowCount ? MouseSelectingRows : MouseSelectingAll;
    ExtendSelection(cell);
}

void CGridCtrl::OnColumnHeadingClick(CGridPos& cell) {
    if (!IsValid(cell))
        return;
    if (!m_listMode) {
        m_mouseMode = cell.col >= m_fixedColCount ? MouseSelectingColumns : MouseSelectingAll;
        ExtendSelection(cell);
    } else if (m_sortOnClick) {
        const Life life(*this);
        SetCursor(PointerShape::Wait);
        m_sortAscending = cell.col != m_sortColumn || !m_sortAscending;
        m_sortColumn = cell.col;
        SortRowsByText(m_sortColumn, m_sortAscending);
        if (!life)
            return;
        SetCursor(PointerShape::Arrow);
        Invalidate();
    }
}

// The line that is dragged with a border, drawn by inverting what is below it. Where a toolkit does not draw
// outside of a paint, the paint inverts it.
void CGridCtrl::ShowBand(const std::optional<CRect>& band) {
    CClientDC dc(this);
    const std::optional<CRect> both[] = {std::exchange(m_band, band), band};
    for (const auto& changed : both) {
        if (changed && dc.CanDraw())
            dc.InvertRect(*changed);
        else if (changed)
            InvalidateRect(&*changed);
    }
}

void CGridCtrl::ShowBandAt(CPoint point) {
    CRect band;
    GetClientRect(&band);
    if (m_mouseMode == MouseResizingColumn)
        band = CRect(point.x, band.top, point.x + kBandWidth, band.bottom);
    else
        band = CRect(band.left, point.y, band.right, point.y + kBandWidth);
    ShowBand(band);
}

void CGridCtrl::OnMouseMove(UINT nFlags, CPoint point) {
    CRect client;
    GetClientRect(&client);
    if (!client.PtInRect(point))
        return;
    if ((nFlags & MK_LBUTTON) != 0 && m_mouseMode != MouseIdle && !IsOverBorder()) {
        const Life life(*this);
        if (IsValid(m_leftClickDownCell))
            DragTo(point);
        if (!life)
            return;
    } else if (const GridMouseMode mode = BorderModeAt(point); mode != m_mouseMode) {
        if (m_band)
            ShowBand(std::nullopt);  // the capture was lost while a border was dragged
        SetMouseMode(mode);
    }
    m_lastMousePoint = point;
}

void CGridCtrl::DragTo(CPoint point) {
    switch (m_mouseMode) {
        case MouseSelectingColumns:
        case MouseSelectingRows:
        case MouseSelectingCells:
            if (const CGridPos cell = HitTestCell(point);
                IsValid(cell) && cell != m_focusCell && cell != m_draggedTo) {
                m_draggedTo = cell;
                ExtendSelection(cell);
                if (!IsCellFixed(cell.row, cell.col))
                    SetFocusCell(cell);
            }
            break;
        case MouseResizingColumn:
        case MouseResizingRow:
            ShowBandAt(point);
            break;
        default:
            break;
    }
}

void CGridCtrl::StopAutoScroll() {
    if (m_timerId != 0)
        KillTimer(m_timerId);
    m_timerId = 0;
}

void CGridCtrl::OnCaptureChanged(CWnd*) {
    StopAutoScroll();
}

void CGridCtrl::OnLButtonUp(UINT, CPoint point) {
    const Life life(*this);
    Default();
    if (!life)
        return;
    ReleasePointer();
    if (GetCapture() == this) {
        ReleaseCapture();
        StopAutoScroll();
    }
    EndDrag(point);
    if (!life)
        return;
    SetMouseMode(MouseIdle);
    if (CWnd* const owner = GetOwner(); IsValid(m_leftClickDownCell) && owner != nullptr)
        owner->PostMessage(WM_COMMAND, MakeWParam(static_cast<WORD>(GetDlgCtrlID()), BN_CLICKED),
                           reinterpret_cast<LPARAM>(m_hWnd));
}

void CGridCtrl::EndDrag(CPoint point) {
    switch (m_mouseMode) {
        case MouseArmedEdit:
            StartCellEdit(m_focusCell.row, m_focusCell.col, VK_LBUTTON);
            break;
        case MouseArmedDrag:
            ClearSelection();
            break;
        case MouseResizingColumn:
        case MouseResizingRow:
            EndResizing(point);
            break;
        default:
            break;
    }
}

void CGridCtrl::EndResizing(CPoint point) {
    ShowBand(std::nullopt);
    if (point != m_leftClickDownPoint) {
        if (m_mouseMode == MouseResizingColumn) {
            if (const auto start = ColumnView().StartOf(m_leftClickDownCell.col))
                SetColumnWidth(m_leftClickDownCell.col, point.x - *start);
        } else if (const auto start = RowView().StartOf(m_leftClickDownCell.row)) {
            SetRowHeight(m_leftClickDownCell.row, point.y - *start);
        }
    }
    Invalidate();
    UpdateScrollBars();
}

void CGridCtrl::OnLButtonDblClk(UINT, CPoint point) {
    const Life life(*this);
    // The release before put the mode back, and the pointer need not have moved since.
    if (m_mouseMode == MouseIdle)
        SetMouseMode(BorderModeAt(point));
    if (IsOverBorder())
        FitAtBorder(point);
    else if (m_mouseMode == MouseIdle)
        EditByDoubleClick();
    if (life)
        Default();
}

// The border that was pressed, as in StartResizing.
void CGridCtrl::FitAtBorder(CPoint point) {
    const bool isColumn = m_mouseMode == MouseOverColumnBorder;
    const CGridPos cell = HitTestCell(point);
    int index = isColumn ? cell.col : cell.row;
    const auto start = isColumn ? ColumnView().StartOf(index) : RowView().StartOf(index);
    if (start && (isColumn ? point.x : point.y) - *start <= m_resizeCaptureRange)
        --index;
    isColumn ? FitColumnToText(index) : FitRowToText(index);
    Invalidate();
}

void CGridCtrl::EditByDoubleClick() {
    const CGridPos cell = m_leftClickDownCell;
    if (!IsValid(cell))
        return;
    if (!IsCellFixed(cell.row, cell.col))
        StartCellEdit(m_focusCell.row, m_focusCell.col, VK_LBUTTON);
    else if (m_listMode && cell.row >= m_fixedRowCount)
        StartCellEdit(cell.row, cell.col, VK_LBUTTON);
}

// The pointer outside the window scrolls towards it and selects what comes into view. Since a key-down moves
// the focus cell, it does the scrolling.
void CGridCtrl::OnTimer(UINT_PTR nIDEvent) {
    if (nIDEvent != kAutoScrollTimer) {
        Default();
        return;
    }
    if (GetCapture() != this) {
        StopAutoScroll();
        return;
    }
    const Life life(*this);
    CRect client;
    GetClientRect(&client);
    const int fixedHeight = GetFixedRowsHeight();
    const int fixedWidth = GetFixedColumnsWidth();
    CPoint pointer = PointerInClient();
    const auto inRow = [&](int y) { return CPoint(std::clamp(pointer.x, client.left, client.right), y); };
    if (pointer.y > client.bottom)
        ScrollSelecting(VK_DOWN, inRow(client.bottom));
    else if (pointer.y < fixedHeight)
        ScrollSelecting(VK_UP, inRow(fixedHeight + 1));
    if (!life)
        return;
    pointer = PointerInClient();
    const auto inColumn = [&](int x) { return CPoint(x, std::clamp(pointer.y, client.top, client.bottom)); };
    if (pointer.x > client.right)
        ScrollSelecting(VK_RIGHT, inColumn(client.right));
    else if (pointer.x < fixedWidth)
        ScrollSelecting(VK_LEFT, inColumn(fixedWidth + 1));
}

CPoint CGridCtrl::PointerInClient() const {
    CPoint pointer = window::RequireToolkit().PointerPosition();
    ScreenToClient(&pointer);
    return pointer;
}

// Where the rows or columns end before the window does, the focus cell shows how far the selection goes.
void CGridCtrl::ScrollSelecting(UINT key, CPoint point) {
    const Life life(*this);
    m_draggedTo = CGridPos();
    SendMessage(WM_KEYDOWN, key, 1);
    if (!life)
        return;
    const CGridPos cell = HitTestCell(point);
    ExtendSelection({cell.row >= 0 ? cell.row : m_focusCell.row, cell.col >= 0 ? cell.col : m_focusCell.col});
}

// Posted, so that the requests are carried out after the wheel's message.
BOOL CGridCtrl::OnMouseWheel(UINT, SHORT zDelta, CPoint) {
    const bool byPage = m_mouseWheelLines == 0xFFFFFFFF;
    const LONGLONG lines = byPage ? zDelta / WHEEL_DELTA : LONGLONG{zDelta} * m_mouseWheelLines / WHEEL_DELTA;
    const UINT request = lines > 0 ? (byPage ? SB_PAGEUP : SB_LINEUP) : (byPage ? SB_PAGEDOWN : SB_LINEDOWN);
    const LONGLONG most = GetTotalHeight();  // more requests than pixels have no effect
    for (LONGLONG i = std::min(std::abs(lines), most); i > 0; --i)
        PostMessage(WM_VSCROLL, MakeWParam(static_cast<WORD>(request), 0));
    return static_cast<BOOL>(Default());
}

BOOL CGridCtrl::OnSetCursor(CWnd*, UINT nHitTest, UINT) {
    if (nHitTest != HTCLIENT)
        return static_cast<BOOL>(Default());
    SetCursor(m_mouseMode == MouseOverColumnBorder ? PointerShape::SizeHorizontal
              : m_mouseMode == MouseOverRowBorder  ? PointerShape::SizeVertical
                                                   : PointerShape::Arrow);
    return TRUE;
}

}  // namespace kortavin
