#include "cli/statementsource.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>

#include "cli/failure.h"
#include "cli/text.h"
#include "kortavin/query/savedquery.h"

namespace kortavin::cli {

void AddStatementSource(CLI::App& command, StatementSource& source) {
    auto* text = command.add_option("SQL", source.text, "The statement")->type_name("");
    auto* file =
        command.add_option("-f,--file", source.file, "Take the statement from this saved-query file");
    file->type_name("FILE.SQL")->excludes(text);
}

CString ReadStatement(const StatementSource& source) {
    if (!source.file.empty()) {
        const CString statement = ReadStatementFile(source.file);
        if (statement.IsEmpty())
            throw Failure(fmt::format("{}: the statement is empty", source.file));
        return statement;
    }
    if (source.text.empty())
        throw UsageFailure("a statement is required: SQL or -f FILE.SQL");
    return ToGbk(source.text);
}

CString ReadStatementFile(const std::string& path) {
    try {
        return query::ReadSavedQuery(CString(std::string_view(path)));
    } catch (const query::SavedQueryFormatError&) {
        throw Failure(fmt::format("{}: not a saved query, or not a whole one", path));
    }
}

}  // namespace kortavin::cli
