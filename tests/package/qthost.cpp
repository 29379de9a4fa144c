// A host with widgets of its own: it puts pickers on them and beside them.
#include "areaform.h"

#include <kortavin/symbology/sellinestyle.h>

#include <QtWidgets/QApplication>

namespace {

bool Shows(const QWidget* combo, const QWidget& form, int count, int index) {
    const auto* box = qobject_cast<const QComboBox*>(combo);
    return box && box->parentWidget() == &form && box->count() == count && box->currentIndex() == index;
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    AreaForm form;
    auto* attached = form.findChild<QComboBox*>();
    CSelLineStyle created;
    if (!created.Create(WS_CHILD | WS_VISIBLE | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED, {0, 40, 200, 64},
                        kortavin::qt::WindowOf(&form), 1))
        return 1;
    created.SetStyle(2);
    form.show();
    return Shows(attached, form, 7, 4) && Shows(kortavin::qt::WidgetOf(created), form, 5, 2) ? 0 : 2;
}
