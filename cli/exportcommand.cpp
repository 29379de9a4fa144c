#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <filesystem>
#include <map>
#include <memory>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/progress.h"
#include "cli/session.h"
#include "cli/statementsource.h"
#include "cli/text.h"
#include "cli/unfinished.h"
#include "cli/utf8file.h"
#include "kortavin/db/recordsetex.h"
#include "kortavin/service/exportrows.h"
#include "kortavin/service/statement.h"

namespace kortavin::cli {
namespace {

using service::ExportLayout;
using service::ExportQuote;

const std::map<std::string, ExportLayout> kLayouts = {{"comma", ExportLayout::Comma},
                                                      {"blank", ExportLayout::Blank},
                                                      {"tab", ExportLayout::Tab},
                                                      {"binary", ExportLayout::Binary}};
const std::map<std::string, ExportQuote> kQuotes = {
    {"none", ExportQuote::Unquoted}, {"single", ExportQuote::Single}, {"double", ExportQuote::Double}};

struct ExportArguments {
    std::string connection;
    StatementSource statement;
    std::string output;
    std::string layout = "comma";
    std::string quote = "none";
    std::string encoding = "gbk";
    bool noHeader = false;

    bool IsUtf8() const { return encoding == "utf-8"; }
    bool ToStandardOutput() const { return output == "-"; }
    service::ExportOptions Options() const { return {kLayouts.at(layout), kQuotes.at(quote), !noHeader}; }
};

// The output would take the place of what it is made from.
void RequireOtherFile(const std::string& output, const std::string& input) {
    std::error_code error;  // either need not be a file at all
    if (std::filesystem::equivalent(output, input, error))
        throw UsageFailure(fmt::format("{}: the output would replace what it is read from", output));
}

void RequireSensible(const ExportArguments& arguments) {
    RequireOtherFile(arguments.output, arguments.connection);
    RequireOtherFile(arguments.output, arguments.statement.file);
    if (arguments.layout != "binary")
        return;
    if (arguments.IsUtf8())
        throw UsageFailure("the binary layout is always in GBK");
    if (arguments.ToStandardOutput() && !arguments.noHeader)
        throw UsageFailure(
            "the header of the binary layout is completed at the end, which takes a file, not -");
}

void ExportAsUtf8(CFile& target, const service::ExportOptions& options, _CRecordsetEx& rows,
                  ProgressLine& progress) {
    Utf8File file(target);
    const ULONGLONG count = service::ExportRows(file, options, rows, [&](const service::ExportProgress& now) {
        progress.Update(now.rows, file.GetBytesWritten());
    });
    file.Finish();
    progress.Finish(count, file.GetBytesWritten());
}

void ExportAsGbk(CFile& target, const service::ExportOptions& options, _CRecordsetEx& rows,
                 ProgressLine& progress) {
    ULONGLONG bytes = 0;
    const ULONGLONG count =
        service::ExportRows(target, options, rows, [&](const service::ExportProgress& now) {
            bytes = now.bytes;
            progress.Update(now.rows, now.bytes);
        });
    progress.Finish(count, bytes);
}

void ExportTo(CFile& target, const ExportArguments& arguments, const CString& statement) {
    Session session(arguments.connection);
    const auto rows = service::OpenStatement(session.GetDatabase(), statement);
    if (rows->GetODBCFieldCount() == 0)
        throw Failure("the statement was executed, but it has no result columns to export");
    ProgressLine progress;
    const auto exportRows = arguments.IsUtf8() ? ExportAsUtf8 : ExportAsGbk;
    exportRows(target, arguments.Options(), *rows, progress);
}

void ExportToStandardOutput(const ExportArguments& arguments, const CString& statement) {
    CFile output(dup(STDOUT_FILENO));
    try {
        ExportTo(output, arguments, statement);
        output.Close();
    } catch (const CFileException& error) {
        if (error.m_lOsError == EPIPE)
            throw ClosedPipe();
        throw Failure("standard output: " + Shown(error.GetErrorMessage()));
    }
}

void Export(const ExportArguments& arguments) {
    RequireSensible(arguments);
    const CString statement = ReadStatement(arguments.statement);
    if (arguments.ToStandardOutput())
        return ExportToStandardOutput(arguments, statement);
    // First of all, so that no statement runs for a file that cannot be written.
    GuardedReplacement output{CString(std::string_view(arguments.output))};
    ExportTo(output.File(), arguments, statement);
    output.Commit();
}

template <class Value>
std::vector<std::string> Names(const std::map<std::string, Value>& named) {
    std::vector<std::string> names;
    for (const auto& [name, value] : named)
        names.push_back(name);
    return names;
}

}  // namespace

void AddExportCommand(CLI::App& app) {
    const auto arguments = std::make_shared<ExportArguments>();
    CLI::App* command = app.add_subcommand("export", "Write the rows of a statement's result to a file");
    AddConnectionOption(
        *command, arguments->connection,
        "A former file is replaced only when the new one is complete; it stays whole whatever goes wrong, "
        "Ctrl-C\n"
        "included. An interrupted statement may go on at the server.\n\n"
        "Examples:\n"
        "  kortavin export -c atlas.db \"SELECT * FROM Cities\" -o cities.csv --quote double\n"
        "  kortavin export -c atlas.db -f big.SQL -o big.dat --layout binary\n"
        "  kortavin export -c atlas.db \"SELECT * FROM Rivers\" -o - --layout tab --encoding utf-8 | less");
    AddStatementSource(*command, arguments->statement);
    command->add_option("-o,--output", arguments->output, "The file; - writes to the standard output")
        ->required()
        ->type_name("FILE");
    command->add_option("--layout", arguments->layout, "comma (unless told), blank, tab or binary")
        ->check(CLI::IsMember(Names(kLayouts)).description(""))
        ->type_name("LAYOUT");
    command
        ->add_option("--quote", arguments->quote,
                     "Around texts and column names: none (unless told), single, double")
        ->check(CLI::IsMember(Names(kQuotes)).description(""))
        ->type_name("QUOTE");
    command->add_option("--encoding", arguments->encoding, "gbk (unless told), or utf-8 for the text layouts")
        ->check(CLI::IsMember({"gbk", "utf-8"}).description(""))
        ->type_name("ENCODING");
    command->add_flag("--no-header", arguments->noHeader, "Leave out the column names");
    command->callback([arguments] { Export(*arguments); });
}

}  // namespace kortavin::cli
