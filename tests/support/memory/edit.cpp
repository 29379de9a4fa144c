#include <algorithm>
#include <tuple>

#include "kortavin/base/codepage.h"
#include "kortavin/window/edit.h"
#include "kortavin/window/keys.h"
#include "tests/support/memory/controls.h"

namespace kortavin::testing {
namespace {

constexpr std::string_view kLineBreak = "\r\n";

// Where the character before a place begins, and where the one behind it ends. A line break counts as one.
size_t StartBefore(std::string_view text, size_t place) {
    if (text.substr(0, place).ends_with(kLineBreak))
        return place - kLineBreak.size();
    return place > 0 ? base::CharacterBoundary(text, 0, place - 1) : 0;
}

size_t EndBehind(std::string_view text, size_t place) {
    const std::string_view rest = text.substr(place);
    return place + (rest.starts_with(kLineBreak) ? kLineBreak.size() : base::CharacterLength(rest));
}

// Of a character message.
std::string BytesOf(UINT character) {
    std::string bytes;
    for (; character != 0; character >>= 8)
        bytes.insert(bytes.begin(), static_cast<char>(character));
    return bytes;
}

}  // namespace

void MemoryEdit::SetText(std::string_view text) {
    MemoryWindow::SetText(text);
    m_anchor = m_caret = 0;
    Invalidate(nullptr);
}

void MemoryEdit::Select(int first, int last) {
    const auto placeOf = [text = m_text.View()](int offset) {
        return base::CharacterBoundary(text, 0, std::min(text.size(), static_cast<size_t>(offset)));
    };
    if (first < 0)
        m_anchor = m_caret;
    else
        std::tie(m_anchor, m_caret) = std::minmax({placeOf(first), placeOf(last)});
}

std::optional<size_t> MemoryEdit::PlaceFor(UINT key, bool extends) const {
    const std::string_view text = m_text.View();
    const bool collapses = m_anchor != m_caret && !extends;
    switch (key) {
        case VK_LEFT:
            return collapses ? std::min(m_anchor, m_caret) : StartBefore(text, m_caret);
        case VK_RIGHT:
            return collapses ? std::max(m_anchor, m_caret) : EndBehind(text, m_caret);
        case VK_HOME:
            return text.substr(0, m_caret).rfind('\n') + 1;
        case VK_END:
            return std::min(text.find('\r', m_caret), text.size());
        default:
            return std::nullopt;
    }
}

void MemoryEdit::HandleKey(UINT key) {
    const bool extends = m_toolkit.IsKeyDown(VK_SHIFT);
    if (const auto place = PlaceFor(key, extends)) {
        m_caret = *place;
        if (!extends)
            m_anchor = m_caret;
    } else if (key == VK_DELETE) {
        EraseTo(EndBehind(m_text.View(), m_caret));
    }
}

void MemoryEdit::TypeCharacter(UINT character) {
    if (character == VK_BACK)
        EraseTo(StartBefore(m_text.View(), m_caret));
    else if (character == VK_RETURN && BreaksLines())
        ReplaceSelection(kLineBreak);
    else if (character >= VK_SPACE)
        ReplaceSelection(BytesOf(character));
}

void MemoryEdit::EraseTo(size_t place) {
    if (m_anchor == m_caret && !IsReadOnly())
        m_anchor = place;
    ReplaceSelection("");
}

void MemoryEdit::ReplaceSelection(std::string_view text) {
    const auto [first, last] = std::minmax({m_anchor, m_caret});
    if (IsReadOnly() || (text.empty() && first == last))
        return;
    m_text.GetStorage().replace(first, last - first, text);
    const auto end = static_cast<int>(first + text.size());
    Select(end, end);
    Invalidate(nullptr);
    Tell(EN_CHANGE);
}

LRESULT MemoryEdit::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS | (BreaksLines() ? DLGC_WANTCHARS : 0);
        case EM_SETSEL:
            Select(static_cast<int>(wParam), static_cast<int>(lParam));
            return 0;
        case EM_GETSEL: {
            const auto [first, last] = std::minmax({m_anchor, m_caret});
            return static_cast<LRESULT>(MakeWParam(static_cast<WORD>(first), static_cast<WORD>(last)));
        }
        case WM_KEYDOWN:
            HandleKey(static_cast<UINT>(wParam));
            return 0;
        case WM_CHAR:
            TypeCharacter(static_cast<UINT>(wParam));
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Tell(message == WM_SETFOCUS ? EN_SETFOCUS : EN_KILLFOCUS);
            return 0;
        default:
            return MemoryWindow::DefaultProc(message, wParam, lParam);
    }
}

void MemoryEdit::Tell(WORD code) {
    window::ReportNotification(m_record, code);
}

bool MemoryEdit::IsReadOnly() const {
    return (m_record.Style() & ES_READONLY) != 0;
}

bool MemoryEdit::BreaksLines() const {
    constexpr DWORD kBoth = ES_MULTILINE | ES_WANTRETURN;
    return (m_record.Style() & kBoth) == kBoth;
}

}  // namespace kortavin::testing
