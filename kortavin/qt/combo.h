#pragma once

#include <QComboBox>
#include <QCompleter>
#include <memory>

#include "kortavin/qt/combodelegate.h"
#include "kortavin/qt/combofield.h"
#include "kortavin/qt/window.h"
#include "kortavin/window/styles.h"

namespace kortavin::qt {

// A combo box of ours or of the host. Items keep the bytes of their texts, and so does the edit field until
// the user changes it.
class QtCombo final : public QtWindow, public window::NativeCombo {
  public:
    QtCombo(window::WindowRecord& window, QComboBox& combo, Ownership ownership);
    ~QtCombo() override;

    window::NativeCombo* AsCombo() override { return this; }
    QtWindow& KeyReceiver() override;
    void SetText(std::string_view text) override;  // of the edit field, if there is one
    CString GetText() const override;
    void SetFont(const CFont& font) override;
    void TakeFont();

    int Count() const override;
    void Insert(int index, std::string_view text) override;
    void Remove(int index) override;
    void Clear() override;
    CString ItemText(int index) const override;
    int Selection() const override;
    void Select(int index) override;
    void SetItemHeight(int index, int height) override;
    int ItemHeight(int index) const override;
    void SetDroppedWidth(int width) override;
    void ShowList(bool open) override;
    bool IsListOpen() const override;
    void SetItemAccessibleName(int index, std::string_view name) override;
    void SetEditSelection(int first, int last) override;
    std::unique_ptr<window::NativeWindow> MakeEditField(window::WindowRecord& field) override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void HandToWidget(QEvent& event) override;
    UINT DialogCode() const override { return DLGC_WANTARROWS; }
    void Resize(QSize size) override;

  private:
    QComboBox* Combo() const;  // null once it is gone, or half gone
    bool IsOwnerDrawn() const { return (GetWindow().Style() & CBS_OWNERDRAWFIXED) != 0; }
    // Covers a cell of a grid: it is as high as its field, and unframed.
    bool IsCellEditor() const { return m_isOurs && !IsOwnerDrawn() && m_fieldHeight > 0; }
    void Connect(QComboBox& combo);
    void TakeCompleter(QComboBox& combo);
    void GiveBackCompleter(QComboBox& combo);
    void UseDelegate();
    void Notify(WORD code);
    void OnActivated();
    template <class Change>
    void ChangeItems(QComboBox& combo, Change change);
    void FollowFieldHeight();
    void Announce();
    int ClosedHeight(const QComboBox& combo) const;
    void PaintClosedBox(QComboBox& combo);

    // What a host's combo box gets back.
    struct Former {
        QPointer<QAbstractItemDelegate> delegate;
        QPointer<QCompleter> completer;
        QComboBox::InsertPolicy insertPolicy = QComboBox::NoInsert;
        int minimumHeight = 0;
        int listWidth = 0;
        QString accessibleDescription;
        bool isLinesCompleter = false;  // the edit line owned it
    };

    bool m_isOurs;
    Former m_former;
    std::unique_ptr<ComboDelegate> m_delegate;
    QPointer<ComboField> m_field;
    KeptText m_editText;
    int m_fieldHeight = 0;  // 0: not set
    int m_itemHeight = 0;
    bool m_hasItemNames = false;
    bool m_isSettingFont = false;
};

}  // namespace kortavin::qt
