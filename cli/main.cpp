#include <fcntl.h>
#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <new>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/text.h"
#include "kortavin/base/codepage.h"

namespace kortavin::cli {
namespace {

constexpr int kRefused = 1;
constexpr int kUsage = 2;

// A file opened later must not get the number of a standard stream that was closed, or messages would end up
// in it. What stands in for a closed stream refuses to be used.
void OccupyStandardStreams() {
    for (const auto& [descriptor, mode] :
         {std::pair{0, O_WRONLY}, std::pair{1, O_RDONLY}, std::pair{2, O_RDONLY}})
        if (fcntl(descriptor, F_GETFD) < 0 && open("/dev/null", mode) < 0)
            std::_Exit(kRefused);
}

// Failing writes are to be reported, not to end the process.
void IgnoreWriteSignals() {
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void RequireUtf8(std::string_view text, std::string_view what) {
    if (!CString::FromUtf8(text))
        throw UsageFailure(fmt::format("{} is not UTF-8: {}", what, text));
}

std::string UsageText(const CLI::App& app, const CLI::ParseError& error) {
    const std::vector<std::string> unknown = app.remaining();
    const bool noCommand = app.get_subcommands().empty() && !unknown.empty();
    return noCommand ? "unknown command or option " + unknown.front() : error.what();
}

void Build(CLI::App& app) {
    app.require_subcommand(1);
    app.set_version_flag("--version", "kortavin " KORTAVIN_VERSION, "Tell the version and exit");
    app.set_help_flag("-h,--help", "Tell how it is used and exit");
    AddSampleCommand(app);
    AddCatalogCommands(app);
    AddComposeCommand(app);
    AddStatementCommands(app);
    AddExportCommand(app);
    AddSavedQueryCommands(app);
    AddTextCommands(app);
    AddWindowCommands(app);
    app.footer(
        "'kortavin COMMAND --help' has the details and examples. Texts on the terminal are UTF-8.\n"
        "Exit code: 0 done, 1 the data source or a file refused (the reason is on the standard error), 2 "
        "usage.");
}

int Run(int argc, char** argv) {
    CLI::App app("Compose, check, preview and export queries over ODBC", "kortavin");
    Build(app);
    try {
        for (int i = 1; i < argc; ++i)
            RequireUtf8(argv[i], fmt::format("argument {}", i));
        if (const char* connection = std::getenv("KORTAVIN_CONNECTION");
            connection && !CString::FromUtf8(connection))
            throw UsageFailure("the environment variable KORTAVIN_CONNECTION is not UTF-8");
        app.parse(argc, argv);
        return 0;
    } catch (const CLI::CallForHelp&) {
        WriteOutput(app.help());
        return 0;
    } catch (const CLI::CallForVersion& version) {
        WriteOutput(std::string(version.what()) + "\n");
        return 0;
    } catch (const CLI::RuntimeError& answered) {
        return answered.get_exit_code();
    } catch (const CLI::ParseError& error) {
        throw UsageFailure(UsageText(app, error));
    }
}

int RunReporting(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const UsageFailure& error) {
        WriteMessage(fmt::format("{}\n'kortavin --help' and 'kortavin COMMAND --help' tell how it is used.",
                                 error.what()));
        return kUsage;
    } catch (const ClosedPipe&) {
    } catch (const CDBException& error) {
        WriteMessage(DatabaseReason(error).ToLine());
    } catch (const CException& error) {
        WriteMessage(base::GbkForDisplay(error.GetErrorMessage().View()));
    } catch (const std::bad_alloc&) {
        WriteMessage("out of memory");
    } catch (const std::exception& error) {
        WriteMessage(error.what());
    }
    return kRefused;
}

}  // namespace
}  // namespace kortavin::cli

int main(int argc, char** argv) {
    kortavin::cli::OccupyStandardStreams();
    kortavin::cli::IgnoreWriteSignals();
    return kortavin::cli::RunReporting(argc, argv);
}
