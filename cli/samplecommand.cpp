#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/session.h"
#include "cli/unfinished.h"
#include "kortavin/odbc/database.h"
#include "sample/sample.h"

namespace kortavin::cli {
namespace {

namespace fs = std::filesystem;

struct SampleArguments {
    std::string file;
    bool force = false;
};

// What SQLite left beside a database that is in use or was interrupted belongs to that database: it would be
// played back into the new one.
void RequireNoJournal(const std::string& path) {
    const std::string real = fs::weakly_canonical(path).string();
    for (const char* ending : {"-journal", "-wal"})
        if (fs::exists(real + ending))
            throw Failure(fmt::format("{}: the database is in use or was left unfinished ({}{} is there)",
                                      path, real, ending));
}

void MakeSample(const SampleArguments& arguments) {
    if (fs::exists(arguments.file) && !arguments.force)
        throw Failure(fmt::format("{}: the file exists; --force replaces it", arguments.file));
    RequireNoJournal(arguments.file);

    GuardedReplacement output{CString(std::string_view(arguments.file))};
    const CString& unfinished = output.GetUnfinishedPath();
    if (unfinished.IsEmpty())
        throw Failure(fmt::format("{}: not a file", arguments.file));
    CDatabase database;
    database.SetNarrowCharset("UTF-8");
    // The file counts for nothing before it is renamed, so the journal need not be a file of its own.
    database.Open(SqliteConnection(unfinished.GetString(), ";JournalMode=MEMORY;SyncPragma=OFF"));
    sample::WriteSample(database);
    database.Close();
    output.Commit();
}

}  // namespace

void AddSampleCommand(CLI::App& app) {
    const auto arguments = std::make_shared<SampleArguments>();
    CLI::App* command =
        app.add_subcommand("sample", "Make an SQLite database with a small atlas to try queries on");
    command->add_option("FILE.db", arguments->file, "The database to make")->required()->type_name("");
    command->add_flag("--force", arguments->force, "Replace a file that is there");
    command->footer("Example:\n  kortavin sample atlas.db && kortavin tables -c atlas.db");
    command->callback([arguments] { MakeSample(*arguments); });
}

}  // namespace kortavin::cli
