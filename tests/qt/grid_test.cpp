#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLineEdit>

#include "kortavin/grid/gridcellcombo.h"
#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/metrics.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

using Mouse = std::pair<CGridPos, Qt::KeyboardModifiers>;

// Notes what a grid tells its owner.
class Owner : public EventWindow {
  public:
    std::string told;

    BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT*) override {
        const auto& notify = *reinterpret_cast<const GridNotify*>(lParam);
        told += std::to_string(notify.hdr.code) + " " + std::to_string(notify.row) + "," +
                std::to_string(notify.col) + "; ";
        return TRUE;
    }
    BOOL OnCommand(WPARAM wParam, LPARAM) override {
        told += "click of " + std::to_string(wParam) + "; ";
        return TRUE;
    }
};

// Its last column is edited by a list.
class ListGrid : public CGridCtrl {
  public:
    using CGridCtrl::CGridCtrl;
    void CreateCellEditor(CRect& rect, DWORD dwStyle, UINT nID, int row, int col, const char* text,
                          int nChar) override {
        if (col < GetColumnCount() - 1)
            return CGridCtrl::CreateCellEditor(rect, dwStyle, nID, row, col, text, nChar);
        CStringArray items;
        items.Add("Lakes");
        items.Add("Rivers and their banks");
        CGridCellCombo::Open(this, rect, CBS_DROPDOWN, nID, row, col, items, text, static_cast<UINT>(nChar));
    }
};

}  // namespace

// A grid with room for five rows of 20 pixels and four columns of 50, one of each fixed.
class QtGrid : public QtTest {
  public:
    QtGrid() { m_owner.Open({0, 0, 400, 300}); }
    void Open(int rows = 5) {
        m_grid.emplace(rows, 4, 1, 1);
        m_grid->Create({20, 20, 240, 140}, &m_owner, 7, WS_CHILD | WS_VISIBLE | WS_TABSTOP);
        for (int row = 0; row < rows; ++row)
            for (int col = 0; col < 4; ++col) {
                m_grid->SetRowHeight(row, 20);
                m_grid->SetColumnWidth(col, 50);
                m_grid->SetItemText(row, col, col < 3 ? "old" : "");
            }
        Activate(WidgetOf(m_owner));
        m_grid->SetFocus();
        m_owner.told.clear();
    }
    QWidget& Widget() const { return WidgetOf(*m_grid); }
    QPoint MiddleOf(CGridPos cell) const {
        CRect rect;
        EXPECT_TRUE(m_grid->GetCellRect(cell, &rect));
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }
    void Click(QPoint place, Qt::KeyboardModifiers keys = {}) const {
        QTest::mouseClick(&Widget(), Qt::LeftButton, keys, place);
        QCoreApplication::processEvents();
    }
    void Drag(QPoint from, const std::vector<QPoint>& way) const {
        QTest::mousePress(&Widget(), Qt::LeftButton, {}, from);
        for (const QPoint place : way)
            MoveMouse(Widget(), place, Qt::LeftButton);
        QTest::mouseRelease(&Widget(), Qt::LeftButton, {}, way.back());
    }
    void DoubleClick(QPoint place) const {
        Click(place);
        QTest::mouseDClick(&Widget(), Qt::LeftButton, {}, place);
        QTest::mouseRelease(&Widget(), Qt::LeftButton, {}, place);
    }
    static void Key(QKeyCombination key) {
        QTest::keyClick(QApplication::focusWidget(), key.key(), key.keyboardModifiers());
        QCoreApplication::processEvents();
    }
    static void Type(std::string_view text) {
        for (const char key : text)
            QTest::keyClick(QApplication::focusWidget(), key);
    }
    static QComboBox* List() { return qobject_cast<QComboBox*>(QApplication::focusWidget()); }
    // The text of the editor that has the focus, its selection in brackets or its caret as a bar.
    static std::string Shown() {
        QWidget* const focus = QApplication::focusWidget();
        auto* const field = List() != nullptr ? List()->lineEdit() : qobject_cast<QLineEdit*>(focus);
        if (field == nullptr)
            return "none";
        QString text = field->text();
        if (!field->hasSelectedText())
            return text.insert(field->cursorPosition(), '|').toStdString();
        return text.insert(field->selectionEnd(), ']').insert(field->selectionStart(), '[').toStdString();
    }
    std::string TextOf(CGridPos cell) const { return m_grid->GetItemText(cell.row, cell.col).GetString(); }

    Owner m_owner;
    std::optional<ListGrid> m_grid;
};

TEST_F(QtGrid, KeysMoveTheFocusCellAndWhatIsSelected) {
    Open();
    const std::tuple<CGridPos, std::vector<QKeyCombination>, CGridPos, CGridRange> cases[] = {
        {{2, 2}, {Qt::Key_Left, Qt::Key_Up, Qt::Key_Left, Qt::Key_Up}, {1, 1}, {1, 1, 1, 1}},
        {{1, 3}, {Qt::Key_Tab}, {2, 1}, {2, 1, 2, 1}},
        {{2, 1}, {Qt::SHIFT | Qt::Key_Backtab}, {1, 3}, {1, 3, 1, 3}},
        {{3, 2}, {Qt::Key_Home, Qt::Key_Right, Qt::Key_End}, {4, 3}, {4, 3, 4, 3}},
        {{1, 1}, {Qt::Key_Down, Qt::SHIFT | Qt::Key_Down, Qt::SHIFT | Qt::Key_Right}, {3, 2}, {2, 1, 3, 2}},
        {{2, 3}, {Qt::CTRL | Qt::Key_A}, {2, 3}, {1, 1, 4, 3}},
        {{4, 3}, {Qt::Key_Tab, Qt::Key_Down, Qt::Key_Right}, {4, 3}, {5, 4, -1, -1}},
    };
    for (const auto& [from, keys, focus, selected] : cases) {
        m_grid->ClearSelection();
        m_grid->SetFocusCell(from);
        for (const QKeyCombination key : keys)
            Key(key);
        EXPECT_EQ(m_grid->GetFocusCell(), focus);
        EXPECT_EQ(m_grid->GetSelectionBounds(), selected);
        EXPECT_TRUE(Widget().hasFocus());
    }
}

TEST_F(QtGrid, ClicksSelectCellsRowsAndColumns) {
    Open();
    const std::tuple<bool, std::vector<Mouse>, CGridPos, CGridRange, std::size_t> cases[] = {
        {false, {{{2, 2}, {}}}, {2, 2}, {2, 2, 2, 2}, 1},
        {false, {{{2, 2}, {}}, {{4, 3}, Qt::ShiftModifier}}, {4, 3}, {2, 2, 4, 3}, 6},
        {false, {{{2, 2}, {}}, {{4, 3}, Qt::ControlModifier}}, {4, 3}, {2, 2, 4, 3}, 2},
        {false, {{{0, 2}, {}}, {{0, 3}, Qt::ShiftModifier}}, {1, 3}, {1, 2, 4, 3}, 8},
        {false, {{{3, 0}, {}}}, {3, 1}, {3, 1, 3, 3}, 3},
        {false, {{{0, 0}, {}}}, {1, 1}, {1, 1, 4, 3}, 12},
        {true, {{{2, 2}, {}}, {{4, 1}, Qt::ControlModifier}}, {4, 1}, {2, 1, 4, 3}, 6},
    };
    for (const auto& [isList, clicks, focus, bounds, count] : cases) {
        m_grid->SetListMode(isList);
        m_grid->ClearSelection();
        for (const auto& [cell, keys] : clicks)
            Click(MiddleOf(cell), keys);
        EXPECT_EQ(m_grid->GetFocusCell(), focus);
        EXPECT_EQ(m_grid->GetSelectionBounds(), bounds);
        EXPECT_EQ(m_grid->GetSelectedCount(), count);
    }
    m_grid->SetListMode(FALSE);
    Drag(MiddleOf({2, 1}), {MiddleOf({3, 1}), MiddleOf({3, 2})});
    EXPECT_EQ(m_grid->GetSelectionBounds(), CGridRange(2, 1, 3, 2));
}

TEST_F(QtGrid, BordersAreDraggedAndFit) {
    Open();
    MoveMouse(Widget(), {101, 5});
    EXPECT_EQ(Widget().cursor().shape(), Qt::SizeHorCursor);
    Drag({101, 5}, {{110, 5}, {130, 5}});
    Drag({10, 41}, {{10, 55}});
    EXPECT_EQ(CSize(m_grid->GetColumnWidth(1), m_grid->GetRowHeight(1)), CSize(80, 35));
    Drag({129, 5}, {{20, 5}});
    EXPECT_EQ(m_grid->GetColumnWidth(1), 0) << "the pointer is kept in the column";
    m_grid->SetItemText(3, 1, "a text that is longer");
    m_grid->SetColumnWidth(1, 50);
    DoubleClick({101, 5});
    EXPECT_EQ(m_grid->GetColumnWidth(1), m_grid->MeasureCell(3, 1, nullptr).cx);
    EXPECT_EQ(m_grid->GetSelectedCount(), 0U);
}

TEST_F(QtGrid, DraggingOutOfTheWindowScrollsAndSelectsToTheEnd) {
    Open(20);
    QTest::mousePress(&Widget(), Qt::LeftButton, {}, MiddleOf({2, 1}));
    MoveMouse(Widget(), {60, 150}, Qt::LeftButton);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_grid->GetFocusCell().row == 19; }));
    EXPECT_EQ(m_grid->GetSelectionBounds(), CGridRange(2, 1, 19, 1));
    QTest::mouseRelease(&Widget(), Qt::LeftButton, {}, {60, 150});
    EXPECT_EQ(CWnd::GetCapture(), nullptr);
}

TEST_F(QtGrid, WhatBeginsAnEditDecidesWhatIsSelectedInIt) {
    Open();
    const std::pair<std::function<void()>, const char*> cases[] = {
        {std::bind(&Type, "x"), "x|"},
        {std::bind(&Key, Qt::Key_Return), "old|"},
        {std::bind(&Key, Qt::Key_Backspace), "ol|"},
        {std::bind(&QtGrid::Click, this, MiddleOf({1, 1}), Qt::NoModifier), "old|"},
        {std::bind(&QtGrid::DoubleClick, this, MiddleOf({2, 2})), "old|"},
        {std::bind(&Key, Qt::CTRL | Qt::Key_B), "none"},
        {std::bind(&Key, Qt::Key_Escape), "none"},
    };
    for (const auto& [begin, shown] : cases) {
        m_grid->SetFocusCell(1, 1);
        begin();
        EXPECT_EQ(Shown(), shown);
        Key(Qt::Key_Escape);
        EXPECT_TRUE(Widget().hasFocus());
        EXPECT_EQ(TextOf({1, 1}) + TextOf({2, 2}), "oldold");
    }
    m_grid->SetFocusCell(1, 1);
    QInputMethodEvent compose("zhong", {}), commit;
    commit.setCommitString(QString::fromUtf8("中"));
    QCoreApplication::sendEvent(QApplication::focusWidget(), &compose);
    QCoreApplication::sendEvent(QApplication::focusWidget(), &commit);
    EXPECT_EQ(Shown(), "中|") << "the composition goes on in the editor";
}

TEST_F(QtGrid, TabGoesOnInTheNextCellAndEachStepIsTold) {
    Open();
    Click(MiddleOf({2, 1}));
    Type("new");
    Key(Qt::Key_Tab);
    EXPECT_EQ(Shown(), "[old]");
    EXPECT_EQ(m_owner.told,
              "-101 2,1; click of 7; -105 2,1; -102 2,1; -106 2,1; -100 2,1; -101 2,2; -105 2,2; ");
    EXPECT_EQ(TextOf({2, 1}), "new");
    Key(Qt::Key_Down);
    Key(Qt::Key_Return);
    EXPECT_EQ(Shown(), "none");
    EXPECT_EQ(m_grid->GetFocusCell(), CGridPos(3, 2));
}

TEST_F(QtGrid, ListEditorHasRoomForItsItemsAndSelectsByTheBeginning) {
    Open();
    for (const auto& [text, shown] :
         {std::pair("LAKE", "Lakes|"), {"river", "Rivers and their banks|"}, {"and", "and|"}, {"", "|"}}) {
        m_grid->SetItemText(1, 3, text);
        m_grid->SetFocusCell(1, 3);
        Key(Qt::Key_Return);
        EXPECT_EQ(Shown(), shown);
        const auto& font = *m_grid->GetFont()->GetNative();
        const int widest = font.Width("Rivers and their banks");
        EXPECT_EQ(List()->width(), widest + GetSystemMetrics(SM_CXVSCROLL) + 2 * font.Width(" "));
        Key(Qt::Key_Escape);
        EXPECT_EQ(TextOf({1, 3}), text);
    }
    Key(Qt::Key_Return);
    Key(Qt::Key_Down);
    Key(Qt::Key_Tab);
    EXPECT_EQ(TextOf({1, 3}), "Lakes");
    EXPECT_EQ(m_grid->GetFocusCell(), CGridPos(2, 1));
}

TEST_F(QtGrid, CopyTakesWhatIsSelected) {
    Open();
    Click(MiddleOf({2, 2}));
    Click(MiddleOf({4, 1}), Qt::ControlModifier);
    Key(Qt::CTRL | Qt::Key_C);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "\told\r\nold\t\r\n");
    EXPECT_EQ(Shown(), "none");
}

}  // namespace kortavin::testing
