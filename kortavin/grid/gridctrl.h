#pragma once

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "kortavin/grid/geometry.h"
#include "kortavin/grid/gridcell.h"
#include "kortavin/window/accessibletable.h"
#include "kortavin/window/imagelist.h"
#include "kortavin/window/wnd.h"

namespace kortavin {

class CDataExchange;

// The window class that dialog templates name for grids.
inline constexpr char kGridWindowClass[] = "VESKARDOGridCtrl";

// The control id of every cell editor.
inline constexpr int GridEditorControlId = 8;

// What the mouse is doing.
enum GridMouseMode {
    MouseIdle = 0,
    MouseSelectingAll = 1,
    MouseSelectingColumns = 2,
    MouseSelectingRows = 3,
    MouseSelectingCells = 4,
    MouseOverRowBorder = 6,
    MouseResizingRow = 7,
    MouseOverColumnBorder = 8,
    MouseResizingColumn = 9,
    MouseArmedEdit = 10,  // the button went down on the focus cell; editing opens on release
    MouseArmedDrag = 11,  // it went down on a selected cell; the selection is cleared on release
};

// A table of texts: fixed rows at the top and fixed columns at the left, which do not scroll, and cells that
// can be selected, edited in place, sorted and sized. The model needs no window: without one nothing is
// painted or scrolled, and everything else works. Rows and columns are counted from 0 with the fixed ones.
// Sizes and positions are pixels. Operations with a row or column that does not exist do nothing and answer
// FALSE, 0, -1 or an empty text. Texts are GBK.
class KORTAVIN_API CGridCtrl : public CWnd {
  public:
    static const CRuntimeClass classCGridCtrl;

    // Colours are the system's, the font is the message-box font. CResourceException when the window class
    // cannot be registered.
    explicit CGridCtrl(int nRows = 0, int nCols = 0, int nFixedRows = 0, int nFixedCols = 0);
    ~CGridCtrl() override;
    const CRuntimeClass* GetRuntimeClass() const override;
    const window::MessageMap* GetMessageMap() const override;

    // Makes the window. FALSE when it cannot be made; a lack of memory is shown before.
    BOOL Create(const CRect& rect, CWnd* pParent, UINT nID,
                DWORD dwStyle = WS_CHILD | WS_BORDER | WS_TABSTOP | WS_VISIBLE);

    // Counts. Shrinking below the fixed count lowers that; raising a fixed count above the count raises
    // the count. New rows and columns have the default sizes. FALSE for a negative count.
    int GetRowCount() const { return m_rows.Count(); }
    int GetColumnCount() const { return m_columns.Count(); }
    int GetFixedRowCount() const { return m_fixedRowCount; }
    int GetFixedColumnCount() const { return m_fixedColCount; }
    BOOL SetRowCount(int n);
    BOOL SetColumnCount(int n);
    BOOL SetFixedRowCount(int n);
    BOOL SetFixedColumnCount(int n);
    // At an index, or at the end (-1); the heading (null: empty) goes into the first cell, whose extent is
    // the new size. The column's cells get the format. Answers the index, -1 when it is outside. Selection
    // and focus are cleared.
    int InsertRow(const char* heading, int nRow = -1);
    int InsertColumn(const char* heading, UINT nFormat, int nCol = -1);
    // Selection and focus are cleared; nothing is repainted.
    BOOL DeleteRow(int nRow);
    BOOL DeleteColumn(int nCol);
    BOOL DeleteBodyRows();  // all that are not fixed
    BOOL DeleteAllItems();  // the grid is empty afterwards

    // Cells. Setters answer FALSE for a cell that does not exist; getters 0, -1 (image), empty.
    BOOL SetItem(const GridItem* pItem);  // what the mask names; the state is stored as it is
    BOOL GetItem(GridItem* pItem) const;  // fills what the mask names
    BOOL SetItemText(int row, int col, const char* text);
    virtual CString GetItemText(int row, int col) const;
    BOOL SetItemData(int row, int col, LPARAM data);
    LPARAM GetItemData(int row, int col) const;
    BOOL SetItemImage(int row, int col, int image);
    int GetItemImage(int row, int col) const;
    BOOL SetItemState(int row, int col, UINT state);  // keeps the selection in step
    UINT GetItemState(int row, int col) const;
    BOOL SetItemFormat(int row, int col, UINT format);
    UINT GetItemFormat(int row, int col) const;
    BOOL SetCellBackColor(int row, int col, COLORREF color);  // kGridDefaultColor: the grid's
    COLORREF GetCellBackColor(int row, int col) const;
    BOOL SetCellTextColor(int row, int col, COLORREF color);
    COLORREF GetCellTextColor(int row, int col) const;
    BOOL SetItemFont(int row, int col, const LOGFONT* font);  // FALSE for null
    const LOGFONT* GetItemFont(int row, int col) const;       // the grid's for a cell without its own

    BOOL IsValid(int row, int col) const;
    BOOL IsValid(const CGridPos& cell) const { return IsValid(cell.row, cell.col); }
    BOOL IsValid(const CGridRange& range) const;
    BOOL IsCellFixed(int row, int col) const { return row < m_fixedRowCount || col < m_fixedColCount; }
    BOOL IsCellEditable(int row, int col) const;
    // The grid's own flag, or a cell's with a row and column of 1 or more. Setting a cell's sets the grid's;
    // clearing the grid's clears all.
    void SetModified(BOOL bModified = TRUE, int row = -1, int col = -1);
    BOOL GetModified(int row = -1, int col = -1) const;

    // Sizes
    int GetRowHeight(int row) const;         // -1 outside
    int GetColumnWidth(int col) const;       // -1 outside
    BOOL SetRowHeight(int row, int height);  // FALSE for a negative size too
    BOOL SetColumnWidth(int col, int width);
    int GetFixedRowsHeight() const;
    int GetFixedColumnsWidth() const;
    LONGLONG GetTotalHeight() const { return m_rows.Total(); }
    LONGLONG GetTotalWidth() const { return m_columns.Total(); }
    int GetDefaultRowHeight() const { return m_defaultRowHeight; }
    int GetDefaultColumnWidth() const { return m_defaultColWidth; }
    int GetMargin() const { return m_margin; }
    // Of a text in the grid's font (semi-bold if asked) with a margin on every side; nothing without a
    // window.
    CSize GetTextExtent(const char* text, BOOL bBold) const;

    // Appearance and behaviour
    void SetTextColor(COLORREF color);
    void SetTextBkColor(COLORREF color);
    void SetBkColor(COLORREF color);
    void SetFixedCellTextColor(COLORREF color);
    void SetFixedCellBkColor(COLORREF color);
    void SetGridColor(COLORREF color);
    COLORREF GetTextColor() const { return m_textColour; }
    COLORREF GetTextBkColor() const { return m_textBkColour; }
    COLORREF GetBkColor() const { return m_bkColour; }
    COLORREF GetFixedCellTextColor() const { return m_fixedTextColour; }
    COLORREF GetFixedCellBkColor() const { return m_fixedBkColour; }
    COLORREF GetGridColor() const { return m_gridColour; }
    void SetGridLines(int lines);
    int GetGridLines() const { return m_gridLines; }
    // Cells may be edited, but for those that are GridStateReadOnly.
    void SetEditable(BOOL on) { m_editable = on; }
    BOOL IsEditable() const { return m_editable; }
    // Whole rows are selected, and a click on a column heading sorts by it (SetSortOnClick).
    void SetListMode(BOOL on);
    BOOL GetListMode() const { return m_listMode; }
    // In list mode one row is selected at a time; whatever the mode, Ctrl keeps no former selection.
    void SetSingleRowSelection(BOOL on) { m_singleRowSelection = on; }
    BOOL GetSingleRowSelection() const { return m_singleRowSelection; }
    // While FALSE no selection operation has an effect.
    void EnableSelection(BOOL on) { m_enableSelection = on; }
    BOOL IsSelectionEnabled() const { return m_enableSelection; }
    void SetSortOnClick(BOOL on) { m_sortOnClick = on; }
    BOOL GetSortOnClick() const { return m_sortOnClick; }
    // Tab moves between cells; else it leaves the grid, as Ctrl+Tab always does.
    void SetHandleTabKey(BOOL on) { m_handleTabKey = on; }
    BOOL GetHandleTabKey() const { return m_handleTabKey; }
    // A press on a selected cell of a grid that has the focus starts no selection; its release clears the
    // selection.
    void SetDragPrepare(BOOL on) { m_allowDragPrepare = on; }
    BOOL GetDragPrepare() const { return m_allowDragPrepare; }
    // Whether borders in the headings can be dragged.
    void SetRowResize(BOOL on) { m_allowRowResize = on; }
    BOOL GetRowResize() const { return m_allowRowResize; }
    void SetColumnResize(BOOL on) { m_allowColumnResize = on; }
    BOOL GetColumnResize() const { return m_allowColumnResize; }
    void SetImageList(CImageList* list);  // not owned; null: none
    CImageList* GetImageList() const { return m_imageList; }
    const LOGFONT& GetLogFont() const { return m_logFont; }
    UINT GetMouseWheelLines() const { return m_mouseWheelLines; }  // 0xFFFFFFFF: one page per notch
    // Painting and scroll bars are suspended while FALSE; switching on repaints everything.
    void SetRedraw(BOOL bAllowDraw, BOOL bResetScrollBars = FALSE);

    // Focus and selection
    CGridPos SetFocusCell(CGridPos cell);  // answers the former
    CGridPos SetFocusCell(int row, int col) { return SetFocusCell(CGridPos(row, col)); }
    CGridPos GetFocusCell() const { return m_focusCell; }
    void SelectRange(const CGridRange& range, BOOL bForceRepaint = FALSE);
    void SelectRange(int minRow, int minCol, int maxRow, int maxCol, BOOL bForceRepaint = FALSE);
    // What holds all selected cells; (row count, column count, -1, -1) when none is.
    CGridRange GetSelectionBounds() const;
    CGridRange GetWholeRange() const { return {0, 0, GetRowCount() - 1, GetColumnCount() - 1}; }
    void ClearSelection();  // and the focus
    void SelectAll();
    void SelectColumnSpan(CGridPos cell);  // from the anchor to the cell
    void SelectRowSpan(CGridPos cell);
    void SelectCellSpan(CGridPos cell);
    void ExtendSelection(CGridPos cell);  // as the mouse mode says
    std::size_t GetSelectedCount() const { return m_selectedCells.size(); }

    // Geometry
    // The first row and column behind the fixed ones that show: they begin at or behind the scroll position.
    CGridPos GetFirstScrollCell() const;
    // From there to the last ones that show, cut ones included; pRect receives the extent of all cells that
    // are drawn, with exclusive right and bottom. The other counts whole cells only and may be invalid.
    CGridRange GetVisibleScrollRange(CRect* pRect = nullptr) const;
    CGridRange GetFullyVisibleScrollRange() const;
    // FALSE for cells that are scrolled out at the top or left; those behind the client area have a place.
    BOOL GetCellTopLeft(int row, int col, CPoint* p) const;
    BOOL GetCellRect(int row, int col, CRect* r) const;  // right and bottom are the last pixels
    BOOL GetCellRect(const CGridPos& cell, CRect* r) const { return GetCellRect(cell.row, cell.col, r); }
    // Row or column -1 where there is none, and on fixed ones that are not allowed. A border belongs to the
    // cell behind it.
    CGridPos HitTestCell(CPoint pt, BOOL bAllowFixedCellCheck = TRUE) const;
    BOOL IsCellVisible(int row, int col) const;  // at least in part; FALSE without a window
    // Within 3 pixels of a border that can be dragged, in the fixed columns (rows).
    BOOL IsOnRowBorder(CPoint pt) const;
    BOOL IsOnColumnBorder(CPoint pt) const;
    // Sets pages and ranges by the sizes. Called by the grid whenever these change.
    void UpdateScrollBars();
    // In pixels of what scrolls; with bGetTrackPos, of the thumb while it is dragged.
    int GetScrollPosition(int bar, BOOL bGetTrackPos = FALSE) const;
    void SetScrollPosition(int bar, int pos, BOOL bRedraw = TRUE);
    void EnsureVisible(int row, int col);  // nothing for a cell that does not exist

    // Painting
    // At once, on the given context or on the grid's own; where the toolkit draws in paints only, the cell is
    // invalidated. FALSE for cells that do not show; of a row or column, when one of its cells does not.
    BOOL RedrawCell(int row, int col, CDC* pDC = nullptr);
    BOOL RedrawRow(int row);
    BOOL RedrawColumn(int col);
    BOOL InvalidateCell(CGridPos cell);

    // Fitting and sorting
    // To the largest extent of the cells (MeasureCell). FALSE, and nothing changes, without a window.
    BOOL FitRowToText(int row);
    BOOL FitColumnToText(int col);
    void FitRowsToText();
    void FitColumnsToText();
    void FitToText();
    // All sizes get the same more, or less, so that together they fill the client area.
    void StretchRowsToFit();
    void StretchColumnsToFit();
    void StretchToFit();
    // Rows behind the fixed ones, by one column's texts (in the order of their bytes) or data. Selection and
    // focus are cleared. FALSE for a column that does not exist and for fewer than two rows. Compare answers
    // below 0, 0 or above 0.
    using Compare = int (*)(LPARAM item1, LPARAM item2, LPARAM data);
    BOOL SortRowsByText(int col, BOOL bAscending);
    BOOL SortRowsByData(Compare compare, int col, BOOL bAscending, LPARAM data);

    // Sends a GridNotify to the owner and answers what that answers; 0 without one.
    LRESULT NotifyParent(int row, int col, int code);

    // Registers the window class, once a process.
    static void RegisterGridClass();
    // Lines to scroll for a notch of the wheel, as the desktop is set; 0xFFFFFFFF: a page. 3 when not known.
    static UINT ReadWheelScrollLines();

    // What holds of every grid at all times; empty when it does, else what does not. For tests and debugging.
    CString CheckConsistency() const;

    // What a derived class may change. nChar is what started an edit: a character, VK_LBUTTON, or the key
    // that ended the one before. CreateCellEditor makes a window that owns itself, has the id and reports its
    // end by GridNotifyEndEdit. NewCell's result is the grid's, made by new; ClearCell must leave the cell
    // unselected. The rectangles of cells have their last pixels as right and bottom.
    virtual void OnEditSelectAll();
    virtual void OnRowHeadingClick(CGridPos& cell);
    virtual void OnColumnHeadingClick(CGridPos& cell);
    virtual CSize MeasureCell(int row, int col, CDC* pDC);
    virtual void FinishCellEdit(int row, int col, CString text);
    virtual void StartCellEdit(int row, int col, UINT nChar);
    virtual void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                                  int nChar);
    virtual void OnDraw(CDC* pDC);
    virtual BOOL PaintFixedCell(CDC* pDC, int row, int col, CRect rect);
    virtual BOOL PaintCell(CDC* pDC, int row, int col, CRect rect);
    virtual CGridCell* NewCell(int row, int col);
    virtual void ClearCell(CGridCell* cell, int row, int col);

  protected:
    void PreSubclassWindow() override;

    // Handlers of window messages.
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* pDC);
    void OnHScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar);
    void OnVScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar);
    void OnSize(UINT nType, int cx, int cy);
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonUp(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnMouseMove(UINT nFlags, CPoint point);
    BOOL OnMouseWheel(UINT nFlags, SHORT zDelta, CPoint pt);
    void OnTimer(UINT_PTR nIDEvent);
    UINT OnGetDlgCode();
    void OnKeyDown(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnImeStartComposition();
    BOOL OnSetCursor(CWnd* pWnd, UINT nHitTest, UINT message);
    void OnSysColorChange();
    void OnCaptureChanged(CWnd* pWnd);
    LRESULT OnSetFocus(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetFont(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetFont(WPARAM wParam, LPARAM lParam);
    void OnUpdateEditSelectAll(CCmdUI* pCmdUI);
    void OnCellEditorDone(NMHDR* pNMHDR, LRESULT* pResult);

  private:
    using Row = std::vector<std::unique_ptr<CGridCell>>;
    using CellMap = std::unordered_map<std::uint64_t, CGridPos>;
    struct Direction;
    struct Move;
    struct Pass;
    class ShownCells;
    class AccessibleCells;

    // Whether a grid still exists, with its window, after its owner or a derived class was called.
    class Life {
      public:
        explicit Life(const CGridCtrl& grid) : m_grid(grid), m_token(grid.m_life), m_window(grid.m_hWnd) {}
        bool Exists() const { return !m_token.expired(); }
        explicit operator bool() const { return Exists() && m_grid.m_hWnd == m_window; }

      private:
        const CGridCtrl& m_grid;
        std::weak_ptr<char> m_token;
        HWND m_window;
    };

    static std::uint64_t KeyOf(CGridPos cell) {
        return std::uint64_t{static_cast<std::uint32_t>(cell.col)} << 32 |
               static_cast<std::uint32_t>(cell.row);
    }
    CGridCell* CellAt(int row, int col) const;
    template <class Set>
    BOOL ChangeCell(int row, int col, Set set);
    Row NewRow(int row);
    void ClearRow(int row);
    void ClearColumn(int col);
    void FollowLayout();
    void FollowCounts();
    void AppendRows(int count);
    void AppendColumns(int count);
    bool DropSelection();
    template <class Keys>
    void ArrangeRows(const Keys& keys);

    CString TextToCopy() const;
    void CopyToClipboard() const;
    void OfferAccessibleTable();
    void TellTableChange(window::TableChange change, CGridPos cell = {0, 0}) const;

    void ReadSystemColors();
    void SetAppearance(COLORREF& field, COLORREF color);
    void ApplyFont(const CFont& font);
    bool IsDrawn() const { return m_hWnd != nullptr && m_allowDraw; }
    void InvalidateIfDrawn();

    grid::AxisView RowView() const;
    grid::AxisView ColumnView() const;
    bool IsNearBorder(int distanceFromStart, int size, int index) const;

    Direction DirectionOf(int bar) const;
    void SetBars(const Direction& vertical, const Direction& horizontal);
    void ScrollOn(int bar, UINT request);
    void ScrollTo(const Direction& direction, int position, int repaintFrom);
    void FollowThumb(const Direction& direction);
    void ScrollLineBack(const Direction& direction, int position);
    void ScrollLineForward(const Direction& direction, int position);
    void MovePixels(const Direction& direction, int expectedFirst, int start, int distance);
    void SendScroll(int bar, UINT request, int count);
    void JumpLines(int bar, int lines);

    void DrawBackground(CDC& dc, const CRect& clip, const CRect& extent) const;
    void DrawCells(CDC& dc, const CRect& clip, const Pass& pass);
    void DrawGridLines(CDC& dc, const CGridRange& visible, const CRect& extent) const;
    BOOL DrawSingleCell(CDC& dc, int row, int col, const CRect& rect);
    BOOL RedrawCells(const CGridRange& cells);
    bool HasLines(int lines) const;
    COLORREF LineColor() const;
    bool IsInLineWithFocus(int row, int col) const;
    void DrawCellContent(CDC& dc, int row, int col, CRect rect, CFont& font);
    CFont& FontFor(int row, int col, bool semiBold);
    CSize ImageSizeOf(int row, int col) const;
    int LargestWidth(int col, CDC& dc);
    int LargestHeight(int row, CDC& dc);

    void ShowFocusAt(CGridPos cell, bool hasFocus, bool rowChanges, bool columnChanges);
    std::optional<Move> MoveOf(UINT key);
    std::optional<Move> TabForward() const;
    std::optional<Move> TabBackward() const;
    int RowByPage(UINT key);
    void MoveFocusTo(UINT key, const Move& move);
    void ScrollOnFor(UINT key, bool changesLine);
    void ClearFocusCell();

    bool IsMouseBusy() const;
    bool IsOverBorder() const;
    void SetMouseMode(GridMouseMode mode);
    GridMouseMode BorderModeAt(CPoint point) const;
    void StartDrag(UINT flags, CPoint point, CGridPos cell);
    void StartResizing(GridMouseMode mode, CPoint point);
    void StartSelecting(UINT flags, CGridPos cell);
    void ShowBand(const std::optional<CRect>& band);
    void ShowBandAt(CPoint point);
    void DragTo(CPoint point);
    void EndDrag(CPoint point);
    void EndResizing(CPoint point);
    void StopAutoScroll();
    void FitAtBorder(CPoint point);
    void EditByDoubleClick();
    CPoint PointerInClient() const;
    void ScrollSelecting(UINT key, CPoint point);

    std::shared_ptr<char> m_life = std::make_shared<char>();
    std::unique_ptr<window::AccessibleTable> m_accessibleTable;  // once there is a window
    COLORREF m_textColour = 0;
    COLORREF m_textBkColour = 0;
    COLORREF m_bkColour = 0;
    COLORREF m_fixedTextColour = 0;
    COLORREF m_fixedBkColour = 0;
    static constexpr COLORREF kUsualLineColor = RGB(0xC0, 0xC0, 0xC0);
    COLORREF m_gridColour = kUsualLineColor;
    COLORREF m_sysWindowText = 0;  // the system's colours as last read
    COLORREF m_sysWindow = 0;
    COLORREF m_sysBtnFace = 0;
    COLORREF m_sysBtnShadow = 0;
    int m_gridLines = GridLinesBoth;
    BOOL m_editable = TRUE;
    BOOL m_modified = FALSE;
    BOOL m_allowDragPrepare = FALSE;
    BOOL m_listMode = FALSE;
    BOOL m_singleRowSelection = FALSE;
    BOOL m_allowDraw = TRUE;
    BOOL m_enableSelection = TRUE;
    BOOL m_sortOnClick = TRUE;
    BOOL m_handleTabKey = TRUE;
    int m_fixedRowCount = 0;
    int m_fixedColCount = 0;
    grid::Axis m_rows;     // heights
    grid::Axis m_columns;  // widths
    int m_margin = 0;      // the width of a space in the grid's font
    int m_defaultColWidth = 30;
    int m_defaultRowHeight = 10;
    int m_vScrollMax = 0;
    int m_hScrollMax = 0;
    LOGFONT m_logFont;
    bool m_logFontIsPlain = false;  // no toolkit told it yet
    CFont m_font;
    CFont m_boldFont;  // the same, semi-bold
    std::map<std::pair<const LOGFONT*, bool>, CFont>
        m_cellFonts;  // of cells with their own; semi-bold or not
    CImageList* m_imageList = nullptr;
    std::vector<Row> m_rowData;
    GridMouseMode m_mouseMode = MouseIdle;
    CPoint m_leftClickDownPoint;
    CPoint m_lastMousePoint;
    CGridPos m_leftClickDownCell;
    CGridPos m_draggedTo;  // the cell to which the selection was extended last
    CGridPos m_selectionStartCell;
    CGridPos m_focusCell;
    std::optional<CRect> m_band;  // the line that is dragged with a border
    bool m_isSizing = false;
    bool m_isSettingBars = false;
    UINT_PTR m_timerId = 0;
    int m_timerInterval = 25;      // milliseconds
    int m_resizeCaptureRange = 3;  // pixels on either side of a border
    BOOL m_allowRowResize = TRUE;
    BOOL m_allowColumnResize = TRUE;
    UINT m_mouseWheelLines = 3;
    CellMap m_selectedCells;
    CellMap m_prevSelectedCells;  // kept while the user adds to a selection
    BOOL m_sortAscending = TRUE;
    int m_sortColumn = -1;
};

// Attaches the grid to the dialog's control of the class kGridWindowClass, unless it has a window.
// CNotSupportedException when the dialog has no such control.
KORTAVIN_API void DDX_GridCtrl(CDataExchange* pDX, int nIDC, CGridCtrl& grid);

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGridCtrl;
using kortavin::DDX_GridCtrl;
using kortavin::GridEditorControlId;
using kortavin::GridMouseMode;
using kortavin::kGridWindowClass;
using kortavin::MouseArmedDrag;
using kortavin::MouseArmedEdit;
using kortavin::MouseIdle;
using kortavin::MouseOverColumnBorder;
using kortavin::MouseOverRowBorder;
using kortavin::MouseResizingColumn;
using kortavin::MouseResizingRow;
using kortavin::MouseSelectingAll;
using kortavin::MouseSelectingCells;
using kortavin::MouseSelectingColumns;
using kortavin::MouseSelectingRows;
#endif
