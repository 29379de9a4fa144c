#include "demo/tour.h"

#include "demo/colors.h"
#include "demo/driver.h"
#include "demo/mainwindow.h"
#include "demo/symbolpage.h"

namespace kortavin::demo {

void RunTour(MainWindow& window, const QDir& folder) {
    if (!folder.mkpath(QStringLiteral(".")))
        throw TourFailure("the folder cannot be made: " + folder.path().toStdString());
    UseColors(Colors::Light);
    Driver driver(window, folder);
    window.ShowPage(window.Symbols());
    UseSymbolPage(driver, window.Symbols());
    ShootSymbolPage(driver, window.Symbols());

    UseColors(Colors::Dark);
    driver.SetSuffix(QStringLiteral("-dark"));
    ShootSymbolPage(driver, window.Symbols());
}

}  // namespace kortavin::demo
