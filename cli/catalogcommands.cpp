#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/text.h"
#include "kortavin/base/arrays.h"
#include "kortavin/base/codepage.h"

namespace kortavin::cli {
namespace {

struct CatalogArguments {
    std::string connection;
    std::string table;
    bool json = false;
};

void WriteNames(const CStringArray& names, bool asJson) {
    std::string out;
    nlohmann::json array = nlohmann::json::array();
    for (const CString& name : names) {
        if (asJson)
            array.push_back(base::GbkForDisplay(name.View()));
        else
            out += Shown(name) + "\n";
    }
    WriteOutput(asJson ? array.dump() + "\n" : out);
}

void ListTables(const CatalogArguments& arguments) {
    Session session(arguments.connection);
    CStringArray names;
    const BOOL answered = session.GetDatabase().GetAllTables(names);
    session.ThrowMessages();
    if (!answered)
        throw Failure("the data source gave no list of tables");
    WriteNames(names, arguments.json);
}

void ListColumns(const CatalogArguments& arguments) {
    Session session(arguments.connection);
    CStringArray names;
    const BOOL answered = session.GetDatabase().GetColumnList(ToGbk(arguments.table), names);
    session.ThrowMessages();
    if (!answered)
        throw Failure(fmt::format("{}: no such table or view", arguments.table));
    WriteNames(names, arguments.json);
}

}  // namespace

// Each command has arguments of its own: the environment variable is applied to all commands, called or not.
void AddCatalogCommands(CLI::App& app) {
    const auto forTables = std::make_shared<CatalogArguments>();
    CLI::App* tables = app.add_subcommand("tables", "List the tables and views, one name a line");
    AddConnectionOption(*tables, forTables->connection, "Example:\n  kortavin tables -c atlas.db");
    tables->add_flag("--json", forTables->json, "As a JSON array of strings");
    tables->callback([forTables] { ListTables(*forTables); });

    const auto forColumns = std::make_shared<CatalogArguments>();
    CLI::App* columns = app.add_subcommand("columns", "List the columns of a table or view, one name a line");
    AddConnectionOption(
        *columns, forColumns->connection,
        "A name with a blank stands in brackets, which not every data source takes. The driver may "
        "read\n_ and % in TABLE as patterns.\n\n"
        "Example:\n  kortavin columns -c atlas.db Cities");
    columns->add_option("TABLE", forColumns->table, "Table or view, as 'tables' lists it")
        ->required()
        ->type_name("");
    columns->add_flag("--json", forColumns->json, "As a JSON array of strings");
    columns->callback([forColumns] { ListColumns(*forColumns); });
}

}  // namespace kortavin::cli
