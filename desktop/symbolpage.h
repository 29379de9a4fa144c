#pragma once

#include <QtWidgets/QWidget>

#include "desktop/preview.h"
#include "kortavin/symbology/selareastyle.h"
#include "kortavin/symbology/selectcolor.h"
#include "kortavin/symbology/sellinestyle.h"
#include "kortavin/symbology/selsymstyle.h"
#include "kortavin/symbology/seltextsymbol.h"

class QFormLayout;

namespace kortavin::desktop {

// The page "符号": the five pickers on Qt's own widgets, and a preview that follows them.
class SymbolPage : public QWidget {
  public:
    SymbolPage();

    Symbols Chosen() const;

    // The pickers tell nobody of a change, but every change is painted.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* MakeForm();
    // A row's text ends in the key that takes to it. Widgets are found by `name`, a swatch's button by that
    // and "Button".
    void AddCombo(QFormLayout& form, const QString& text, char key, CComboBox& picker, const char* name);
    void AddSwatch(QFormLayout& form, const QString& text, char key, CSelectColor& picker, const char* name);
    void AddPointColors(QFormLayout& form);
    QWidget* MakePreview();
    void SetStartingSymbols();
    void Follow();

    CSelLineStyle m_lineStyle;
    CSelectColor m_lineColor;
    CSelAreaStyle m_areaStyle;
    CSelectColor m_areaColor;
    CSelectColor m_areaBackground;
    CSelectColor m_areaOutline;
    CSelSymStyle m_point;
    CSelTextSymbol m_textSymbol;
    CSelectColor m_textColor;
    Preview m_preview;
    bool m_followIsQueued = false;
};

}  // namespace kortavin::desktop
