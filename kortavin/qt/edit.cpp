#include "kortavin/qt/edit.h"

#include <algorithm>

#include "kortavin/window/edit.h"

namespace kortavin::qt {

LRESULT QtEdit::DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case EM_SETSEL:
            SetSelection(static_cast<int>(wParam), static_cast<int>(lParam));
            return 0;
        case EM_GETSEL:
            return GetSelection();
        case EM_SCROLLCARET:
            ScrollToCaret();
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            Notify(message == WM_SETFOCUS ? EN_SETFOCUS : EN_KILLFOCUS);
            return 0;
        case WM_CHAR:
            if (wParam < VK_SPACE && wParam != VK_BACK)
                return 0;  // inserts nothing
            [[fallthrough]];
        default:
            return QtWindow::DefaultProc(message, wParam, lParam);
    }
}

void QtEdit::SetText(std::string_view text) {
    ShowText(m_text.Set(text));
    m_text.ShowsAs(ShownText());
}

CString QtEdit::GetText() const {
    return m_text.Get(ShownText());
}

void QtEdit::Notify(WORD code) {
    if (IsReporting())
        ReportNotification(GetWindow(), code);
}

UINT QtEdit::DialogCode() const {
    return DLGC_WANTARROWS | (Has(ES_MULTILINE | ES_WANTRETURN) ? DLGC_WANTCHARS : 0);
}

LineBreaks QtEdit::Breaks() const {
    return Has(ES_MULTILINE) ? LineBreaks::AsOne : LineBreaks::AsCharacters;
}

void QtEdit::SetSelection(int first, int last) {
    if (first < 0) {
        Select({Selection().last, Selection().last});
        return;
    }
    const CString text = GetText();
    const auto placeOf = [&](int offset) {
        return QtOffset(text.View(), offset < 0 ? text.GetLength() : offset, Breaks());
    };
    const auto [begin, end] = std::minmax({placeOf(first), placeOf(last)});
    Select({begin, end});
}

LRESULT QtEdit::GetSelection() const {
    constexpr int kMost = 0xFFFF;  // what the answer has room for
    const Range range = Selection();
    const CString text = GetText();
    const auto offsetOf = [&](int place) {
        return static_cast<WORD>(std::min(ByteOffset(text.View(), place, Breaks()), kMost));
    };
    return static_cast<LRESULT>(MakeWParam(offsetOf(range.first), offsetOf(range.last)));
}

Qt::Alignment AlignmentOf(DWORD style) {
    if ((style & ES_RIGHT) != 0)
        return Qt::AlignRight;
    return (style & ES_CENTER) != 0 ? Qt::AlignHCenter : Qt::AlignLeft;
}

}  // namespace kortavin::qt
