#include <csignal>

#include "tests/cli/tool.h"

namespace kortavin::test {
namespace {

constexpr const char* kTwoCities = "SELECT Id, 中文名, Founded FROM Cities WHERE Id IN (7, 57) ORDER BY Id";
// Rows without end, and a statement that keeps the driver busy before its first row.
constexpr const char* kEndless =
    "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT x FROM c";
constexpr const char* kBusy =
    "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT count(*) FROM c";

Arguments Export(const std::string& output, const std::string& statement, const Arguments& more = {}) {
    Arguments arguments = {"export", "-c", SampleDatabase(), "-o", output, statement};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

TEST(Export, WritesTheLayoutsInGbkUnlessTold) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("cities.txt");
    ASSERT_EQ(RunTool(Export(file, kTwoCities)).exitCode, 0);
    EXPECT_EQ(ReadFile(file),
              "Id,\xD6\xD0\xCE\xC4\xC3\xFB,Founded\r\n7,\xCE\xE4\xBA\xBA,\r\n57,"
              "\xBA\xD5\xB6\xFB\xD0\xC1\xBB\xF9,1550-06-12\r\n");
    ASSERT_EQ(
        RunTool(Export(file, kTwoCities, {"--layout", "tab", "--quote", "double", "--encoding", "utf-8"}))
            .exitCode,
        0);
    EXPECT_EQ(ReadFile(file),
              "\"Id\"\t\"中文名\"\t\"Founded\"\r\n7\t\"武汉\"\t\r\n57\t\"赫尔辛基\"\t1550-06-12\r\n");
    ASSERT_EQ(
        RunTool(Export(file, kTwoCities, {"--layout", "blank", "--no-header", "--quote", "single"})).exitCode,
        0);
    EXPECT_EQ(ReadFile(file),
              "7 '\xCE\xE4\xBA\xBA' \r\n57 '\xBA\xD5\xB6\xFB\xD0\xC1\xBB\xF9' 1550-06-12\r\n");

    ASSERT_EQ(RunTool(Export(file, kTwoCities, {"--layout", "binary"})).exitCode, 0);
    const std::string binary = ReadFile(file);
    ASSERT_GT(binary.size(), 48U + 118 * 3);
    EXPECT_EQ(binary.substr(0, 24), "VESKARDO CORP QUERY DATA");
    EXPECT_EQ(binary.substr(44 + 118 * 3, 4), std::string("\2\0\0\0", 4));
    EXPECT_EQ(folder.List(), Arguments{"cities.txt"});
}

TEST(Export, WritesToTheStandardOutput) {
    const ToolResult text = RunTool(Export("-", kTwoCities, {"--encoding", "utf-8"}));
    EXPECT_EQ(text.output, "Id,中文名,Founded\r\n7,武汉,\r\n57,赫尔辛基,1550-06-12\r\n");
    EXPECT_EQ(text.error, "");
    EXPECT_EQ(RunTool(Export("-", "SELECT 7", {"--layout", "binary", "--no-header"})).output,
              std::string("\1\0\0\0"
                          "7",
                          5));
    const ToolResult full = RunTool(Export("-", kEndless), {.shell = "exec \"$@\" >/dev/full"});
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_THAT(full.error, testing::HasSubstr("standard output: No space left"));
}

TEST(Export, QuietlyEndsWhenNobodyReadsOn) {
    const ToolResult result =
        RunTool(Export("-", kEndless), {.shell = "{ \"$@\"; echo \"code $?\" >&2; } | { read -r first; }"});
    EXPECT_EQ(result.error, "code 1\n");
}

TEST(Export, ImpossibleCombinationsAreUsageErrors) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("data", "former");
    EXPECT_EQ(RunTool(Export(file, kTwoCities, {"--layout", "binary", "--encoding", "utf-8"})).exitCode, 2);
    EXPECT_EQ(RunTool(Export("-", kTwoCities, {"--layout", "binary"})).exitCode, 2);
    EXPECT_EQ(RunTool(Export(file, kTwoCities, {"--layout", "wide"})).exitCode, 2);
    EXPECT_EQ(RunTool(Export(file, kTwoCities, {"--quote", "triple"})).exitCode, 2);
    EXPECT_EQ(ReadFile(file), "former");

    const std::string database = folder.Write("atlas.db", ReadFile(SampleDatabase()));
    EXPECT_EQ(RunTool({"export", "-c", database, "-o", folder.Path("./atlas.db"), kTwoCities}).exitCode, 2);
    EXPECT_EQ(ReadFile(database), ReadFile(SampleDatabase()));
}

TEST(Export, FailureKeepsTheFormerFile) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("data.csv", "former");
    const auto expectRefused = [&](const Arguments& arguments, const std::string& reason,
                                   const std::string& shell) {
        const ToolResult result = RunTool(arguments, {.shell = shell});
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_THAT(result.error, testing::HasSubstr(reason));
        EXPECT_EQ(ReadFile(file), "former");
        EXPECT_EQ(folder.List(), Arguments{"data.csv"});
    };
    const std::string plain = "exec \"$@\"";
    expectRefused(Export(file, "SELECT * FROM Nowhere"), "no such table", plain);
    // The sum overflows with the third row, when two are written.
    expectRefused(
        Export(file, "SELECT abs(CASE Id WHEN 3 THEN -9223372036854775807 - 1 ELSE Id END) FROM Cities"),
        "integer overflow", plain);
    expectRefused(Export(file, kEndless), "File too large", "ulimit -f 16; " + plain);
    expectRefused(Export(file, kEndless, {"--encoding", "utf-8"}), "File too large",
                  "ulimit -f 16; " + plain);
    EXPECT_EQ(RunTool(Export("/dev/full", kEndless)).exitCode, 1);
    EXPECT_EQ(RunTool(Export(folder.Path("none/data.csv"), kTwoCities)).exitCode, 1);
}

TEST(Export, SignalsDiscardTheUnfinishedFileEvenWhileTheDriverIsBusy) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const TemporaryFolder folder;
        const std::string file = folder.Write("data.csv", "former");
        const TemporaryFolder::Watch watch(folder);
        RunningTool tool(Export(file, kBusy), RunningTool::Streams::Discarded);
        watch.WaitForNewFile();
        tool.Signal(signal);
        EXPECT_EQ(tool.Wait(), -signal);
        EXPECT_EQ(ReadFile(file), "former");
        EXPECT_EQ(folder.List(), Arguments{"data.csv"});
    }
}

TEST(Export, IgnoredHangupStaysIgnored) {
    const TemporaryFolder folder;
    const TemporaryFolder::Watch watch(folder);
    RunningTool tool(Export(folder.Path("data.csv"), kBusy), RunningTool::Streams::Discarded,
                     "trap '' HUP; exec \"$@\"");
    watch.WaitForNewFile();
    tool.Signal(SIGHUP);
    tool.Signal(SIGTERM);
    EXPECT_EQ(tool.Wait(), -SIGTERM);
    EXPECT_EQ(folder.List(), Arguments{});
}

TEST(Export, ProgressOnATerminalIsErasedByCtrlC) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("data.csv", "former");
    RunningTool tool(Export(file, kEndless), RunningTool::Streams::Terminal);
    EXPECT_THAT(tool.ReadUntil("rows/s"), testing::HasSubstr("bytes"));
    tool.Type("\x03");
    const std::string shown = tool.ReadToEnd();
    EXPECT_EQ(tool.Wait(), -SIGINT);
    EXPECT_THAT(shown, testing::EndsWith("\r\x1b[K"));
    EXPECT_EQ(folder.List(), Arguments{"data.csv"});
    EXPECT_EQ(ReadFile(file), "former");
}

TEST(Export, ProgressOnATerminalEndsWithTheFinalFigures) {
    const TemporaryFolder folder;
    RunningTool tool(Export(folder.Path("data.csv"), kTwoCities), RunningTool::Streams::Terminal);
    const std::string shown = tool.ReadToEnd();
    EXPECT_EQ(tool.Wait(), 0);
    EXPECT_THAT(shown, testing::HasSubstr("\r\x1b[K2 rows, 52 bytes"));
    EXPECT_THAT(shown, testing::EndsWith("rows/s\r\n"));
}

}  // namespace
}  // namespace kortavin::test
