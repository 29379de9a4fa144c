#include <unistd.h>

#include <CLI/CLI.hpp>
#include <memory>

#include "cli/commands.h"
#include "cli/definitionjson.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/text.h"
#include "kortavin/base/file.h"

namespace kortavin::cli {
namespace {

std::string ReadToEnd(CFile& file) {
    std::string content;
    std::string piece(64 * 1024, '\0');
    while (const UINT count = file.Read(piece.data(), static_cast<UINT>(piece.size())))
        content.append(piece, 0, count);
    return content;
}

std::string ReadInput(const std::string& path) {
    if (path == "-") {
        CFile input(dup(STDIN_FILENO));
        return ReadToEnd(input);
    }
    CFile input(path.c_str(), CFile::modeRead);
    return ReadToEnd(input);
}

void Compose(const std::string& path) {
    WriteExactly(ExactUtf8(ComposeFromJson(ReadInput(path)), "the statement"));
}

}  // namespace

void AddComposeCommand(CLI::App& app) {
    const auto path = std::make_shared<std::string>();
    CLI::App* compose =
        app.add_subcommand("compose", "Compose the SELECT statement of a definition given as JSON");
    compose->add_option("FILE", *path, "The definition; - reads the standard input")
        ->required()
        ->type_name("");
    compose->footer(
        "The definition is an object; every key may be left out:\n"
        "  {\"tables\": [\"Roads\", \"Cities\"],\n"
        "   \"relations\": [[\"Roads\", \"FromCity\", \"Cities\", \"Id\"]],\n"
        "   \"fields\": [[\"Roads\", \"Name\"], [\"Cities\", \"中文名\"]],\n"
        "   \"conditions\": {\"columns\": [[\"Roads\", \"RoundedKm\"]], \"rows\": [[\">500\"], "
        "[\"<200\"]]},\n"
        "   \"sort\": [[\"Roads\", \"Name\", \"升序\"]]}\n"
        "Conditions of one row are joined by AND, rows by OR. A sort direction other than 升序 is "
        "descending.\n"
        "The statement is written without a line break of its own unless it goes to a terminal.\n\n"
        "Examples:\n"
        "  kortavin compose definition.json\n"
        "  echo '{\"tables\": [\"Cities\"]}' | kortavin compose -");
    compose->callback([path] { Compose(*path); });
}

}  // namespace kortavin::cli
