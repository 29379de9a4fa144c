#include "kortavin/grid/gridctrl.h"

#include <cstdlib>

#include "kortavin/base/exception.h"
#include "kortavin/window/dataexchange.h"
#include "kortavin/window/messagebox.h"
#include "kortavin/window/metrics.h"
#include "kortavin/window/windowrecord.h"

namespace kortavin {

constinit const CRuntimeClass CGridCtrl::classCGridCtrl{"CGridCtrl", &CWnd::classCWnd};

CGridCtrl::CGridCtrl(int nRows, int nCols, int nFixedRows, int nFixedCols) {
    RegisterGridClass();
    ReadSystemColors();
    m_textColour = m_fixedTextColour = m_sysWindowText;
    m_textBkColour = m_sysWindow;
    m_bkColour = m_sysBtnShadow;
    m_fixedBkColour = m_sysBtnFace;
    m_logFont = window::MessageBoxFont();
    m_logFontIsPlain = window::CurrentToolkit() == nullptr;
    m_mouseWheelLines = ReadWheelScrollLines();
    SetRowCount(nRows);
    SetColumnCount(nCols);
    SetFixedRowCount(nFixedRows);
    SetFixedColumnCount(nFixedCols);
}

// The window goes first, while there is a grid to answer its messages.
CGridCtrl::~CGridCtrl() {
    DestroyWindow();
}

const CRuntimeClass* CGridCtrl::GetRuntimeClass() const {
    return &classCGridCtrl;
}

// The desktop's setting is a text; one that says -1 means a page.
UINT CGridCtrl::ReadWheelScrollLines() {
    constexpr UINT kUsual = 3;
    const auto* const toolkit = window::CurrentToolkit();
    const CString text = toolkit != nullptr ? toolkit->WheelScrollLines() : CString();
    return text.IsEmpty() ? kUsual : static_cast<UINT>(std::strtoul(text, nullptr, 10));
}

void CGridCtrl::RegisterGridClass() {
    window::RegisterWindowClass(kGridWindowClass);
}

BOOL CGridCtrl::Create(const CRect& rect, CWnd* pParent, UINT nID, DWORD dwStyle) try {
    if (!CWnd::Create(kGridWindowClass, "", dwStyle | WS_HSCROLL | WS_VSCROLL, rect, pParent, nID))
        return FALSE;
    for (int row = 0; row < GetRowCount(); ++row)
        m_rows.SetSize(row, m_defaultRowHeight);
    for (int col = 0; col < GetColumnCount(); ++col)
        m_columns.SetSize(col, m_defaultColWidth);
    UpdateScrollBars();
    return TRUE;
} catch (const std::bad_alloc&) {
    AfxMessageBox(CMemoryException().GetErrorMessage());
    return FALSE;
}

void DDX_GridCtrl(CDataExchange* pDX, int nIDC, CGridCtrl& grid) {
    DDX_Control(pDX, nIDC, grid);
}

const window::MessageMap* CGridCtrl::GetMessageMap() const {
    using namespace window;
    static constexpr MessageEntry kEntries[] = {
        OnMessage<WM_PAINT, &CGridCtrl::OnPaint>(),
        OnMessage<WM_ERASEBKGND, &CGridCtrl::OnEraseBkgnd>(),
        OnMessage<WM_HSCROLL, &CGridCtrl::OnHScroll>(),
        OnMessage<WM_VSCROLL, &CGridCtrl::OnVScroll>(),
        OnMessage<WM_SIZE, &CGridCtrl::OnSize>(),
        OnMessage<WM_LBUTTONDOWN, &CGridCtrl::OnLButtonDown>(),
        OnMessage<WM_LBUTTONUP, &CGridCtrl::OnLButtonUp>(),
        OnMessage<WM_LBUTTONDBLCLK, &CGridCtrl::OnLButtonDblClk>(),
        OnMessage<WM_MOUSEMOVE, &CGridCtrl::OnMouseMove>(),
        OnMessage<WM_MOUSEWHEEL, &CGridCtrl::OnMouseWheel>(),
        OnMessage<WM_TIMER, &CGridCtrl::OnTimer>(),
        OnMessage<WM_GETDLGCODE, &CGridCtrl::OnGetDlgCode>(),
        OnMessage<WM_KEYDOWN, &CGridCtrl::OnKeyDown>(),
        OnMessage<WM_CHAR, &CGridCtrl::OnChar>(),
        OnMessage<WM_SETFOCUS, &CGridCtrl::OnSetFocus>(),
        OnMessage<WM_IME_STARTCOMPOSITION, &CGridCtrl::OnImeStartComposition>(),
        OnMessage<WM_SETCURSOR, &CGridCtrl::OnSetCursor>(),
        OnMessage<WM_SYSCOLORCHANGE, &CGridCtrl::OnSysColorChange>(),
        OnMessage<WM_CAPTURECHANGED, &CGridCtrl::OnCaptureChanged>(),
        OnMessage<WM_SETFONT, &CGridCtrl::OnSetFont>(),
        OnMessage<WM_GETFONT, &CGridCtrl::OnGetFont>(),
        window::OnNotify<GridNotifyEndEdit, GridEditorControlId, &CGridCtrl::OnCellEditorDone>(),
        window::OnCommand<ID_EDIT_SELECT_ALL, &CGridCtrl::OnEditSelectAll>(),
        window::OnUpdateCommand<ID_EDIT_SELECT_ALL, &CGridCtrl::OnUpdateEditSelectAll>(),
    };
    static const MessageMap map{CWnd::GetMessageMap(), kEntries};
    return &map;
}

// What was read before there was a toolkit is read again.
void CGridCtrl::PreSubclassWindow() {
    OnSysColorChange();
    m_mouseWheelLines = ReadWheelScrollLines();
    if (m_logFontIsPlain)
        m_logFont = window::MessageBoxFont();
    m_logFontIsPlain = false;
    ApplyFont(CFont(m_logFont));
    OfferAccessibleTable();
    UpdateScrollBars();
}

void CGridCtrl::ApplyFont(const CFont& font) {
    m_font = font;
    m_logFont = font.GetLogFont();
    LOGFONT bold = m_logFont;
    bold.lfWeight = FW_SEMIBOLD;
    m_boldFont = CFont(bold);
    m_cellFonts.clear();
    for (const Row& cells : m_rowData)
        for (const auto& cell : cells)
            cell->font = nullptr;
    const TEXTMETRIC metrics = font.GetNative()->Metrics();
    m_margin = font.GetNative()->Width(" ");
    m_defaultRowHeight = metrics.tmHeight + metrics.tmExternalLeading + 2 * m_margin;
    m_defaultColWidth = 12 * metrics.tmAveCharWidth + 2 * m_margin;
    Invalidate();
}

LRESULT CGridCtrl::OnSetFont(WPARAM wParam, LPARAM /*lParam*/) {
    ApplyFont(*reinterpret_cast<const CFont*>(wParam));
    return Default();
}

LRESULT CGridCtrl::OnGetFont(WPARAM, LPARAM) {
    return reinterpret_cast<LRESULT>(&m_font);
}

CSize CGridCtrl::GetTextExtent(const char* text, BOOL bBold) const {
    if (m_hWnd == nullptr)
        return {};
    const CFont& font = bBold ? m_boldFont : m_font;
    const int width = font.GetNative()->Width(text != nullptr ? text : "");
    return {width + 2 * m_margin, static_cast<int>(font.GetNative()->Metrics().tmHeight) + 2 * m_margin};
}

}  // namespace kortavin
