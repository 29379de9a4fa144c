#include <nlohmann/json.hpp>

#include "tests/cli/tool.h"

using namespace kortavin::test;

namespace {

using nlohmann::json;

std::string OutputOf(const std::string& command, const Arguments& more) {
    return RunTool(OnSample(command, more)).output;
}

}  // namespace

TEST(Describe, LinesUpWithChineseNames) {
    EXPECT_EQ(OutputOf("describe", {"SELECT Id, 中文名, Founded FROM Cities"}),
              "Name     Type  Type name    Precision  Scale  Nullable\n"
              "-------  ----  -----------  ---------  -----  --------\n"
              "Id          4  SQL_INTEGER         10      0  yes\n"
              "中文名     12  SQL_VARCHAR         40      0  yes\n"
              "Founded     9  SQL_DATE            10      0  yes\n");
    EXPECT_EQ(json::parse(OutputOf("describe", {"--json", "SELECT 中文名 FROM Cities"})),
              json::parse(R"([{"name": "中文名", "type": 12, "typeName": "SQL_VARCHAR", "precision": 40,
                               "scale": 0, "nullable": "yes"}])"));
}

TEST(Preview, LinesUpWideCombiningAndEscapedCharacters) {
    // A wide text, e with a combining accent, a control character and a change of direction, NULL, a
    // full-width A.
    EXPECT_EQ(OutputOf("preview", {"SELECT 1 AS n, '北京' AS t, 'x' AS e UNION ALL "
                                   "SELECT 20, 'e' || char(0x301), 'a' || char(9, 27, 0x202E) UNION ALL "
                                   "SELECT 300, NULL, char(0xFF21)"}),
              "n    t     e\n"
              "---  ----  -------------\n"
              "1    北京  x\n"
              "20   e\u0301     a\\t\\x1B\\u202E\n"
              "300        \uFF21\n");
}

TEST(Preview, ShowsNoMoreRowsThanAskedForAndKeepsEqualNamesApartInJson) {
    const std::string endless =
        "WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x + 1 FROM c) SELECT x, '中\"' AS x, NULL AS y "
        "FROM c";
    EXPECT_EQ(json::parse(OutputOf("preview", {"--json", endless}))["rows"].size(), 10U);
    EXPECT_EQ(json::parse(OutputOf("preview", {"--json", "-n", "2", endless})),
              json::parse(R"({"columns": ["x", "x", "y"], "rows": [["1", "中\"", ""], ["2", "中\"", ""]]})"));
}

TEST(Check, TellsTheStateAndTheDriversText) {
    EXPECT_EQ(json::parse(OutputOf("check", {"--json", "SELECT * FROM Cities"})),
              json::parse(R"({"ok": true})"));

    const ToolResult rejected = RunTool(OnSample("check", {"--json", "SELECT * FROM Nowhere"}));
    const json answer = json::parse(rejected.output);
    EXPECT_EQ(answer["ok"], false);
    const auto message = answer["message"].get<std::string>();
    EXPECT_THAT(message, testing::HasSubstr("no such table: Nowhere"));

    const ToolResult told = RunTool(OnSample("check", {"SELECT * FROM Nowhere"}));
    EXPECT_EQ(told.exitCode, 1);
    EXPECT_EQ(told.error, "kortavin: SQLSTATE " + answer["state"].get<std::string>() + ": " + message + "\n");
}
