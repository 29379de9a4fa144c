#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>

#include "framework/window/combobox.h"
#include "framework/window/edit.h"
#include "tests/framework/qt/qttest.h"

namespace kortavin::testing {
namespace {

constexpr DWORD kLine = WS_CHILD | WS_VISIBLE | WS_TABSTOP, kText = kLine | ES_MULTILINE;
constexpr WPARAM kZhong = 0xD6D0;

// Notes the keys that reach it from its children.
struct Form : QWidget {
    std::vector<int> keys;

    void keyPressEvent(QKeyEvent* event) override { keys.push_back(event->key()); }
};

class QtEdits : public QtTest {
  protected:

    QtEdits() {
        m_form.resize(300, 200);
        EXPECT_TRUE(qt::AttachTo(m_parent, m_form));
        m_parent.interest = {WM_COMMAND};
        m_line.Create(kLine, {0, 0, 100, 20}, &m_parent, 1);
        m_text.Create(kText | ES_WANTRETURN, {0, 30, 100, 100}, &m_parent, 2);
        Activate(m_form);
    }

    static void Type(CWnd& window, std::initializer_list<WPARAM> characters) {
        for (const WPARAM character : characters)
            window.SendMessage(WM_CHAR, character, 1);
    }
    static std::pair<int, int> SelectionOf(CEdit& edit) {
        std::pair<int, int> ends;
        edit.GetSel(ends.first, ends.second);
        return ends;
    }
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    static void Compose(QWidget& widget, const QString& preedit, const QString& committed) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(committed);
        QCoreApplication::sendEvent(&widget, &event);
    }

    Form m_form;
    TestWindow m_parent;
    CEdit m_line, m_text;
};

// A combo box with an edit field, and what hears the field's messages.
class QtEditableCombo : public QtEdits {
  protected:
    QtEditableCombo() {
        m_combo.Create(kLine | CBS_DROPDOWN, {110, 0, 210, 100}, &m_parent, 3);
        m_combo.AddString("item");
        EXPECT_TRUE(m_field.SubclassDlgItem(kComboEditId, &m_combo));
    }
    QComboBox& Box() { return dynamic_cast<QComboBox&>(WidgetOf(m_combo)); }

    CComboBox m_combo;
    EventWindow m_field;
};

}  // namespace

TEST_F(QtEdits, BytesComeBackUntilTheUserChangesTheText) {
    const CString kLong(std::string(33000, 'x'));
    for (const CString& text :
         {CString("\x80 \xFF\xD6"), CString("a\r\nb\nc\rd\t"), CString("\x81\x30\x84\x32"), kLong})
        for (CEdit* const edit : {&m_line, &m_text}) {
            edit->SetWindowText(text);
            EXPECT_EQ(edit->GetWindowText(), text);
            Type(*edit, {'y', VK_BACK});
            EXPECT_EQ(edit->GetWindowText(), text);
        }
    m_parent.record.clear();
    m_text.SetWindowText("a\r\nb\n\x81\x30\x84\x32");
    EXPECT_THAT(m_parent.record, IsEmpty()) << "the user changed nothing";
    Type(m_text, {'y'});
    EXPECT_EQ(m_text.GetWindowText(), "ya\r\nb\r\n\x81\x30\x84\x32");
    EXPECT_EQ(m_parent.record, (Record{{WM_COMMAND, MakeWParam(2, EN_CHANGE)}}));
}

TEST_F(QtEdits, CharactersAreTypedAndControlCharactersInsertNothing) {
    for (CEdit* const edit : {&m_line, &m_text}) {
        Type(*edit, {'a', kZhong, 0x9439FC36, '\t', '\r', 1, 0x1B, 'b', VK_BACK});
        EXPECT_EQ(edit->GetWindowText(), "a\xD6\xD0\x94\x39\xFC\x36");
        edit->SendMessage(WM_KEYDOWN, VK_HOME);
        edit->SendMessage(WM_KEYDOWN, VK_DELETE);
        EXPECT_EQ(edit->GetWindowText(), "\xD6\xD0\x94\x39\xFC\x36");
        CEdit readOnly;
        readOnly.Create(edit->GetStyle() | ES_READONLY, {0, 0, 10, 10}, &m_parent, 4);
        Type(readOnly, {'a'});
        EXPECT_EQ(readOnly.GetWindowText(), "");
    }
}

TEST_F(QtEdits, SelectionCountsBytes) {
    const auto check = [](CEdit& edit, const QString& expected, int first, int last,
                          std::pair<int, int> ends) {
        edit.SetSel(first, last);
        auto* const line = qobject_cast<QLineEdit*>(&WidgetOf(edit));
        const QString shown = line != nullptr
                                  ? line->selectedText()
                                  : dynamic_cast<QPlainTextEdit&>(WidgetOf(edit)).textCursor().selectedText();
        EXPECT_EQ(shown, expected);
        EXPECT_EQ(SelectionOf(edit), ends);
    };
    for (CEdit* const edit : {&m_line, &m_text}) {
        edit->SetWindowText(
            "a\xD6\xD0"
            "b\xB9\xFA\xFF");
        check(*edit, QString::fromUtf8("中b"), 1, 4, {1, 4});
        check(*edit, QString::fromUtf8("中b"), 4, 2, {1, 4});
        check(*edit, QString::fromUtf8("b国\\xFF"), 3, -1, {3, 7});
        check(*edit, "", -1, 0, {7, 7});
        check(*edit, "", 5, 5, {4, 4});
    }
    m_text.SetWindowText("a\r\n\xD6\xD0\r\nb");
    check(m_text, QString::fromUtf8("中\u2029b"), 3, 99, {3, 8});
    Type(m_text, {'x'});
    EXPECT_EQ(m_text.GetWindowText(), "a\r\nx");
    EXPECT_EQ(SelectionOf(m_text), std::pair(4, 4));
}

TEST_F(QtEdits, DialogGetsItsKeysAndEnterBreaksLinesWhereItIsWanted) {
    CEdit plain;
    plain.Create(kText, {0, 110, 100, 150}, &m_parent, 4);
    for (CEdit* const edit : {&m_line, &plain, &m_text}) {
        edit->SetFocus();
        m_form.keys.clear();
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape, Qt::Key_A})
            Key(key);
        if (edit == &m_text)
            EXPECT_EQ(m_form.keys, (std::vector<int>{Qt::Key_Escape}));
        else
            EXPECT_EQ(m_form.keys, (std::vector<int>{Qt::Key_Return, Qt::Key_Escape}));
        EXPECT_EQ(edit->GetWindowText(), edit == &m_text ? "\r\na" : "a");
        Key(Qt::Key_Tab);
        EXPECT_NE(CWnd::GetFocus(), edit);
    }
    plain.SetFocus();
    Key(Qt::Key_Return, Qt::ControlModifier);
    m_text.SetFocus();
    Key(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(plain.GetWindowText(), "a\r\n");
    EXPECT_EQ(m_text.GetWindowText(), "\r\na\r\n");
}

TEST_F(QtEdits, WhatIsPastedBecomesOneLine) {
    auto& line = dynamic_cast<QLineEdit&>(WidgetOf(m_line));
    m_line.SetWindowText("a\r\nb");
    m_parent.record.clear();
    m_line.SetSel(3, 3);
    QApplication::clipboard()->setText("x\ty\n\nz\n");
    line.paste();
    EXPECT_EQ(m_line.GetWindowText(), "a\r\nx y  zb") << "the program's own break stays";
    EXPECT_EQ(SelectionOf(m_line), std::pair(9, 9));
    EXPECT_EQ(m_parent.record, (Record{{WM_COMMAND, MakeWParam(1, EN_CHANGE)}}));
    m_text.SetFocus();
    dynamic_cast<QPlainTextEdit&>(WidgetOf(m_text)).paste();
    EXPECT_EQ(m_text.GetWindowText(), "x\ty\r\n\r\nz\r\n");
}

TEST_F(QtEdits, ItsMenuTakesNoFocus) {
    m_line.SetFocus();
    m_parent.record.clear();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {5, 5}, m_form.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&WidgetOf(m_line), &event);
    QWidget* const menu = QApplication::activePopupWidget();
    ASSERT_NE(qobject_cast<QMenu*>(menu), nullptr);
    menu->close();
    EXPECT_EQ(CWnd::GetFocus(), &m_line);
    EXPECT_THAT(m_parent.record, IsEmpty());
    m_text.SetFocus();
    EXPECT_EQ(m_parent.record,
              (Record{{WM_COMMAND, MakeWParam(1, EN_KILLFOCUS)}, {WM_COMMAND, MakeWParam(2, EN_SETFOCUS)}}));
}

TEST_F(QtEdits, CompositionGoesOnInTheEditorThatItOpens) {
    EventWindow cell;
    cell.Open({110, 0, 210, 20}, &m_parent, 4);
    CEdit editor;
    cell.script = [&](UINT message) {
        if (message == WM_IME_STARTCOMPOSITION) {
            editor.Create(kLine | WS_BORDER, {110, 0, 210, 20}, &m_parent, 5);
            editor.SetFocus();
        }
        return std::nullopt;
    };
    cell.SetFocus();
    Compose(WidgetOf(cell), "zhong", "");
    ASSERT_EQ(QApplication::focusWidget(), &WidgetOf(editor));
    EXPECT_EQ(editor.GetWindowText(), "");
    Compose(WidgetOf(editor), "", QString::fromUtf8("中€"));
    EXPECT_EQ(editor.GetWindowText(), "\xD6\xD0\xA2\xE3");
}

TEST_F(QtEdits, EditorsOverACellAreOpaqueAndAsHighAsTheCell) {
    m_form.setPalette(QPalette(Qt::red));
    CEdit edit;
    CComboBox combo;
    edit.Create(kLine | WS_BORDER, {110, 0, 210, 20}, &m_parent, 4);
    combo.Create(kLine | WS_BORDER | CBS_DROPDOWN, {110, 40, 210, 140}, &m_parent, 5);
    combo.SetItemHeight(-1, 20);
    const QImage picture = PictureOf(m_form);
    for (const QPoint corner : {QPoint(110, 0), QPoint(110, 40)})
        for (const QPoint offset : {QPoint(0, 0), QPoint(70, 0), QPoint(0, 19), QPoint(70, 19)})
            EXPECT_NE(picture.pixelColor(corner + offset), Qt::red) << corner.y() << "+" << offset.y();
    EXPECT_EQ(picture.pixelColor(110, 20), Qt::red);
    EXPECT_EQ(picture.pixelColor(110, 60), Qt::red);
}

TEST_F(QtEdits, HostsEditsAreTheirsAgain) {
    QLineEdit line;
    QPlainTextEdit text;
    {
        CEdit first, second;
        ASSERT_TRUE(qt::AttachTo(first, line, 6));
        ASSERT_TRUE(qt::AttachTo(second, text, 7));
        for (CEdit* const edit : {&first, &second}) {
            edit->SetWindowText("\x80");
            EXPECT_EQ(edit->GetWindowText(), "\x80");
            Type(*edit, {'a', '\t'});
            EXPECT_EQ(edit->GetWindowText(), "a\xA2\xE3");
        }
        QTest::keyClick(&text, Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(second.GetWindowText(), "a\r\n\xA2\xE3");
    }
    QTest::keyClick(&line, 'b');
    EXPECT_EQ(line.text(), QString::fromUtf8("ab€"));
}

TEST_F(QtEditableCombo, KeysAndFocusOfItsBoxAreTheFields) {
    m_combo.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), &m_field);
    ASSERT_EQ(QApplication::focusWidget(), &Box());
    m_field.interest = {WM_KEYDOWN, WM_KEYUP, WM_CHAR, WM_LBUTTONDOWN, WM_SETFOCUS, WM_KILLFOCUS};
    m_field.dialogCode = DLGC_WANTARROWS;
    Key(Qt::Key_A);
    Key(Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(
        m_field.TakeRecord(),
        (Record{
            {WM_KEYDOWN, 'A'}, {WM_CHAR, 'a'}, {WM_KEYUP, 'A'}, {WM_KEYDOWN, VK_CONTROL},
{WM_KEYDOWN, VK_LEFT}, {WM_KEYUP, VK_LEFT},{WM_KEYUP, VK_CONTROL}}));
    Compose(Box(), "zhong", "");
    Compose(Box(), "", QString::fromUtf8("中"));
    EXPECT_EQ(m_combo.GetWindowText(),
              "\xD6\xD0"
              "a");
    EXPECT_EQ(m_field.GetWindowText(),
              "\xD6\xD0"
              "a");
    EXPECT_EQ(m_field.SendMessage(EM_GETSEL), 2 | 2 << 16);
    m_field.record.clear();

    m_combo.ShowDropDown();
    EXPECT_TRUE(m_combo.GetDroppedState());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    EXPECT_FALSE(m_combo.GetDroppedState());
    EXPECT_THAT(m_field.record, IsEmpty());
    QTest::mouseClick(Box().lineEdit(), Qt::LeftButton);
    m_line.SetFocus();
    QTest::mouseClick(Box().lineEdit(), Qt::LeftButton);
    EXPECT_EQ(CWnd::GetFocus(), &m_field);
    EXPECT_EQ(m_field.record, (Record{{WM_LBUTTONDOWN, MK_LBUTTON},
                                      {WM_KILLFOCUS, ParamOf(m_line)},
                                      {WM_SETFOCUS, ParamOf(m_line)},
                                      {WM_LBUTTONDOWN, MK_LBUTTON}}));
    Key(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_NE(CWnd::GetFocus(), &m_field);
}

TEST_F(QtEditableCombo, SelectsOnlyWhatTheUserSelects) {
    m_combo.SetFocus();
    m_combo.SetWindowText("item");
    m_parent.record.clear();
    Key(Qt::Key_Return);
    m_line.SetFocus();
    EXPECT_EQ(m_combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(m_combo.GetCount(), 1);
    m_combo.SetFocus();
    m_parent.record.clear();
    Key(Qt::Key_Down);
    EXPECT_EQ(m_combo.GetCurSel(), 0);
    EXPECT_EQ(m_parent.record, (Record{{WM_COMMAND, MakeWParam(3, CBN_SELCHANGE)}}));
    m_field.SendMessage(WM_CHAR, '!', 1);
    EXPECT_EQ(m_combo.GetWindowText(), "!");
}

TEST_F(QtEditableCombo, MayGoInAnyOrder) {
    m_combo.SetFocus();
    m_field.DestroyWindow();
    EXPECT_EQ(m_combo.GetDlgItem(kComboEditId), nullptr);
    m_combo.SetFocus();
    Key(Qt::Key_A);
    EXPECT_EQ(m_combo.GetWindowText(), "a");
    CComboBox second;
    EventWindow field;
    second.Create(kLine | CBS_DROPDOWN, {110, 0, 210, 100}, &m_parent, 3);
    field.SubclassDlgItem(kComboEditId, &second);
    field.script = [&](UINT message) {
        if (message == WM_KEYDOWN)
            second.DestroyWindow();
        return std::nullopt;
    };
    second.SetFocus();
    Key(Qt::Key_B);
    EXPECT_EQ(field.m_hWnd, nullptr);
    second.Create(kLine | CBS_DROPDOWN, {110, 0, 210, 100}, &m_parent, 3);
    second.SetFocus();
    delete &WidgetOf(second);
    EXPECT_EQ(second.m_hWnd, nullptr);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

}  // namespace kortavin::testing
