#include "kortavin/window/dc.h"
#include "kortavin/window/drawtext.h"
#include "kortavin/window/toolkit.h"

namespace kortavin {

namespace {

// Narrows the painter's clip for a while; the context's own stays as it is.
class ClipScope {
  public:
    ClipScope(window::Painter& painter, const CRect& narrowed, const CRect& former)
        : m_painter(painter), m_former(former) {
        painter.SetClip(narrowed);
    }
    ~ClipScope() { m_painter.SetClip(m_former); }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;

  private:
    window::Painter& m_painter;
    CRect m_former;
};

}  // namespace

void CDC::DrawRun(CPoint corner, std::string_view text, const window::NativeFont& font) {
    if (m_state.bkMode == OPAQUE) {
        const CRect cell(corner, CSize(font.Width(text), font.Metrics().tmHeight));
        m_painter->FillRect(cell, {{}, m_state.bkColor, {}});
    }
    m_painter->DrawText(corner, text, font, m_state.textColor);
}

void CDC::TextOut(int x, int y, std::string_view text) {
    if (const auto* font = m_state.font->GetNative(); font != nullptr)
        DrawRun({x, y}, text, *font);
}

CSize CDC::GetTextExtent(std::string_view text) const {
    const auto* font = m_state.font->GetNative();
    return font == nullptr ? CSize() : CSize(font->Width(text), font->Metrics().tmHeight);
}

BOOL CDC::GetTextMetrics(TEXTMETRIC* metrics) const {
    const auto* font = m_state.font->GetNative();
    if (font == nullptr || metrics == nullptr)
        return FALSE;
    *metrics = font->Metrics();
    return TRUE;
}

int CDC::DrawText(std::string_view text, CRect* rect, UINT flags) {
    const auto* font = m_state.font->GetNative();
    if (font == nullptr || rect == nullptr)
        return 0;
    const window::TextLayout layout = window::LayOutText(text, *font, *rect, flags);
    if ((flags & DT_CALCRECT) != 0) {
        *rect = layout.box;
        return layout.height;
    }
    CRect clip = m_state.clip;
    if ((flags & DT_NOCLIP) == 0)
        clip.IntersectRect(clip, *rect);
    const ClipScope scope(*m_painter, clip, m_state.clip);
    const int lineHeight = font->Metrics().tmHeight;
    // Shaping is what costs: lines outside what is being painted are not handed on.
    for (const window::TextLine& line : layout.lines) {
        if (line.corner.y < clip.bottom && line.corner.y + lineHeight > clip.top)
            DrawRun(line.corner, line.text, *font);
    }
    return layout.height;
}

}  // namespace kortavin
