#include "desktop/report.h"

#include <QtWidgets/QMessageBox>

#include "desktop/text.h"
#include "kortavin/base/exception.h"

namespace kortavin::desktop {
namespace {

// Of the exception that is being handled.
QString Reason() {
    try {
        throw;
    } catch (const CException& error) {
        return Shown(error.GetErrorMessage());
    } catch (const std::bad_alloc&) {
        return Shown(CMemoryException().GetErrorMessage());
    } catch (const std::exception& error) {
        return QString::fromUtf8(error.what());
    }
}

}  // namespace

bool Reported(QWidget& window, const QString& undone, const std::function<void()>& body) try {
    body();
    return true;
} catch (const std::exception&) {
    QMessageBox box(QMessageBox::Critical, window.window()->windowTitle(), undone, QMessageBox::Ok, &window);
    box.setTextFormat(Qt::PlainText);  // a driver's words may look like tags
    box.setText(undone + QStringLiteral("\n\n") + Reason().trimmed());
    box.exec();
    return false;
}

}  // namespace kortavin::desktop
