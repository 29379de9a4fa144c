#pragma once

#include "kortavin/qt/window.h"

class QLineEdit;

namespace kortavin::qt {

// An edit box of ours or of the host. It gives back the bytes of the program's text until the user changes
// that. The program counts places of the text in bytes.
class QtEdit : public QtWindow {
  public:
    using QtWindow::QtWindow;

    LRESULT DefaultProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void SetText(std::string_view text) override;
    CString GetText() const override;

  protected:
    // Of the text as the widget counts it.
    struct Range {
        int first = 0;
        int last = 0;
    };

    virtual void Notify(WORD code);
    UINT DialogCode() const override;
    bool Has(DWORD style) const { return (GetWindow().Style() & style) == style; }
    // All without effect, or empty, once the widget is gone.
    virtual QString ShownText() const = 0;  // lines end in CR LF
    virtual void ShowText(const QString& text) = 0;
    virtual Range Selection() const = 0;
    virtual void Select(const Range& range) = 0;  // the caret comes to its end
    virtual void ScrollToCaret() {}

  private:
    LineBreaks Breaks() const;
    void SetSelection(int first, int last);
    LRESULT GetSelection() const;

    KeptText m_text;
};

class QtLineEdit : public QtEdit {
  public:
    QtLineEdit(window::WindowRecord& window, QLineEdit& edit, Ownership ownership);

  protected:
    QString ShownText() const override;
    void ShowText(const QString& text) override;
    Range Selection() const override;
    void Select(const Range& range) override;

  private:
    QLineEdit* Edit() const;
};

// For an edit line of ours: takes a text of any length, and what the user pastes becomes one line.
void PrepareLine(QLineEdit& edit);

// By the style of an edit box.
Qt::Alignment AlignmentOf(DWORD style);

}  // namespace kortavin::qt
