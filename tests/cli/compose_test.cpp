#include "tests/cli/tool.h"

using namespace kortavin::test;

namespace {

constexpr const char* kRoadsAndTowns = R"({
    "tables": ["Roads", "Towns"],
    "relations": [["Roads", "TownId", "Towns", "Id"]],
    "fields": [["Roads", "Name"], ["Towns", "Name"]],
    "conditions": {"columns": [["Roads", "Width"], ["Towns", "Population"]], "rows": [[">10", "<5000"]]},
    "sort": [["Roads", "Name", "升序"]]})";
constexpr const char* kRoadsAndTownsSql =
    "SELECT Roads.Name,Towns.Name FROM Roads,Towns WHERE ((Roads.TownId = Towns.Id)) AND "
    "((Roads.Width>10 AND Towns.Population<5000) )ORDER BY Roads.Name ASC";

}  // namespace

TEST(Compose, WritesTheStatementByteForByte) {
    EXPECT_EQ(RunTool({"compose", "-"}, kPlain, kRoadsAndTowns).output, kRoadsAndTownsSql);
    const std::string chinese = R"({"tables": ["道路"], "sort": [["道路", "名称😀", "降序"]]})";
    EXPECT_EQ(RunTool({"compose", "-"}, kPlain, chinese).output,
              "SELECT * FROM 道路 ORDER BY 道路.名称😀 DESC");
}

TEST(Compose, AddsALineBreakOnATerminalOnly) {
    const TempFolder folder;
    MakeFile(folder / "definition.json", kRoadsAndTowns);
    RunningTool onTerminal({"compose", folder / "definition.json"});
    EXPECT_EQ(onTerminal.ReadToEnd(), std::string(kRoadsAndTownsSql) + "\r\n");  // the terminal adds the CR
    EXPECT_EQ(onTerminal.Wait(), 0);
}

TEST(Compose, RefusesADamagedDefinitionAndTellsWhere) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"{\"tables\": [\"A\"}", "line 1, column 16"},
        {"[]", "definition: an object"},
        {R"({"table": ["A"]})", "unknown key \"table\""},
        {R"({"tables": ["A"], "tables": ["B"]})", "\"tables\" comes twice"},
        {R"({"tables": ["A", 1]})", "tables[1]: a text"},
        {R"({"fields": [["A", "x"], ["A"]]})", "fields[1]: [table, field]"},
        {R"({"conditions": {"columns": [["A", "x"]], "rows": [[">1"], [">1", "<2"]]}})",
         "conditions.rows[1]"},
        {"{\"tables\": [\"\xFF\"]}", "UTF-8"},
    };
    for (const auto& [definition, place] : cases) {
        const ToolResult result = RunTool({"compose", "-"}, kPlain, definition);
        EXPECT_EQ(result.exitCode, 1) << definition;
        EXPECT_EQ(result.output, "") << definition;
        EXPECT_THAT(result.error, testing::HasSubstr(place)) << definition;
    }
}

TEST(SavedQuery, ComesBackAndAFailureLeavesTheFormerFile) {
    const TempFolder folder;
    const std::string file = folder / "big.SQL";
    const std::string content("VESKARDO QUERY FILE\x14\0\0\0SELECT * FROM \xB4\xF3\xB3\xC7\xCA\xD0", 43);
    EXPECT_EQ(RunTool({"save", file, "SELECT * FROM 大城市"}).exitCode, 0);
    EXPECT_EQ(ContentOf(file), content);
    EXPECT_EQ(RunTool({"show", file}).output, "SELECT * FROM 大城市");
    EXPECT_EQ(RunTool(OnSample("check", {"-f", file})).exitCode, 0);
    EXPECT_EQ(RunTool({"save", file, "SELECT 1"}, "ulimit -f 0; " + kPlain).exitCode, 1);
    EXPECT_EQ(ContentOf(file), content);
}

TEST(SavedQuery, DamagedFilesAreRefused) {
    const TempFolder folder;
    const std::string file = folder / "damaged.SQL";
    const std::string head = "VESKARDO QUERY FILE";
    const std::vector<std::string> damaged = {"", "SELECT 1", head + std::string("\x08\0\0\0SELECT", 10),
                                              // a lead byte without a trail is no text that could be shown
                                              head + std::string("\x01\0\0\0\xB4", 5)};
    for (const std::string& content : damaged) {
        MakeFile(file, content);
        const ToolResult shown = RunTool({"show", file});
        EXPECT_EQ(shown.exitCode, 1) << content;
        EXPECT_EQ(shown.output, "") << content;
        EXPECT_THAT(shown.error, testing::HasSubstr(file)) << content;
    }
}
