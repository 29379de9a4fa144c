#pragma once

#include "kortavin/qt/edit.h"

namespace kortavin::qt {

class QtCombo;

// The edit field of a combo box. Qt keeps the focus at the combo box, where keys and input methods arrive
// too: that hands them over, and what the field leaves to its widget is the combo box's own again.
class ComboField final : public QtLineEdit {
  public:
    ComboField(window::WindowRecord& window, QtCombo& combo, QLineEdit& edit);

    static bool IsConcernedBy(const QEvent& event);
    bool TakeEvent(QEvent& event);  // true: the combo box has nothing left to do

    void SetText(std::string_view text) override;
    CString GetText() const override;

  protected:
    void Notify(WORD) override {}  // the combo box does, with its own codes
    void HandToWidget(QEvent& event) override;

  private:
    QtCombo& m_combo;  // outlives this
};

}  // namespace kortavin::qt
