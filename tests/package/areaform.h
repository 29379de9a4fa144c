#include <kortavin/qt/qtwidgets.h>
#include <kortavin/symbology/selareastyle.h>

#include <QtWidgets/QComboBox>

// A form of the host's.
class AreaForm : public QWidget {
  public:
    AreaForm() {
        kortavin::qt::AttachTo(m_style, *m_combo);
        m_style.SetStyle(4);
    }

  private:
    QComboBox* m_combo = new QComboBox(this);  // or one that Qt Designer has put there
    CSelAreaStyle m_style;
};
