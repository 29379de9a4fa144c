#pragma once

#include "kortavin/grid/gridctrl.h"
#include "kortavin/resources/dialogs.h"
#include "kortavin/service/querysql.h"
#include "kortavin/window/combobox.h"
#include "kortavin/wizard/sqlsheet.h"
#include "tests/support/memory/controls.h"
#include "tests/support/memory/input.h"

// The query wizard on the memory desktop: what its user sees and does there. Texts are UTF-8.

using kortavin::CSqlSheet;
using namespace kortavin::resources;
using namespace kortavin::testing;

inline CString FromUtf8(const std::string& text) {
    return CString::FromUtf8(text).value();
}
// "nothing" is what the caller's text holds before, and keeps when the run is cancelled.
inline void RunWizard(CQuerySql& query, const std::string& statement, std::function<void()> user) {
    TheDesktop().NextModal(std::move(user));
    CString sql("nothing");
    EXPECT_EQ(query.ConstructQuery(sql), statement == "nothing" ? 0 : 1);
    EXPECT_EQ(sql.ToUtf8(), statement);
}
inline CSqlSheet& Sheet() {
    return dynamic_cast<CSqlSheet&>(*TheDesktop().Windows().at(0)->Record().Object());
}
inline CWnd& Page() {
    return *Sheet().GetPage(Sheet().GetActiveIndex());
}
inline CGridCtrl& Grid() {
    return dynamic_cast<CGridCtrl&>(*Page().GetDlgItem(kGrid));
}
inline std::string Statement() {
    return Page().GetDlgItem(kStatementEdit)->GetWindowText().ToUtf8().value();
}
// "a|b/c|d @1,0": the cells' texts, and the focus cell if there is one.
inline std::string Cells() {
    const auto [focusRow, focusCol] = Grid().GetFocusCell();
    CString all;
    for (int row = 0; row < Grid().GetRowCount(); ++row)
        for (int col = 0; col < Grid().GetColumnCount(); ++col)
            all += CString(col > 0 ? "|" : row > 0 ? "/" : "") + Grid().GetItemText(row, col);
    const std::string focus = " @" + std::to_string(focusRow) + "," + std::to_string(focusCol);
    return all.ToUtf8().value() + (focusRow >= 0 ? focus : "");
}

// ⇥ ⇤ Tab and Shift+Tab, ⇨ ⇦ the same with Ctrl, ⏎ ␣ ↓ → ⇲ Enter, Space, arrows and End; all else is typed.
inline void Keys(std::string signs) {
    constexpr UINT kTab = VK_TAB, kShift = MK_SHIFT << 8, kCtrl = MK_CONTROL << 8;
    constexpr UINT kKeys[] = {kTab,      kTab | kShift, kTab | kCtrl, kTab | kCtrl | kShift,
                              VK_RETURN, VK_SPACE,      VK_DOWN,      VK_RIGHT,
                              VK_END};
    for (; !signs.empty(); Loop()) {
        const std::string sign = signs.substr(0, (signs[0] & 0x80) != 0 ? 3 : 1);
        const std::size_t place = std::string("⇥⇤⇨⇦⏎␣↓→⇲").find(sign);
        signs.erase(0, sign.size());
        if (place != std::string::npos)
            Key(kKeys[place / 3] & 0xFF, kKeys[place / 3] >> 8);
        else
            Type(FromUtf8(sign).View());
    }
}
// The button of the page, or of the sheet, that bears this text.
inline void Push(const std::string& text) {
    for (const CWnd* const window : {&Page(), static_cast<CWnd*>(&Sheet())})
        for (auto* const child : std::vector(kortavin::window::RecordOf(window)->Children()))
            if (child->Native().AsButton() != nullptr && child->Native().GetText() == FromUtf8(text))
                Click(*CWnd::FromHandle(child), {2, 2});
    Loop();
}
// By keys, since there may be more names than show; then moves the name by the button.
inline void MoveTable(const std::string& name, int id, const char* button) {
    auto& list = dynamic_cast<MemoryList&>(NativeOf(*Page().GetDlgItem(id)));
    MoveFocusTo(Page().GetDlgItem(id));
    list.Select(-1);
    for (int i = 0; i < list.Count() && (i == 0 || list.ItemText(list.Selection()) != FromUtf8(name)); ++i)
        Keys("↓");
    Push(button);
}
// Answers what the focus cell's list offers, and picks the item of that text.
inline std::string Pick(const std::string& item) {
    Keys("⏎");
    auto* const combo = dynamic_cast<CComboBox*>(Grid().GetDlgItem(GridEditorControlId));
    CString all, text;
    for (int i = 0; combo != nullptr && combo->GetLBText(i, text) != CB_ERR; ++i) {
        all += text + ";";
        if (text == FromUtf8(item))
            PickItem(*combo, i);
    }
    Keys("⏎");
    return all.ToUtf8().value();
}
// Words with ';' behind them: "#2" goes to the third page, "+t" and "-t" choose a table and take it back;
// "1,2" goes to that cell, "1,2=text" types into it, "1,2?item" picks from its list; others are buttons.
inline void Do(std::string words) {
    for (; !words.empty(); words.erase(0, words.find(';') + 1)) {
        const std::string word = words.substr(0, words.find(';')), rest = word.substr(1);
        auto* const tabs = kortavin::window::RecordOf(&Sheet())->Children().front();
        CRect cell;
        if (word[0] == '#')
            Click(*CWnd::FromHandle(tabs), tabs->Native().AsTabs()->TabRect(rest[0] - '0').TopLeft());
        else if (word[0] == '+' || word[0] == '-')
            word[0] == '+' ? MoveTable(rest, kAvailableList, ">>") : MoveTable(rest, kSelectedList, "<<");
        else if (rest[0] != ',')
            Push(word);
        else if (MoveFocusTo(&Grid()); Grid().GetCellRect(word[0] - '0', word[2] - '0', &cell)) {
            if (Grid().GetFocusCell() != CGridPos(word[0] - '0', word[2] - '0'))
                Click(Grid(), {cell.right - 5, cell.bottom - 5});
            if (word.size() > 3)
                word[3] == '=' ? Keys(word.substr(4) + "⏎") : void(Pick(word.substr(4)));
        }
    }
}
