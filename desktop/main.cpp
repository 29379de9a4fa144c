#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string>

#include "desktop/colors.h"
#include "desktop/datapage.h"
#include "desktop/mainwindow.h"
#include "desktop/tour/tour.h"
#include "kortavin/base/codepage.h"
#include "kortavin/base/exception.h"
#include "kortavin/window/toolkit.h"

namespace kortavin::desktop {
namespace {

constexpr int kFailed = 1;
constexpr int kUsage = 2;
constexpr int kNoDisplay = 3;

int Fail(std::string_view reason, int code = kFailed) {
    std::cerr << "kortavin-desktop: " << reason << '\n';
    return code;
}

struct Arguments {
    std::optional<std::string> database;
    std::optional<std::string> tourFolder;
    bool dark = false;
};

void Declare(CLI::App& app, Arguments& arguments) {
    app.set_help_flag("-h,--help", "Tell how it is used and exit");
    app.set_version_flag("--version", "kortavin-desktop " KORTAVIN_VERSION, "Tell the version and exit");
    auto* tour =
        app.add_option(
               "--tour", arguments.tourFolder,
               "Without a person and a display: use every page as one would, and leave pictures of it "
               "in FOLDER, in light and in dark colours")
            ->option_text("FOLDER")
            ->check([](const std::string& folder) { return folder.empty() ? "FOLDER is empty" : ""; });
    app.add_option(
           "DATABASE", arguments.database,
           "Opened at the start: an SQLite file, or an ODBC connection string; the environment variable "
           "KORTAVIN_CONNECTION where none is given")
        ->type_name("")
        ->excludes(tour);
    app.add_flag("--dark", arguments.dark, "Dark colours, whatever those of the desktop are")->excludes(tour);
    app.footer(
        "Other users can read a program's arguments in the process list: a connection string with a "
        "password\n"
        "belongs into the environment variable.\n\n"
        "Exit code: 0 done, 1 a step of the tour failed, 2 usage, 3 there is no display; reasons are on the "
        "standard error.");
}

std::optional<std::string> DatabaseToOpen(const Arguments& arguments) {
    const char* const inherited = std::getenv("KORTAVIN_CONNECTION");
    const bool isInherited = !arguments.database && inherited && *inherited;
    return isInherited ? inherited : arguments.database;
}

// Not by an application object of its own: the library's looks for a display first, without which Qt would
// end the process.
int ShowWindow(const Arguments& arguments) {
    if (arguments.tourFolder && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (arguments.tourFolder)
        DropRemarksOfQt();
    window::RequireToolkit();
    QApplication::setQuitOnLastWindowClosed(true);
    if (arguments.dark)
        UseColors(Colors::Dark);
    MainWindow window;
    if (arguments.tourFolder)
        return RunTour(window, QDir(QString::fromLocal8Bit(*arguments.tourFolder))), 0;
    window.show();
    if (const auto database = DatabaseToOpen(arguments))  // above the window, should it fail
        QTimer::singleShot(0, &window, [&window, source = QString::fromLocal8Bit(*database)] {
            window.Data().Open(source);
        });
    return QApplication::exec();
}

int Run(int argc, char** argv) {
    CLI::App app("Query databases with the windows of the kortavin library, and try out its other controls",
                 "kortavin-desktop");
    Arguments arguments;
    Declare(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        return Fail(error.what() + std::string("\n'kortavin-desktop --help' tells how it is used."), kUsage);
    }
    return ShowWindow(arguments);
}

}  // namespace
}  // namespace kortavin::desktop

int main(int argc, char** argv) {
    using kortavin::desktop::Fail;
    try {
        return kortavin::desktop::Run(argc, argv);
    } catch (const CResourceException& error) {
        return Fail(kortavin::base::GbkForDisplay(error.GetErrorMessage().View()),
                    kortavin::desktop::kNoDisplay);
    } catch (const std::exception& error) {
        return Fail(error.what());
    }
}
