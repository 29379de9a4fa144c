#pragma once

#include <QApplication>
#include <QObject>
#include <QPointer>
#include <map>

#include "kortavin/window/windowrecord.h"

namespace kortavin::qt {

class QtWindow;

// The toolkit on Qt Widgets. Made when the first window is needed, for which a QApplication must exist or be
// possible.
class QtToolkit : public QObject, public window::Toolkit {
  public:
    QtToolkit();  // CResourceException where no window can be opened
    ~QtToolkit() override;

    // Null where another toolkit is in use.
    static QtToolkit* Current();

    std::unique_ptr<window::NativeWindow> MakeWindow(const window::WindowRequest& request,
                                                     window::WindowRecord& window) override;
    std::shared_ptr<const window::NativeFont> MakeFont(const LOGFONT& description) override;
    LOGFONT MessageBoxFont() const override;
    COLORREF SystemColor(int index) const override;
    int SystemMetric(int index) const override;
    CString WheelScrollLines() const override;
    CSize PixelsPerInch() const override;

    CPoint PointerPosition() const override;
    bool IsKeyDown(UINT virtualKey) const override;

    void RequestDispatch() override;
    void RunModal(window::NativeWindow& dialog) override;
    void EndModal(window::NativeWindow& dialog) override;

    int ShowMessageBox(std::string_view text, UINT type, window::NativeWindow* parent) override;
    std::optional<COLORREF> ChooseColor(const window::ColorRequest& request) override;
    std::optional<CString> ChooseFile(const window::FileRequest& request) override;

    void SetClipboardText(std::string_view text) override;

    // While one lives, changes of the keyboard focus are the program's doing and not reported.
    class FocusByProgram {
      public:
        FocusByProgram() { ++s_depth; }
        ~FocusByProgram() { --s_depth; }
        FocusByProgram(const FocusByProgram&) = delete;
        FocusByProgram& operator=(const FocusByProgram&) = delete;
        static bool IsUnderWay() { return s_depth != 0; }

      private:
        static inline constinit int s_depth = 0;
    };

  protected:
    bool event(QEvent* event) override;

  private:
    void Prepare();  // the application that there is now
    void OnFocusChanged(const QWidget* former, const QWidget* now);

    QPointer<QApplication> m_application;
};

}  // namespace kortavin::qt
