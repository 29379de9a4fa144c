#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/text.h"
#include "kortavin/base/file.h"
#include "kortavin/textimport/geotextfile.h"
#include "kortavin/textimport/token.h"

namespace kortavin::cli {
namespace {

constexpr std::size_t kBlockSize = 64 * 1024;

struct TextArguments {
    std::string file;
    std::string separator = ",";
    bool json = false;

    bool IsStandardInput() const { return file == "-"; }
    std::string Name() const { return IsStandardInput() ? "standard input" : file; }
};

// A file without a name, gone with its last descriptor.
int OpenSpool() {
    std::string path = (std::filesystem::temp_directory_path() / "kortavin.XXXXXX").native();
    const int descriptor = mkostemp(path.data(), O_CLOEXEC);
    if (descriptor < 0)
        throw CFileException::FromErrno(errno, CString(std::string_view(path)));
    unlink(path.c_str());
    return descriptor;
}

std::unique_ptr<CFile> Spooled(CFile& input) {
    auto spool = std::make_unique<CFile>(OpenSpool(), "temporary file");
    std::array<char, kBlockSize> block;
    for (UINT count = 0; (count = input.Read(block.data(), block.size())) > 0;)
        spool->Write(block.data(), count);
    return spool;
}

// The reader goes back in its file and must know its length. What cannot do so, or has no length to tell (a
// pipe, a terminal, a file of the system's own), is copied first.
std::unique_ptr<CFile> OpenForReader(const TextArguments& arguments) {
    const std::string name = arguments.Name();
    auto input = arguments.IsStandardInput() ? std::make_unique<CFile>(dup(STDIN_FILENO), name.c_str())
                                             : std::make_unique<CFile>(name.c_str(), CFile::modeRead);
    std::error_code error;
    const auto size = std::filesystem::file_size(arguments.file, error);
    return arguments.IsStandardInput() || error || size == 0 ? Spooled(*input) : std::move(input);
}

// Texts on their way to the standard output, line by line. An error comes after the lines before it.
class LineWriter {
  public:
    void Write(std::string_view line) {
        m_pending.append(line).append("\n");
        if (m_pending.size() >= kBlockSize)
            Flush();
    }
    void Flush() {
        WriteOutput(m_pending);
        m_pending.clear();
    }

  private:
    std::string m_pending;
};

// So that a line of the output is a line of the file whatever it holds.
std::string OnOneLine(std::string text) {
    const bool isPlain = std::ranges::all_of(text, [](char byte) { return byte >= ' ' && byte < '\x7F'; });
    return isPlain ? std::move(text) : EscapeControls(text);
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined.append(&text == &texts.front() ? "" : "\t").append(OnOneLine(text));
    return joined;
}

std::vector<std::string> SplitAtTabs(std::string_view text) {
    std::vector<std::string> parts;
    for (std::size_t tab; (tab = text.find('\t')) != std::string_view::npos; text.remove_prefix(tab + 1))
        parts.emplace_back(text.substr(0, tab));
    parts.emplace_back(text);
    return parts;
}

// Calls `shown`, which answers what to write for a line, with each line and with what turns a text of it into
// UTF-8.
template <class Show>
void WriteLines(const TextArguments& arguments, const Show& show) {
    const std::unique_ptr<CFile> file = OpenForReader(arguments);
    LineWriter writer;
    ULONGLONG number = 1;
    const auto toUtf8 = [&](const CString& text) {
        if (std::optional<std::string> utf8 = text.ToUtf8())
            return *std::move(utf8);
        writer.Flush();
        throw Failure(fmt::format("{}: line {} holds bytes that are no GBK text", arguments.Name(), number));
    };
    for (CGeoTextFile reader(file.get()); reader.NextLine(); ++number)
        writer.Write(show(reader.GetLine(), toUtf8));
    writer.Flush();
}

void ShowLines(const TextArguments& arguments) {
    WriteLines(arguments, [&](const CString& line, const auto& toUtf8) {
        const std::string text = toUtf8(line);
        return arguments.json ? nlohmann::json(text).dump() : Joined(SplitAtTabs(text));
    });
}

void ShowTokens(const TextArguments& arguments) {
    if (arguments.separator.empty())
        throw UsageFailure("an empty separator separates nothing");
    const CString separator = ToGbk(arguments.separator);
    WriteLines(arguments, [&](const CString& line, const auto& toUtf8) {
        std::vector<std::string> texts;
        CToken tokens(line);
        tokens.SetToken(separator);
        while (tokens.MoreTokens())
            texts.push_back(toUtf8(tokens.GetNextToken()));
        return arguments.json ? nlohmann::json(texts).dump() : Joined(texts);
    });
}

void AddCommonOptions(CLI::App& command, TextArguments& arguments, const std::string& footer) {
    command.add_option("FILE", arguments.file, "A text file in GBK; - reads the standard input")
        ->required()
        ->type_name("");
    command.footer(
        "A line ends at a carriage return and takes one more byte with it, as CR LF; a line feed alone ends\n"
        "none. A zero byte cuts its line. Control characters show escaped except in JSON.\n\n" +
        footer);
}

}  // namespace

void AddTextCommands(CLI::App& app) {
    const auto forLines = std::make_shared<TextArguments>();
    CLI::App* lines = app.add_subcommand("lines", "Write the lines of a text file as an import reads them");
    AddCommonOptions(*lines, *forLines, "Example:\n  kortavin lines cities.csv");
    lines->add_flag("--json", forLines->json, "Each line as a JSON string");
    lines->callback([forLines] { ShowLines(*forLines); });

    const auto forTokens = std::make_shared<TextArguments>();
    CLI::App* tokens =
        app.add_subcommand("tokens", "Split the lines of a text file, tabs between the tokens");
    AddCommonOptions(
        *tokens, *forTokens,
        "A line without separator has no token. One quote, ' or \", is taken off each end of a token;\n"
        "quotes protect no separator.\n\n"
        "Examples:\n"
        "  kortavin tokens cities.csv\n"
        "  kortavin export -c atlas.db \"SELECT * FROM Cities\" -o - --layout tab |\n"
        "      kortavin tokens -s \"$(printf '\\t')\" --json -");
    tokens->add_option("-s,--separator", forTokens->separator, "A comma unless told")->type_name("TEXT");
    tokens->add_flag("--json", forTokens->json, "Each line's tokens as a JSON array of strings");
    tokens->callback([forTokens] { ShowTokens(*forTokens); });
}

}  // namespace kortavin::cli
