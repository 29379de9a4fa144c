#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <vector>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/text.h"
#include "kortavin/query/savedquery.h"
#include "kortavin/service/querysql.h"
#include "kortavin/textimport/mateup.h"
#include "kortavin/window/messagebox.h"

namespace kortavin::cli {
namespace {

constexpr int kCancelled = 1;

struct WizardArguments {
    std::string connection;
    std::string file;
};

struct MatchArguments {
    std::string columns;
    std::string samples;
    std::string targets;
    bool json = false;
};

// Messages are shown in boxes, as everywhere beside a window, while it lives.
class MessagesInBoxes {
  public:
    MessagesInBoxes() : m_former(window::SetMessageBoxHandler({})) {}
    ~MessagesInBoxes() { window::SetMessageBoxHandler(m_former); }
    MessagesInBoxes(const MessagesInBoxes&) = delete;
    MessagesInBoxes& operator=(const MessagesInBoxes&) = delete;

  private:
    window::MessageBoxHandler m_former;
};

// The statement is written before it is saved: a file that cannot be written loses nothing.
void RunWizard(const WizardArguments& arguments) {
    Session session(arguments.connection);
    const MessagesInBoxes boxes;
    CQuerySql query(&session.GetDatabase());
    CString sql;
    if (!query.ConstructQuery(sql))
        throw CLI::RuntimeError(kCancelled);
    WriteExactly(ExactUtf8(sql, "the statement"));
    if (!arguments.file.empty())
        query::WriteSavedQuery(CString(std::string_view(arguments.file)), sql);
}

void Match(const MatchArguments& arguments) {
    CString columns = ToGbk(arguments.columns);
    CString samples = ToGbk(arguments.samples);
    CString targets = ToGbk(arguments.targets);
    CWordArray matches;
    if (!CMateup::Mateup(columns, samples, targets, matches))
        throw CLI::RuntimeError(kCancelled);
    const std::vector<WORD> positions(matches.begin(), matches.end());
    WriteOutput(arguments.json ? fmt::format("[{}]\n", fmt::join(positions, ","))
                               : fmt::format("{}\n", fmt::join(positions, ",")));
}

}  // namespace

void AddWindowCommands(CLI::App& app) {
    const auto forWizard = std::make_shared<WizardArguments>();
    CLI::App* wizard = app.add_subcommand("wizard", "Compose a statement in a window, and write it");
    AddConnectionOption(
        *wizard, forWizard->connection,
        "Exit code 1, and nothing is written, when the window is cancelled. It needs a display.\n\n"
        "Example:\n  kortavin wizard -c atlas.db -o big.SQL");
    wizard
        ->add_option("-o", forWizard->file, "Save it as a saved query too; a file that is there is replaced")
        ->type_name("FILE.SQL");
    wizard->callback([forWizard] { RunWizard(*forWizard); });

    const auto forMatch = std::make_shared<MatchArguments>();
    CLI::App* match = app.add_subcommand("match", "Match the columns of a text to target fields in a window");
    match->add_option("--columns", forMatch->columns, "The text's column names")
        ->required()
        ->type_name("LIST");
    match->add_option("--samples", forMatch->samples, "One line of its values")
        ->required()
        ->type_name("LIST");
    match->add_option("--targets", forMatch->targets, "The fields to fill")->required()->type_name("LIST");
    match->add_flag("--json", forMatch->json, "As a JSON array of numbers");
    match->footer(
        "Lists are separated by commas; a list without any comma is empty. For each target the position of\n"
        "its column (from 1) is written. Exit code 1, and nothing is written, when the window is cancelled.\n"
        "It needs a display.\n\n"
        "Example:\n  kortavin match --columns 编号,名称 --samples 1,武汉 --targets NAME,ID");
    match->callback([forMatch] { Match(*forMatch); });
}

}  // namespace kortavin::cli
