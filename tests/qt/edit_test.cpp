#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>

#include "kortavin/window/combobox.h"
#include "kortavin/window/edit.h"
#include "tests/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr DWORD kLine = WS_CHILD | WS_VISIBLE | WS_TABSTOP, kText = kLine | ES_MULTILINE;
constexpr CRect kPlace(110, 0, 210, 20);

// Notes the keys that its children leave to it.
struct Form : QWidget {
    std::vector<int> keys;

    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
};

// Edit boxes of one and of several lines, ours and the host's, and a combo box with an edit field.
class QtEdits : public QtTest {
  protected:
    QtEdits() {
        m_form.resize(300, 220);
        EXPECT_TRUE(qt::AttachTo(m_parent, m_form));
        m_line.Create(kLine, {0, 0, 100, 20}, &m_parent, 1);
        m_text.Create(kText | ES_WANTRETURN, {0, 30, 100, 100}, &m_parent, 2);
        EXPECT_TRUE(qt::AttachTo(m_hostsLine, *new QLineEdit(&m_form), 3));
        EXPECT_TRUE(qt::AttachTo(m_hostsText, *new QPlainTextEdit(&m_form), 4));
        m_hostsText.MoveWindow({0, 80, 100, 100});
        m_combo.Create(kLine | CBS_DROPDOWN, {0, 110, 100, 200}, &m_parent, 5);
        m_combo.AddString("item");
        EXPECT_TRUE(m_field.SubclassDlgItem(kComboEditId, &m_combo));
        m_field.dialogCode = DLGC_WANTARROWS;
        Activate(m_form);
        m_parent.interest = {WM_COMMAND};
    }
    static CString Type(CWnd& window, std::initializer_list<WPARAM> characters) {
        for (const WPARAM character : characters)
            window.SendMessage(WM_CHAR, character, 1);
        return window.GetWindowText();
    }
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void Compose(const char* preedit, const char* committed) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(committed);
        QCoreApplication::sendEvent(QApplication::focusWidget(), &event);
    }

    EventWindow m_parent, m_field;
    CEdit m_line, m_text, m_hostsLine, m_hostsText;
    CComboBox m_combo;
    Form m_form;  // goes first
    const std::vector<CWnd*> m_all{&m_line, &m_text, &m_hostsLine, &m_hostsText, &m_field};
};

}  // namespace

TEST_F(QtEdits, BytesComeBackUntilTheUserChangesTheText) {
    const CString nbsp("\x81\x30\x84\x32"), broken("a\r\nb\nc\rd\t"), lengthy(std::string(33000, 'x'));
    for (CWnd* const edit : m_all)
        for (const CString& text : {CString("\x80\xFF\xD6"), nbsp, broken, edit == &m_line ? lengthy : ""}) {
            m_parent.record.clear();
            edit->SetWindowText(text);
            EXPECT_EQ(edit->GetWindowText(), text);
            EXPECT_EQ(Type(*edit, {'y', VK_BACK}), text);
            EXPECT_EQ(m_parent.record.size(), 2U) << "of the user's changes";
        }
    m_text.SetWindowText("a\nb\x81\x30\x84\x32");
    EXPECT_EQ(Type(m_text, {'y'}), "ya\r\nb\x81\x30\x84\x32");
}

TEST_F(QtEdits, CharactersAreTypedAndSelectedAsBytes) {
    for (CWnd* const edit : m_all) {
        EXPECT_EQ(Type(*edit, {'a', 0xD6D0, 0x9439FC36, '\t', '\r', 1, 'b', VK_BACK}),
                  "a\xD6\xD0\x94\x39\xFC\x36");
        edit->SetWindowText("a\xD6\xD0\xB9\xFA\xFF");
        const auto select = [edit](int first, int last) {
            edit->SendMessage(EM_SETSEL, static_cast<WPARAM>(first), last);
            return edit->SendMessage(EM_GETSEL);
        };
        EXPECT_EQ(select(5, 2), MakeWParam(1, 5));
        EXPECT_EQ(select(0, -1), MakeWParam(0, 6));
        EXPECT_EQ(select(-1, 0), MakeWParam(6, 6));
        EXPECT_EQ(select(3, 4), MakeWParam(3, 3));
        EXPECT_EQ(Type(*edit, {'x'}), "a\xD6\xD0x\xB9\xFA\\xFF");
    }
    m_text.SetWindowText("a\r\n\xD6\xD0\r\nb");
    m_text.SetSel(3, 7);
    EXPECT_EQ(m_text.SendMessage(EM_GETSEL), MakeWParam(3, 7));
    EXPECT_EQ(Type(m_text, {'x'}), "a\r\nxb");
    CEdit readOnly;
    readOnly.Create(kText | ES_READONLY, kPlace, &m_parent, 6);
    EXPECT_EQ(Type(readOnly, {'a'}), "");
}

TEST_F(QtEdits, DialogGetsItsKeysAndEnterBreaksLinesWhereItIsWanted) {
    CEdit plain;
    plain.Create(kText, kPlace, &m_parent, 6);
    for (CWnd* const edit : std::vector<CWnd*>{&m_line, &plain, &m_text, &m_combo}) {
        edit->SetFocus();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_A})
            Key(key);
        EXPECT_EQ(edit->GetWindowText(), edit == &m_text ? "\r\na" : "a");
        const CWnd* const former = CWnd::GetFocus();
        Key(Qt::Key_Tab);
        EXPECT_NE(CWnd::GetFocus(), former);
    }
    constexpr int kReturn = Qt::Key_Return, kEscape = Qt::Key_Escape;
    EXPECT_EQ(m_form.keys, (std::vector{kReturn, kEscape, kReturn, kEscape, kEscape, kReturn, kEscape}));
    plain.SetFocus();
    Key(Qt::Key_Return, Qt::ControlModifier);
    m_text.SetFocus();
    Key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(plain.GetWindowText() + m_text.GetWindowText(), "a\r\n\r\na\r\n");
}

TEST_F(QtEdits, WhatIsPastedBecomesOneLine) {
    QApplication::clipboard()->setText("x\ty\n\nz\n");
    m_line.SetWindowText("a\r\nb");
    m_line.SetSel(3, 3);
    dynamic_cast<QLineEdit&>(WidgetOf(m_line)).paste();
    EXPECT_EQ(m_line.GetWindowText(), "a\r\nx y  zb") << "the program's own break stays";
    EXPECT_EQ(m_line.SendMessage(EM_GETSEL), MakeWParam(9, 9));
    EXPECT_EQ(m_parent.record, (Record{{WM_COMMAND, MakeWParam(1, EN_CHANGE)}}));
    dynamic_cast<QPlainTextEdit&>(WidgetOf(m_text)).paste();
    EXPECT_EQ(m_text.GetWindowText(), "x\ty\r\n\r\nz\r\n");
}

TEST_F(QtEdits, EditorOverACellCoversItAndTakesTheCompositionThatOpenedIt) {
    CEdit edit;
    CComboBox combo;
    EventWindow cell;
    cell.Open(kPlace, &m_parent, 6);
    cell.script = [&](UINT message) {
        if (message == WM_IME_STARTCOMPOSITION) {
            edit.Create(kLine | WS_BORDER, kPlace, &m_parent, 7);
            edit.SetFocus();
        }
        return std::nullopt;
    };
    cell.SetFocus();
    Compose("zhong", "");
    EXPECT_EQ(edit.GetWindowText(), "");
    Compose("", "中€");
    EXPECT_EQ(edit.GetWindowText(), "\xD6\xD0\xA2\xE3");
    combo.Create(kLine | WS_BORDER | CBS_DROPDOWN, {110, 20, 210, 100}, &m_parent, 8);
    combo.SetItemHeight(-1, 20);
    m_form.setPalette(QPalette(Qt::red));
    const QImage picture = PictureOf(m_form).copy(110, 0, 70, 41);
    for (const int y : {0, 19, 20, 39, 40})
        EXPECT_EQ(picture.pixelColor(0, y) == Qt::red, y == 40) << "row " << y;
}

TEST_F(QtEdits, KeysAndFocusOfAnEditableComboAreItsFields) {
    m_combo.SetFocus();
    ASSERT_EQ(QApplication::focusWidget(), &WidgetOf(m_combo));
    EXPECT_EQ(CWnd::GetFocus(), &m_field);
    m_field.interest = {WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_LBUTTONDOWN, WM_SETFOCUS, WM_KILLFOCUS};
    Key(Qt::Key_X);
    EXPECT_EQ(m_field.TakeRecord(), (Record{{WM_KEYDOWN, 'X'}, {WM_CHAR, 'x'}, {WM_KEYUP, 'X'}}));
    Key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(m_field.TakeRecord().at(1), std::pair(WM_KEYDOWN, WPARAM{VK_LEFT}));
    Compose("", "中");
    EXPECT_EQ(m_combo.GetWindowText(), "\xD6\xD0x");
    m_field.record.clear();
    m_combo.ShowDropDown();
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    auto& line = dynamic_cast<QLineEdit&>(WidgetOf(m_field));
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, {5, 5}, m_form.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&line, &menu);
    ASSERT_NE(qobject_cast<QMenu*>(QApplication::activePopupWidget()), nullptr);
    QApplication::activePopupWidget()->close();
    EXPECT_THAT(m_field.record, IsEmpty());
    m_line.SetFocus();
    QTest::mouseClick(&line, Qt::LeftButton);
    EXPECT_EQ(m_field.record.size(), 3U);
    EXPECT_EQ(m_field.record[1], std::pair(WM_SETFOCUS, ParamOf(m_line)));
    EXPECT_EQ(m_field.record[2], std::pair(WM_LBUTTONDOWN, WPARAM{MK_LBUTTON}));
}

TEST_F(QtEdits, EditableComboSelectsWhatTheUserSelectsOnly) {
    m_combo.SetFocus();
    m_combo.SetWindowText("item");
    Key(Qt::Key_Return);
    m_line.SetFocus();
    EXPECT_EQ(m_combo.GetCurSel(), CB_ERR);
    m_combo.SetFocus();
    m_parent.record.clear();
    Key(Qt::Key_Down);
    EXPECT_EQ(m_parent.record, (Record{{WM_COMMAND, MakeWParam(5, CBN_SELCHANGE)}}));
    EXPECT_EQ(Type(m_field, {'!'}), "!") << "over what was selected";
}

TEST_F(QtEdits, FieldMayGoBeforeItsCombo) {
    m_field.UnsubclassWindow();
    EXPECT_TRUE(m_field.SubclassDlgItem(kComboEditId, &m_combo)) << "it is the combo's, not a host's";
    m_field.script = [&](UINT message) {
        return message == WM_KEYDOWN && m_field.DestroyWindow() ? std::optional<LRESULT>(0) : std::nullopt;
    };
    for (const Qt::Key key : {Qt::Key_A, Qt::Key_B}) {
        m_combo.SetFocus();
        Key(key);
    }
    EXPECT_EQ(m_combo.GetWindowText(), "b") << "the first one took the field along";
    m_combo.DestroyWindow();
}

}  // namespace kortavin::testing
