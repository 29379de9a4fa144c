#include <nlohmann/json.hpp>

#include "tests/cli/tool.h"

namespace kortavin::test {
namespace {

using nlohmann::json;

ToolResult RunOnSample(const std::string& command, Arguments arguments) {
    arguments.insert(arguments.begin(), {command, "-c", SampleDatabase()});
    return RunTool(arguments);
}

TEST(Describe, LinesUpWithChineseNames) {
    EXPECT_EQ(RunOnSample("describe", {"SELECT * FROM Cities"}).output,
              "Name                Type  Type name      Precision  Scale  Nullable\n"
              "------------------  ----  -------------  ---------  -----  --------\n"
              "Id                     4  SQL_INTEGER           10      0  yes\n"
              "Name                  12  SQL_VARCHAR           40      0  yes\n"
              "中文名                12  SQL_VARCHAR           40      0  yes\n"
              "Country               12  SQL_VARCHAR           40      0  yes\n"
              "Longitude              8  SQL_DOUBLE            54      0  yes\n"
              "Latitude               8  SQL_DOUBLE            54      0  yes\n"
              "Rounded population     4  SQL_INTEGER           10      0  yes\n"
              "Founded                9  SQL_DATE              10      0  yes\n"
              "Entered               11  SQL_TIMESTAMP         32      0  yes\n");
}

TEST(Describe, JsonHasAnObjectForEachColumn) {
    const json columns = json::parse(RunOnSample("describe", {"--json", "SELECT 中文名 FROM Cities"}).output);
    EXPECT_EQ(columns,
              json::parse(R"([{"name": "中文名", "type": 12, "typeName": "SQL_VARCHAR", "precision": 40,
                                        "scale": 0, "nullable": "yes"}])"));
    EXPECT_EQ(RunOnSample("describe", {"--json", "PRAGMA user_version = 0"}).output, "[]\n");
}

TEST(Preview, LinesUpWideCombiningAndEscapedCharacters) {
    // A wide text, e with a combining accent, a control character and a change of direction, NULL, a
    // full-width A.
    const ToolResult shown =
        RunOnSample("preview", {"SELECT 1 AS n, '北京' AS t, 'x' AS e UNION ALL "
                                "SELECT 20, 'e' || char(0x301), 'a' || char(9, 27, 0x202E) UNION ALL "
                                "SELECT 300, NULL, char(0xFF21)"});
    EXPECT_EQ(shown.output,
              "n    t     e\n"
              "---  ----  -------------\n"
              "1    北京  x\n"
              "20   e\u0301     a\\t\\x1B\\u202E\n"
              "300        \uFF21\n");
}

TEST(Preview, ShowsNoMoreRowsThanAskedFor) {
    const Arguments endless = {
        "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT x FROM c"};
    EXPECT_EQ(json::parse(RunOnSample("preview", {"--json", endless[0]}).output)["rows"].size(), 10U);
    EXPECT_EQ(json::parse(RunOnSample("preview", {"--json", "-n", "3", endless[0]}).output)["rows"],
              json::parse(R"([["1"], ["2"], ["3"]])"));
    EXPECT_EQ(json::parse(RunOnSample("preview", {"--json", "-n", "0", endless[0]}).output)["rows"],
              json::array());
}

TEST(Preview, JsonKeepsColumnsOfTheSameNameApart) {
    const json shown =
        json::parse(RunOnSample("preview", {"--json", "SELECT 'a' AS x, '中\"' AS x, NULL AS y"}).output);
    EXPECT_EQ(shown, json::parse(R"({"columns": ["x", "x", "y"], "rows": [["a", "中\"", ""]]})"));
}

TEST(Check, TellsTheStateAndTheDriversText) {
    EXPECT_EQ(json::parse(RunOnSample("check", {"--json", "SELECT * FROM Cities"}).output),
              json::parse(R"({"ok": true})"));

    const ToolResult rejected = RunOnSample("check", {"--json", "SELECT * FROM Nowhere"});
    EXPECT_EQ(rejected.exitCode, 1);
    const json answer = json::parse(rejected.output);
    EXPECT_EQ(answer["ok"], false);
    EXPECT_EQ(answer["state"].get<std::string>().size(), 5U);
    EXPECT_THAT(answer["message"].get<std::string>(), testing::HasSubstr("no such table: Nowhere"));

    const ToolResult told = RunOnSample("check", {"SELECT * FROM Nowhere"});
    EXPECT_EQ(told.exitCode, 1);
    EXPECT_EQ(told.output, "");
    EXPECT_EQ(told.error, "kortavin: SQLSTATE " + answer["state"].get<std::string>() + ": " +
                              answer["message"].get<std::string>() + "\n");
}

TEST(Statements, MayComeFromASavedQuery) {
    const TemporaryFolder folder;
    const std::string file = folder.Path("query.SQL");
    ASSERT_EQ(RunTool({"save", file, "SELECT 中文名 FROM Cities WHERE Id=7"}).exitCode, 0);
    EXPECT_EQ(RunOnSample("preview", {"-f", file}).output, "中文名\n------\n武汉\n");
    EXPECT_EQ(RunOnSample("check", {"-f", folder.Path("missing.SQL")}).exitCode, 1);
}

}  // namespace
}  // namespace kortavin::test
