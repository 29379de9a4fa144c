#include "tests/cli/tool.h"

using namespace kortavin::test;
using namespace std::string_literals;

namespace {

constexpr const char* kPipe = "cat | \"$@\"";
// With controls, a zero byte, and a character whose second byte is that of |.
const std::string kText = "\xCE\xE4\xBA\xBA,\"a|b\"\r\nt\tu,'x\ny'\r\nnone\r\ncut\0,off\r\n\x82\x7C|z,"s;

}  // namespace

TEST(TextFile, LinesAreWrittenOneALine) {
    const TempFolder folder;
    const std::string file = folder / "f.csv";
    MakeFile(file, kText);
    EXPECT_EQ(RunTool({"lines", file}).output, "武汉,\"a|b\"\nt\tu,'x\\ny'\nnone\ncut\n倈|z,\n");
    EXPECT_EQ(RunTool({"lines", "--json", "-"}, kPipe, kText).output,
              "\"武汉,\\\"a|b\\\"\"\n\"t\\tu,'x\\ny'\"\n\"none\"\n\"cut\"\n\"倈|z,\"\n");
    // What has a name but no length.
    EXPECT_EQ(RunTool({"lines", "/dev/stdin"}, kPipe, "a\r\nb").output, "a\nb\n");
}

TEST(TextFile, TokensStandBetweenTabsOrInArrays) {
    EXPECT_EQ(RunTool({"tokens", "-"}, kPipe, kText).output, "武汉\ta|b\nt\\tu\tx\\ny\n\n\n倈|z\t\n");
    EXPECT_EQ(RunTool({"tokens", "--json", "-s", "|", "-"}, kPipe, kText).output,
              "[\"武汉,\\\"a\",\"b\"]\n[]\n[]\n[]\n[\"倈\",\"z,\"]\n");
    EXPECT_EQ(RunTool({"tokens", "-s", "，", "--json", "-"}, kPipe, "a\xA3\xAC\r\n").output,
              "[\"a\",\"\"]\n");
    // From where the standard input stands.
    EXPECT_EQ(RunTool({"tokens", "-"}, "read header; exec \"$@\"", "header\na,b").output, "a\tb\n");
}

TEST(TextFile, WhatCannotBeReadIsRefused) {
    const TempFolder folder;
    const ToolResult damaged = RunTool({"tokens", "-"}, kPipe, "a,b\r\nc,\xB4\r\nd,e");
    EXPECT_EQ(damaged.exitCode, 1);
    EXPECT_EQ(damaged.output, "a\tb\n");
    EXPECT_EQ(damaged.error, "kortavin: standard input: line 2 holds bytes that are no GBK text\n");
    const std::vector<std::pair<Arguments, int>> cases = {
        {{"lines", folder / "missing"}, 1}, {{"lines", folder.Path()}, 1}, {{"tokens", "-s", "", "-"}, 2}};
    for (const auto& [arguments, code] : cases) {
        const ToolResult refused = RunTool(arguments);
        EXPECT_EQ(refused.exitCode, code) << arguments[1];
        EXPECT_EQ(refused.output, "");
        EXPECT_NE(refused.error, "");
    }
    // No room for what comes through a pipe.
    EXPECT_THAT(RunTool({"lines", "-"}, "(ulimit -f 0; exec \"$@\") 2>&1 | cat", "text").output,
                testing::HasSubstr("temporary file"));
}
