#pragma once

namespace CLI {
class App;
}

// Each adds a group of subcommands, which do their work while the command line is parsed and report by
// throwing (failure.h, CException).
namespace kortavin::cli {

void AddSampleCommand(CLI::App& app);
void AddCatalogCommands(CLI::App& app);  // tables, columns
void AddComposeCommand(CLI::App& app);
void AddStatementCommands(CLI::App& app);  // check, describe, preview
void AddExportCommand(CLI::App& app);
void AddSavedQueryCommands(CLI::App& app);  // save, show
void AddTextCommands(CLI::App& app);        // lines, tokens
void AddWindowCommands(CLI::App& app);      // wizard, match

}  // namespace kortavin::cli
