#include <nlohmann/json.hpp>

#include "tests/cli/tool.h"

namespace kortavin::test {
namespace {

TEST(Sample, HasItsTablesAndColumnsAsStatementsTakeThem) {
    EXPECT_EQ(RunTool({"tables", "-c", SampleDatabase()}).output,
              "Cities\nRivers\n湖泊\nRiverside\nRoads\nBridges\n说明\n大城市\n");
    EXPECT_EQ(RunTool({"columns", "-c", SampleDatabase(), "湖泊"}).output,
              "编号\nName\n名称\n国家\n约面积\nMaxDepth.m\n");
    const auto columns =
        nlohmann::json::parse(RunTool({"columns", "-c", SampleDatabase(), "--json", "大城市"}).output);
    EXPECT_EQ(columns, (nlohmann::json{"Id", "Name", "中文名", "Country", "[Rounded population]"}));
    EXPECT_EQ(
        RunTool({"check", "-c", SampleDatabase(), "SELECT Cities.[Rounded population] FROM Cities"}).exitCode,
        0);
}

TEST(Sample, ReplacesAFileOnlyWhenForced) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("atlas.db", "mine");
    EXPECT_EQ(RunTool({"sample", file}).exitCode, 1);
    EXPECT_EQ(ReadFile(file), "mine");
    EXPECT_EQ(RunTool({"sample", "--force", file}).exitCode, 0);
    EXPECT_EQ(RunTool({"check", "-c", file, "SELECT * FROM Cities"}).exitCode, 0);
    EXPECT_EQ(folder.List(), Arguments{"atlas.db"});
}

TEST(Sample, LeavesNothingBehindWhenItFails) {
    const TemporaryFolder folder;
    const ToolResult full =
        RunTool({"sample", folder.Path("atlas.db")}, {.shell = "ulimit -f 8; exec \"$@\""});
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_THAT(full.error, testing::HasSubstr("SQLSTATE"));
    EXPECT_EQ(RunTool({"sample", folder.Path("a;b.db")}).exitCode, 1);
    EXPECT_EQ(folder.List(), Arguments{});
}

TEST(Sample, RefusesToSlipADatabaseUnderAnotherOnesJournal) {
    const TemporaryFolder folder;
    const std::string file = folder.Write("atlas.db", "in use");
    folder.Write("atlas.db-wal", "pages");
    EXPECT_EQ(RunTool({"sample", "--force", file}).exitCode, 1);
    EXPECT_EQ(ReadFile(file), "in use");
}

TEST(Connection, PathsReachTheDriverWhateverTheyHold) {
    const TemporaryFolder folder;
    const std::string content = ReadFile(SampleDatabase());
    for (const char* name : {"{a}.db", "a}b.db", " blank .db", "a=b.db", "武汉😀.db"}) {
        const std::string path = folder.Write(name, content);
        EXPECT_EQ(RunTool({"tables", "-c", path}).exitCode, 0) << name;
        EXPECT_EQ(RunTool({"tables", "-c", path}, {.environment = {"LC_ALL=zh_CN.GBK"}}).exitCode, 0) << name;
        EXPECT_EQ(
            RunTool({"tables", "-c", name}, {.shell = "cd '" + folder.Path("") + "'; exec \"$@\""}).exitCode,
            0)
            << name;
    }
    const ToolResult refused = RunTool({"tables", "-c", folder.Write("a;b.db", content)});
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_THAT(refused.error, testing::HasSubstr("';'"));
}

TEST(Connection, WhatIsNoDatabaseIsRefusedAndNothingIsMade) {
    const TemporaryFolder folder;
    const std::string text = folder.Write("letter.txt", "Dear reader, this file is no database at all.");
    EXPECT_EQ(RunTool({"check", "-c", text, "SELECT 1"}).exitCode, 1);
    EXPECT_EQ(RunTool({"tables", "-c", folder.Write("short", "SQLite")}).exitCode, 1);
    EXPECT_EQ(RunTool({"tables", "-c", folder.Path("")}).exitCode, 1);
    EXPECT_EQ(RunTool({"tables", "-c", folder.Path("missing.db")}).exitCode, 1);
    EXPECT_EQ(
        RunTool({"tables", "-c", "Driver=SQLite3;NoCreat=1;Database=" + folder.Path("missing.db")}).exitCode,
        1);
    EXPECT_EQ(folder.List(), (Arguments{"letter.txt", "short"}));

    // The driver answers for a damaged database as if it were empty.
    const std::string damaged =
        folder.Write("damaged.db", ReadFile(SampleDatabase()).substr(0, 16) + "nonsense");
    const ToolResult result = RunTool({"tables", "-c", damaged});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.error, testing::HasSubstr("not a database"));
}

TEST(Connection, ComesFromTheEnvironmentToo) {
    const ToolSettings settings = {
        .environment = {"KORTAVIN_CONNECTION=Driver=SQLite3;Database=" + SampleDatabase()}};
    EXPECT_THAT(RunTool({"tables"}, settings).output, testing::HasSubstr("大城市"));
    EXPECT_EQ(RunTool({"tables"}).exitCode, 2);
    EXPECT_EQ(RunTool({"tables"}, {.environment = {"KORTAVIN_CONNECTION=\xFF"}}).exitCode, 2);
}

TEST(Connection, PasswordIsNeverShown) {
    const std::string connection = "Driver=NoSuchDriver;UID=me;PWD=s3same";
    for (const Arguments& arguments :
         {Arguments{"tables", "-c", connection}, Arguments{"tables", "-c", "x", connection},
          Arguments{connection}, Arguments{"show", connection}}) {
        const ToolResult result = RunTool(arguments);
        EXPECT_NE(result.exitCode, 0);
        EXPECT_NE(result.error, "");
        EXPECT_THAT(result.error, testing::Not(testing::HasSubstr("s3same")));
    }
    EXPECT_EQ(RunTool({"tables", "-c", connection}).exitCode, 1);
}

TEST(CommandLine, WrongUsageEndsWithTwoAndWritesNothing) {
    const std::vector<Arguments> wrong = {{},
                                          {"dance"},
                                          {"tables", "--loud", "-c", "x"},
                                          {"columns", "-c", SampleDatabase()},
                                          {"columns", "-c", SampleDatabase(), "\xB4\xF3"},
                                          {"check", "-c", SampleDatabase()},
                                          {"check", "-c", SampleDatabase(), ""},
                                          {"check", "-c", SampleDatabase(), "SELECT 1", "-f", "x.SQL"},
                                          {"preview", "-c", SampleDatabase(), "-n", "-1", "SELECT 1"},
                                          {"preview", "-c", SampleDatabase(), "-n", "ten", "SELECT 1"}};
    for (const Arguments& arguments : wrong) {
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.error, testing::StartsWith("kortavin: "));
    }
}

TEST(CommandLine, EveryCommandHasHelpWithAnExample) {
    EXPECT_EQ(RunTool({"--help"}).exitCode, 0);
    for (const char* command : {"sample", "tables", "columns", "compose", "check", "describe", "preview",
                                "export", "save", "show"}) {
        const ToolResult help = RunTool({command, "--help"});
        EXPECT_EQ(help.exitCode, 0) << command;
        EXPECT_THAT(help.output, testing::HasSubstr(std::string("  kortavin ") + command)) << command;
    }
}

TEST(CommandLine, OutputThatCannotBeWrittenIsAFailure) {
    const Arguments arguments = {"tables", "-c", SampleDatabase()};
    const ToolResult full = RunTool(arguments, {.shell = "exec \"$@\" >/dev/full"});
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_THAT(full.error, testing::HasSubstr("No space left"));
    EXPECT_EQ(RunTool({"--help"}, {.shell = "exec \"$@\" >/dev/full"}).exitCode, 1);
    // A stream that is closed takes nothing either.
    EXPECT_EQ(RunTool(arguments, {.shell = "exec \"$@\" <&- >&- 2>&-"}).exitCode, 1);
}

TEST(CommandLine, ClosedPipeEndsQuietly) {
    // More than a pipe holds, so the write is still going on when the reader leaves.
    const ToolResult result =
        RunTool({"preview", "-c", SampleDatabase(), "-n", "6400", "SELECT a.* FROM Cities a, Cities b"},
                {.shell = "{ \"$@\"; echo \"code $?\" >&2; } | { read -r first; }"});
    EXPECT_EQ(result.error, "code 1\n");
}

TEST(UnknownTable, IsRefusedWithAReason) {
    const ToolResult result = RunTool({"columns", "-c", SampleDatabase(), "无此表"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.error, testing::HasSubstr("无此表"));
}

}  // namespace
}  // namespace kortavin::test
