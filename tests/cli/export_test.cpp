#include <thread>

#include "tests/cli/tool.h"

using namespace kortavin::test;

namespace {

constexpr const char* kTwoCities = "SELECT Id, 中文名, Founded FROM Cities WHERE Id IN (7, 57) ORDER BY Id";
// Rows without end, and a statement that keeps the driver busy before its first row.
const std::string kNumbers = "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) ";
const std::string kEndless = kNumbers + "SELECT x FROM c";
const std::string kBusy = kNumbers + "SELECT count(*) FROM c";

Arguments Export(const std::string& output, const std::string& statement, const Arguments& more = {}) {
    Arguments arguments = OnSample("export", {"-o", output, statement});
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

}  // namespace

TEST(Export, WritesTheLayoutsInGbkUnlessTold) {
    const std::vector<std::pair<Arguments, std::string>> cases = {
        {{},
         "Id,\xD6\xD0\xCE\xC4\xC3\xFB,Founded\r\n7,\xCE\xE4\xBA\xBA,\r\n57,"
         "\xBA\xD5\xB6\xFB\xD0\xC1\xBB\xF9,1550-06-12\r\n"},
        {{"--layout", "tab", "--quote", "double", "--encoding", "utf-8"},
         "\"Id\"\t\"中文名\"\t\"Founded\"\r\n7\t\"武汉\"\t\r\n57\t\"赫尔辛基\"\t1550-06-12\r\n"},
        {{"--layout", "blank", "--no-header", "--quote", "single"},
         "7 '\xCE\xE4\xBA\xBA' \r\n57 '\xBA\xD5\xB6\xFB\xD0\xC1\xBB\xF9' 1550-06-12\r\n"},
    };
    const TempFolder folder;
    const std::string file = folder / "cities";
    for (const auto& [options, content] : cases) {
        EXPECT_EQ(RunTool(Export(file, kTwoCities, options)).exitCode, 0);
        EXPECT_EQ(ContentOf(file), content);
        EXPECT_EQ(RunTool(Export("-", kTwoCities, options)).output, content);
    }
    EXPECT_EQ(RunTool(Export(file, kTwoCities, {"--layout", "binary"})).exitCode, 0);
    const std::string binary = ContentOf(file);
    EXPECT_THAT(binary, testing::StartsWith("VESKARDO CORP QUERY DATA"));
    EXPECT_EQ(binary.at(44 + 118 * 3), 2);  // rows
    EXPECT_EQ(RunTool(Export("-", "SELECT 7", {"--layout", "binary", "--no-header"})).output,
              std::string("\1\0\0\0", 4) + "7");
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(Export, ImpossibleCombinationsAreUsageErrors) {
    const TempFolder folder;
    const std::string file = folder / "data";
    std::filesystem::copy_file(SampleDatabase(), file);
    for (const Arguments& arguments :
         {Export(file, kTwoCities, {"--layout", "binary", "--encoding", "utf-8"}),
          Export("-", kTwoCities, {"--layout", "binary"}),
          // the database itself
          {"export", "-c", file, "-o", folder / "./data", kTwoCities}})
        EXPECT_EQ(RunTool(arguments).exitCode, 2) << testing::PrintToString(arguments);
    EXPECT_EQ(ContentOf(file), ContentOf(SampleDatabase()));
}

TEST(Export, FailureKeepsTheFormerFile) {
    const TempFolder folder;
    const std::string file = folder / "data.csv";
    MakeFile(file, "former");
    const std::vector<std::tuple<Arguments, std::string, std::string>> cases = {
        {Export(file, "SELECT * FROM Nowhere"), "no such table", kPlain},
        // The sum overflows with the third row, when two are written.
        {Export(file, "SELECT abs(CASE Id WHEN 3 THEN -9223372036854775807 - 1 ELSE Id END) FROM Cities"),
         "integer overflow", kPlain},
        {Export(file, kEndless), "File too large", "ulimit -f 16; " + kPlain},
        {Export(file, kEndless, {"--encoding", "utf-8"}), "File too large", "ulimit -f 16; " + kPlain},
        {Export("-", kEndless), "standard output: No space left", kPlain + " >/dev/full"},
        {Export(folder / "none/data.csv", kTwoCities), "No such file", kPlain}};
    for (const auto& [arguments, reason, shell] : cases) {
        const ToolResult result = RunTool(arguments, shell);
        EXPECT_EQ(result.exitCode, 1) << reason;
        EXPECT_THAT(result.error, testing::HasSubstr(reason));
        EXPECT_EQ(ContentOf(file), "former") << reason;
        EXPECT_EQ(folder.CountEntries(), 1) << reason;
    }
}

TEST(Export, SignalsDiscardTheUnfinishedFileEvenWhileTheDriverIsBusy) {
    const std::vector<std::pair<std::string, std::vector<int>>> cases = {
        {kPlain, {SIGINT}}, {kPlain, {SIGHUP}}, {"trap '' HUP; " + kPlain, {SIGHUP, SIGTERM}}};
    for (const auto& [shell, signals] : cases) {
        const TempFolder folder;
        MakeFile(folder / "data.csv", "former");
        RunningTool tool(Export(folder / "data.csv", kBusy), shell);
        while (folder.CountEntries() == 1)
            std::this_thread::yield();
        for (const int signal : signals)
            tool.Signal(signal);
        EXPECT_EQ(tool.Wait(), -signals.back());
        EXPECT_EQ(ContentOf(folder / "data.csv"), "former");
        EXPECT_EQ(folder.CountEntries(), 1);
    }
}

TEST(Export, ClosedPipeEndsQuietly) {
    const std::string shell = "{ \"$@\"; echo \"code $?\" >&2; } | { read -r first; }";
    EXPECT_EQ(RunTool(Export("-", kEndless), shell).error, "code 1\n");
}
