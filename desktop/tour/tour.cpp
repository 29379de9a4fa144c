#include "desktop/tour/tour.h"

#include <algorithm>

#include "desktop/colors.h"
#include "desktop/datapage.h"
#include "desktop/gridpage.h"
#include "desktop/mainwindow.h"
#include "desktop/symbolpage.h"
#include "desktop/tour/driver.h"

namespace kortavin::desktop {
namespace {

constinit QtMessageHandler s_formerHandler = nullptr;

void HandleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    constexpr QLatin1String kRemarks[] = {QLatin1String("This plugin does not support "),
                                          QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")};
    const auto isBegun = [&text](QLatin1String remark) { return text.startsWith(remark); };
    if (std::ranges::none_of(kRemarks, isBegun))
        s_formerHandler(type, context, text);
}

}  // namespace

void DropRemarksOfQt() {
    s_formerHandler = qInstallMessageHandler(&HandleMessage);
}

void RunTour(MainWindow& window, const QDir& folder) {
    if (!folder.mkpath(QStringLiteral(".")))
        throw TourFailure("the folder cannot be made: " + folder.path().toStdString());
    UseColors(Colors::Light);
    Driver driver(window, folder);
    window.ShowPage(window.Data());
    UseDataPage(driver, window.Data(), folder);
    UseImport(driver, window.Data(), folder);
    window.ShowPage(window.Symbols());
    UseSymbolPage(driver, window.Symbols());
    ShootSymbolPage(driver, window.Symbols());
    window.ShowPage(window.Table());
    UseGridPage(driver, window.Table());
    ShootGridPage(driver, window.Table());

    UseColors(Colors::Dark);
    driver.SetSuffix(QStringLiteral("-dark"));
    ShootGridPage(driver, window.Table());
    window.ShowPage(window.Symbols());
    ShootSymbolPage(driver, window.Symbols());
    window.ShowPage(window.Data());
    ShootDataPage(driver, window.Data());
    UseImport(driver, window.Data(), folder);
}

}  // namespace kortavin::desktop
