#include <nlohmann/json.hpp>

#include "tests/cli/tool.h"

using namespace kortavin::test;

TEST(Sample, HasItsTablesAndColumnsAsStatementsTakeThem) {
    EXPECT_EQ(RunTool(OnSample("tables", {})).output,
              "Cities\nRivers\n湖泊\nRiverside\nRoads\nBridges\n说明\n大城市\n");
    EXPECT_EQ(RunTool(OnSample("columns", {"湖泊"})).output, "编号\nName\n名称\n国家\n约面积\nMaxDepth.m\n");
    EXPECT_EQ(nlohmann::json::parse(RunTool(OnSample("columns", {"--json", "大城市"})).output),
              (nlohmann::json{"Id", "Name", "中文名", "Country", "[Rounded population]"}));
    EXPECT_EQ(RunTool(OnSample("columns", {"无此表"})).exitCode, 1);
}

TEST(Sample, ReplacesAFileOnlyWhenForcedAndWhole) {
    const TempFolder folder;
    const std::string file = folder / "atlas.db";
    MakeFile(file, "mine");
    MakeFile(folder / "atlas.db-wal", "pages");
    EXPECT_EQ(RunTool({"sample", file}).exitCode, 1);
    // The journal would be played back into the new database.
    EXPECT_EQ(RunTool({"sample", "--force", file}).exitCode, 1);
    std::filesystem::remove(folder / "atlas.db-wal");
    EXPECT_EQ(RunTool({"sample", "--force", file}, "ulimit -f 8; " + kPlain).exitCode, 1);
    EXPECT_EQ(ContentOf(file), "mine");
    EXPECT_EQ(RunTool({"sample", "--force", file}).exitCode, 0);
    EXPECT_EQ(RunTool({"check", "-c", file, "SELECT * FROM Cities"}).exitCode, 0);
    EXPECT_EQ(folder.CountEntries(), 1);
}

TEST(Connection, PathsReachTheDriverWhateverTheyHold) {
    const TempFolder folder;
    const std::string shell = "export LC_ALL=zh_CN.GBK; " + kPlain;
    for (const char* name : {"a}b.db", " blank .db", "a=b.db", "武汉😀.db"}) {
        std::filesystem::copy_file(SampleDatabase(), folder / name);
        EXPECT_EQ(RunTool({"tables", "-c", folder / name}, shell).exitCode, 0) << name;
    }
}

TEST(Connection, WhatIsNoDatabaseIsRefusedAndNothingIsMade) {
    const TempFolder folder;
    // The driver answers for a damaged database as if it were empty.
    MakeFile(folder / "damaged.db", ContentOf(SampleDatabase()).substr(0, 16) + "nonsense");
    MakeFile(folder / "short", "SQLite");
    for (const std::string& connection :
         {folder / "damaged.db", folder / "short", folder / "missing.db", folder / "",
          "Driver=SQLite3;NoCreat=1;Database=" + folder / "missing.db"})
        EXPECT_EQ(RunTool({"tables", "-c", connection}).exitCode, 1) << connection;
    EXPECT_EQ(folder.CountEntries(), 2);
}

TEST(Connection, PasswordIsNeverShown) {
    const std::string connection = "Driver=NoSuchDriver;UID=me;PWD=s3same";
    for (const Arguments& arguments :
         {Arguments{"tables"}, {"tables", "-c", "x", connection}, {"show", "Password = {s3same;}"}}) {
        const ToolResult result =
            RunTool(arguments, "export KORTAVIN_CONNECTION='" + connection + "'; " + kPlain);
        EXPECT_GT(result.exitCode, 0);
        EXPECT_NE(result.error, "");
        EXPECT_THAT(result.error, testing::Not(testing::HasSubstr("s3same")));
    }
}

TEST(Connection, OptionWinsOverTheEnvironment) {
    const std::string shell = "export KORTAVIN_CONNECTION=/nosuch.db; " + kPlain;
    for (const Arguments& arguments :
         {OnSample("tables", {}), OnSample("columns", {"Cities"}),
          OnSample("check", {"SELECT Id FROM Cities"}), OnSample("describe", {"SELECT Id FROM Cities"}),
          OnSample("preview", {"SELECT Id FROM Cities"}),
          OnSample("export", {"SELECT Id FROM Cities", "-o", "-"})})
        EXPECT_EQ(RunTool(arguments, shell).exitCode, 0) << arguments[0];
}

TEST(CommandLine, WrongUsageEndsWithTwoAndWritesNothing) {
    const std::vector<Arguments> wrong = {{},
                                          {"dance"},
                                          {"tables"},
                                          OnSample("columns", {"\xB4\xF3"}),
                                          OnSample("check", {""}),
                                          OnSample("check", {"SELECT 1", "-f", "x.SQL"}),
                                          OnSample("preview", {"-n", "-1", "SELECT 1"})};
    for (const Arguments& arguments : wrong) {
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(result.output, "");
    }
}

TEST(CommandLine, OutputThatCannotBeWrittenIsAFailure) {
    for (const char* streams : {" >/dev/full", " <&- >&- 2>&-"})
        EXPECT_EQ(RunTool(OnSample("tables", {}), kPlain + streams).exitCode, 1);
}
