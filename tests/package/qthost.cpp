// A host with widgets of its own: it puts a picker beside them and reads the user's choice.
#include <kortavin/qt/qtwidgets.h>
#include <kortavin/symbology/sellinestyle.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QWidget form;
    QComboBox attached(&form);
    CSelLineStyle onWidget, created;
    if (!kortavin::qt::AttachTo(onWidget, attached) ||
        !created.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, {0, 40, 200, 64},
                        kortavin::qt::WindowOf(&form), 1))
        return 1;
    form.show();
    for (CSelLineStyle* picker : {&onWidget, &created}) {
        picker->SetStyle(2);
        auto* combo = qobject_cast<QComboBox*>(kortavin::qt::WidgetOf(*picker));
        if (!combo || combo->parentWidget() != &form || combo->count() != 5 || combo->currentIndex() != 2)
            return 2;
    }
    return 0;
}
