#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/statementsource.h"
#include "cli/text.h"
#include "kortavin/query/savedquery.h"

namespace kortavin::cli {
namespace {

struct SavedQueryArguments {
    std::string file;
    std::string text;
};

void Save(const SavedQueryArguments& arguments) {
    if (arguments.text.empty())
        throw UsageFailure("an empty statement is not saved");
    query::WriteSavedQuery(CString(std::string_view(arguments.file)), ToGbk(arguments.text));
}

void Show(const SavedQueryArguments& arguments) {
    WriteExactly(ExactUtf8(ReadStatementFile(arguments.file), arguments.file));
}

}  // namespace

void AddSavedQueryCommands(CLI::App& app) {
    const auto arguments = std::make_shared<SavedQueryArguments>();

    CLI::App* save = app.add_subcommand("save", "Save a statement as a saved-query file");
    save->add_option("FILE.SQL", arguments->file, "The file; one that is there is replaced")
        ->required()
        ->type_name("");
    save->add_option("SQL", arguments->text, "The statement")->required()->type_name("");
    save->footer("Example:\n  kortavin save big.SQL \"SELECT * FROM 大城市\"");
    save->callback([arguments] { Save(*arguments); });

    CLI::App* show = app.add_subcommand("show", "Write the statement of a saved-query file");
    show->add_option("FILE.SQL", arguments->file, "The file")->required()->type_name("");
    show->footer(
        "The statement is written without a line break of its own unless it goes to a terminal.\n\n"
        "Example:\n  kortavin show big.SQL");
    show->callback([arguments] { Show(*arguments); });
}

}  // namespace kortavin::cli
