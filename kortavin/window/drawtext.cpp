#include "kortavin/window/drawtext.h"

#include <algorithm>
#include <cstdint>

#include "kortavin/base/codepage.h"
#include "kortavin/window/dc.h"

namespace kortavin::window {
namespace {

// A line before it has its place.
struct Line {
    std::string_view text;
    std::optional<int> width;  // where it is known from breaking
};

// A beginning of a text, and its width in pixels.
struct Fit {
    std::size_t bytes = 0;
    int width = 0;
};

// Where a line ends and where the next one begins.
struct Break {
    std::size_t end;
    std::size_t next;
};

bool IsBlank(char byte) {
    return byte == ' ' || byte == '\t';
}

bool IsLineEnd(char byte) {
    return byte == '\r' || byte == '\n';
}

std::size_t LineEndLength(std::string_view rest) {
    return rest.starts_with("\r\n") ? 2 : 1;
}

// The longest beginning, in whole characters, that is no wider than `maxWidth`. A guess first, since most
// texts fit at once; a run is measured whole, because the widths of its parts need not add up to its own.
// Nothing beyond about twice what fits is looked at.
Fit FittingBeginning(std::string_view text, const NativeFont& font, int maxWidth) {
    const int average = std::max<int>(font.Metrics().tmAveCharWidth, 1);
    std::size_t tooLong = base::CutAtCharacter(text, static_cast<std::size_t>(maxWidth / average) + 8).size();
    Fit fit;
    for (int width = font.Width(text.substr(0, tooLong)); width <= maxWidth;
         width = font.Width(text.substr(0, tooLong))) {
        fit = {tooLong, width};
        if (fit.bytes == text.size())
            return fit;
        tooLong = base::CharacterBoundary(text, fit.bytes, 2 * fit.bytes);
    }
    for (;;) {
        std::size_t middle = base::CharacterBoundary(text, fit.bytes, (fit.bytes + tooLong) / 2);
        if (middle == fit.bytes)
            middle += base::CharacterLength(text.substr(middle));
        if (middle >= tooLong)
            return fit;
        const int width = font.Width(text.substr(0, middle));
        if (width <= maxWidth)
            fit = {middle, width};
        else
            tooLong = middle;
    }
}

// The last place at or before `fits`, behind which there is more text, where a line may end: at blanks and
// between two double-byte characters. A word that is too wide is broken where it fits, but never before its
// first character. Blanks at the break belong to neither line.
Break BreakBefore(std::string_view text, std::size_t fits) {
    std::size_t last = 0;
    std::size_t length = base::CharacterLength(text);
    const std::size_t first = length;
    for (std::size_t at = length; at <= fits; at += length) {
        const std::size_t before = length;
        length = base::CharacterLength(text.substr(at));
        if (IsBlank(text[at - 1]) || IsBlank(text[at]) || (before > 1 && length > 1))
            last = at;
    }
    if (last == 0)
        last = std::max(fits, first);
    Break result{last, last};
    while (result.end > 0 && IsBlank(text[result.end - 1]))
        --result.end;
    while (result.next < text.size() && IsBlank(text[result.next]))
        ++result.next;
    return result;
}

// Breaks what stands between two line ends. An empty paragraph is an empty line.
void WrapParagraph(std::vector<Line>& lines, std::string_view rest, const NativeFont& font, int width,
                   std::size_t limit) {
    while (lines.size() < limit) {
        const Fit fit = FittingBeginning(rest, font, width);
        if (fit.bytes == rest.size()) {
            lines.push_back({rest, fit.width});
            return;
        }
        const Break at = BreakBefore(rest, fit.bytes);
        lines.push_back(
            {rest.substr(0, at.end), at.end == fit.bytes ? std::optional(fit.width) : std::nullopt});
        rest.remove_prefix(at.next);
        if (rest.empty())
            return;
    }
}

// A line end ends a line and begins none, so an empty text has no line.
std::vector<Line> BreakLines(std::string_view text, const NativeFont& font, std::optional<int> wrapWidth,
                             std::size_t limit) {
    std::vector<Line> lines;
    while (!text.empty() && lines.size() < limit) {
        const auto end =
            static_cast<std::size_t>(std::find_if(text.begin(), text.end(), IsLineEnd) - text.begin());
        if (wrapWidth)
            WrapParagraph(lines, text.substr(0, end), font, *wrapWidth, limit);
        else
            lines.push_back({text.substr(0, end), std::nullopt});
        text.remove_prefix(end);
        if (!text.empty())
            text.remove_prefix(LineEndLength(text));
    }
    return lines;
}

// With each line end as one blank.
std::string OnOneLine(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        const bool isEnd = IsLineEnd(text.front());
        line += isEnd ? ' ' : text.front();
        text.remove_prefix(isEnd ? LineEndLength(text) : 1);
    }
    return line;
}

// Where lines stand in the rectangle, and how much of them shows.
class Placement {
  public:
    Placement(const NativeFont& font, const CRect& rect, UINT flags)
        : m_font(font),
          m_rect(rect),
          m_flags(flags),
          m_lineHeight(std::max<int>(font.Metrics().tmHeight, 1)) {}

    bool Has(UINT flag) const { return (m_flags & flag) != 0; }
    bool ShowsAll() const { return Has(DT_NOCLIP | DT_CALCRECT); }

    // How many lines can show. Fewer than there are means that they start at the rectangle's top.
    std::size_t LineLimit() const {
        return ShowsAll() ? SIZE_MAX : static_cast<std::size_t>((m_rect.Height() - 1) / m_lineHeight + 1);
    }

    TextLayout Place(const std::vector<Line>& lines) const {
        TextLayout layout;
        layout.height = static_cast<int>(lines.size()) * m_lineHeight;
        layout.box = {m_rect.TopLeft(), CSize(0, layout.height)};
        int y = Top(lines.size(), layout.height);
        for (const Line& line : lines) {
            if (Has(DT_CALCRECT))
                layout.box.right = std::max(layout.box.right, m_rect.left + WidthOf(line));
            else
                layout.lines.push_back({std::string(ShownPart(line)), {Left(line), y}});
            y += m_lineHeight;
        }
        return layout;
    }

  private:
    int WidthOf(const Line& line) const { return line.width ? *line.width : m_font.Width(line.text); }

    // Several lines that do not fit start at the top: that is where reading starts.
    int Top(std::size_t count, int height) const {
        const bool overflows = count > 1 && height > m_rect.Height();
        if (Has(DT_VCENTER) && !overflows)
            return m_rect.top + (m_rect.Height() - height) / 2;
        return Has(DT_BOTTOM) && !overflows ? m_rect.bottom - height : m_rect.top;
    }

    int Left(const Line& line) const {
        if (Has(DT_RIGHT))
            return m_rect.right - WidthOf(line);
        return Has(DT_CENTER) ? m_rect.left + (m_rect.Width() - WidthOf(line)) / 2 : m_rect.left;
    }

    // Of a long line that starts at the left, up to the first character that lies behind the rectangle.
    std::string_view ShownPart(const Line& line) const {
        if (ShowsAll() || Has(DT_CENTER | DT_RIGHT) ||
            line.text.size() <= static_cast<std::size_t>(m_rect.Width()))
            return line.text;
        const std::size_t fits = FittingBeginning(line.text, m_font, m_rect.Width()).bytes;
        return line.text.substr(0, fits + base::CharacterLength(line.text.substr(fits)));
    }

    const NativeFont& m_font;
    CRect m_rect;
    UINT m_flags;
    int m_lineHeight;
};

}  // namespace

TextLayout LayOutText(std::string_view text, const NativeFont& font, const CRect& rect, UINT flags) {
    const Placement placement(font, rect, flags);
    if (rect.IsRectEmpty() && !placement.ShowsAll())
        return {};
    if (placement.Has(DT_SINGLELINE)) {
        const bool hasLineEnds = std::any_of(text.begin(), text.end(), IsLineEnd);
        const std::string joined = hasLineEnds ? OnOneLine(text) : std::string();
        return placement.Place({{hasLineEnds ? joined : text, std::nullopt}});
    }
    const auto wrapWidth =
        placement.Has(DT_WORDBREAK) ? std::optional(std::max(rect.Width(), 0)) : std::nullopt;
    return placement.Place(BreakLines(text, font, wrapWidth, placement.LineLimit()));
}

}  // namespace kortavin::window
