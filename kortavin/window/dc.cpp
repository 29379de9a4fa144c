#include "kortavin/window/dc.h"

#include <utility>

#include "kortavin/base/texts.h"
#include "kortavin/window/metrics.h"
#include "kortavin/window/toolkit.h"
#include "kortavin/window/windowrecord.h"
#include "kortavin/window/wnd.h"

namespace kortavin {

namespace {

// The stock objects are shared by all contexts.
CPen* StockPen(int style) {
    static CPen black(PS_SOLID, 1, RGB(0, 0, 0));
    static CPen null(PS_NULL, 1, RGB(0, 0, 0));
    return style == PS_NULL ? &null : &black;
}

CBrush* StockBrush(bool hollow) {
    static CBrush white(RGB(255, 255, 255));
    static CBrush null;
    return hollow ? &null : &white;
}

window::WindowRecord& RequireWindow(const CWnd* object) {
    using base::TextId;
    if (object == nullptr || object->m_hWnd == nullptr)
        throw CResourceException(base::Text(TextId::NoWindowForPainting));
    return *window::RecordOf(object);
}

std::unique_ptr<window::Painter> PainterOfPaint(const CWnd* object) {
    auto painter = RequireWindow(object).Native().BeginPaint();
    if (painter == nullptr)
        throw CResourceException(base::Text(base::TextId::NoWindowForPainting));
    return painter;
}

template <class T>
T* Exchange(T*& current, T* next) {
    return next == nullptr ? nullptr : std::exchange(current, next);
}

}  // namespace

CDC::CDC(std::unique_ptr<window::Painter> painter, CFont* font) : m_painter(std::move(painter)) {
    if (font == nullptr || font->GetNative() == nullptr) {
        m_defaultFont = std::make_unique<CFont>(window::MessageBoxFont());
        font = m_defaultFont.get();
    }
    m_state.pen = StockPen(PS_SOLID);
    m_state.brush = StockBrush(false);
    m_state.font = font;
    m_state.clip = m_painter->ClipBox();
}

CDC::~CDC() = default;

BOOL CDC::CanDraw() const {
    return m_painter->CanDraw();
}

int CDC::GetDeviceCaps(int index) const {
    if (index == LOGPIXELSX)
        return m_painter->PixelsPerInch().cx;
    return index == LOGPIXELSY ? m_painter->PixelsPerInch().cy : 0;
}

BOOL CDC::GetClipBox(CRect* box) const {
    const CRect clip = CanDraw() && !m_state.clip.IsRectEmpty() ? m_state.clip : CRect();
    if (box != nullptr)
        *box = clip;
    return !clip.IsRectEmpty();
}

CPen* CDC::SelectObject(CPen* pen) {
    return Exchange(m_state.pen, pen);
}

CBrush* CDC::SelectObject(CBrush* brush) {
    return Exchange(m_state.brush, brush);
}

CFont* CDC::SelectObject(CFont* font) {
    return font == nullptr || font->GetNative() == nullptr ? nullptr : Exchange(m_state.font, font);
}

void CDC::SelectStockObject(int index) {
    switch (index) {
        case WHITE_BRUSH:
        case NULL_BRUSH:
            m_state.brush = StockBrush(index == NULL_BRUSH);
            break;
        case BLACK_PEN:
        case NULL_PEN:
            m_state.pen = StockPen(index == NULL_PEN ? PS_NULL : PS_SOLID);
            break;
        default:
            break;
    }
}

COLORREF CDC::SetTextColor(COLORREF color) {
    return std::exchange(m_state.textColor, color);
}

COLORREF CDC::SetBkColor(COLORREF color) {
    return std::exchange(m_state.bkColor, color);
}

int CDC::SetBkMode(int mode) {
    return std::exchange(m_state.bkMode, mode);
}

int CDC::SaveDC() {
    m_saved.push_back(m_state);
    return static_cast<int>(m_saved.size());
}

BOOL CDC::RestoreDC(int level) {
    const auto levels = static_cast<int>(m_saved.size());
    if (level == -1)
        level = levels;
    if (level < 1 || level > levels)
        return FALSE;
    m_state = m_saved[level - 1];
    m_saved.resize(level - 1);
    m_painter->SetClip(m_state.clip);
    return TRUE;
}

void CDC::IntersectClipRect(const CRect& rect) {
    m_state.clip.IntersectRect(m_state.clip, rect);
    m_painter->SetClip(m_state.clip);
}

CPaintDC::CPaintDC(CWnd* object) : CDC(PainterOfPaint(object), &window::RecordOf(object)->Font()) {}
CPaintDC::~CPaintDC() = default;

CClientDC::CClientDC(CWnd* object)
    : CDC(RequireWindow(object).Native().ClientPainter(), &window::RecordOf(object)->Font()) {}
CClientDC::~CClientDC() = default;

}  // namespace kortavin
