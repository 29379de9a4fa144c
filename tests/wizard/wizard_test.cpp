#include "tests/support/databases.h"
#include "tests/support/filelimit.h"
#include "tests/wizard/wizarduser.h"

using namespace kortavin::test;

namespace {

class Wizard : public DatabaseFixture {
  protected:
    void CreateAAndB() {
        Execute("CREATE TABLE A (x integer)");
        Execute("CREATE TABLE B (x integer)");
    }

    MemoryDesktop desktop;
    CQuerySql query{&m_database};
};

}  // namespace

TEST_F(Wizard, EveryPageAddsItsClauseAndTheStatementRuns) {
    Execute(
        "CREATE TABLE Roads AS SELECT 1 AS TownId, '二环' AS Name, 12 AS Width UNION SELECT 2, '小巷', 4");
    Execute("CREATE TABLE Towns AS SELECT 1 AS Id, '东镇' AS Name, 4000 AS Population");
    const char* const composed =
        "SELECT Roads.Name,Towns.Name FROM Roads,Towns WHERE ((Roads.TownId = Towns.Id)) AND "
        "((Roads.Width>10 AND Towns.Population<5000) )ORDER BY Roads.Name ASC";
    RunWizard(query, composed, [] {
        Do("+Roads;+Towns;#1;1,0?Roads;1,1?TownId;1,2?Towns;1,3;");
        EXPECT_EQ(Pick("Id"), "Id;Name;Population;");
        Do("#2;1,0?Roads;1,1?Name;2,0;");
        EXPECT_EQ(Pick("Towns"), "Roads;Towns;");
        Do("2,1?Name;#3;加列;1,1?Roads;2,1?Width;1,2?Towns;2,2?Population;3,1=>10;3,2=<5000;");
        Do("#4;1,1?Roads;1,2?Name;1,3;");
        EXPECT_EQ(Pick("升序"), "升序;降序;");
        Do("#5;检查;");
        EXPECT_EQ(Cells(), "|Name|Name/0|二环|东镇");
        Push("确定");
    });
}

TEST_F(Wizard, ClausesFollowWhatThePagesHoldAndAreConfirmedOnTheLast) {
    const struct {
        const char *tab, *user, *cells, *rest = "", *select = "*";
    } cases[] = {
        {"#1;", "1,0=A;1,1=x;1,2=B;1,3=y;2,0=B;2,1=z;2,2=C;", "表1|字段|表2|字段/A|x|B|y/B|z|C|/B||C| @2,2",
         "WHERE ((A.x = B.y))"},
        {"#1;", "1,0=A;添加;添加;删除;", "表1|字段|表2|字段/A|||/A|||/A|||"},
        {"#2;", "1,0=A;1,1=x;2,0=A;3,0=B;3,1=[y z];", "表|字段/A|x/A|/B|[y z]/B| @3,1", "", "A.x,B.[y z]"},
        {"#2;", "1,1=x;2,0=A;2,1= ;", "表|字段/|x/A| /A| @2,1", "", "A. "},
        {"#2;", "1,0=A;2,0;删除;删除;删除;", "表|字段 @0,0"},
        {"#3;", "1,1=A;3,1==1;4,1==2;", "|/表|A/字段|/条件|=1/Or|=2/Or| @4,1"},
        {"#3;", "加列;1,1=A;2,1=x;1,2=B;2,2=y;3,1=>1;3,2=='q';4,1=<0;",
         "|1|2/表|A|B/字段|x|y/条件|>1|='q'/Or|<0|/Or|| @4,1", "WHERE ((A.x>1 AND B.y='q') OR (A.x<0) )"},
        {"#3;", "加行;加列;加列;3,1=a;3,2=b;3,3=c;3,2;删列;", "|1|2/表||/字段||/条件|a|c/Or|| @3,2"},
        {"#3;", "2,1;删列;删列;", "/表/字段/条件 @2,0"},
        {"#3;", "加行;3,1;删行;4,1;删行;删行;", "|/表|/字段|/条件| @3,1"},
        {"#4;", "1,1=A;1,2=x;1,3=升序;2,1=B;2,2=y;2,3=asc;3,2=z;",
         "|表|字段|排序/|A|x|升序/|B|y|asc/|B|z|/|B|| @3,2", "ORDER BY A.x ASC,B.y DESC,B.z DESC"},
    };
    CreateAAndB();
    for (const auto& [tab, user, cells, rest, select] : cases) {
        const std::string statement = std::string("SELECT ") + select + " FROM A,B " + rest;
        RunWizard(query, statement, [&, tab = tab, user = user, cells = cells] {
            Do("+A;+B;确定;");
            Do(tab);
            for (CWnd* const place : {&Page(), Sheet().GetDlgItem(IDOK)})
                MoveFocusTo(place), Keys("⏎");
            Do(user);
            EXPECT_EQ(Cells(), cells) << user;
            EXPECT_EQ(Grid().GetRowHeight(Grid().GetRowCount() - 1), Grid().GetRowHeight(0));
            for (int i = 0; i < 2; ++i) {
                Do("#5;");
                EXPECT_EQ(Statement(), statement) << user;
                Page().SetDlgItemText(kStatementEdit, "SELECT 1");
                Do(tab);
                EXPECT_FALSE(Sheet().GetDlgItem(IDOK)->IsWindowEnabled());
            }
            Do("#5;确定;");
        });
    }
}

// They stay chosen for later runs. Clauses that pages stored outlive the rows that made them.
TEST_F(Wizard, TablesOfAnyNameAreChosenOnceAndTakenBack) {
    const std::string odd = "道路 1.b'c%d", quoted = "\"" + odd + "\"";
    Execute("CREATE TABLE " + quoted + " (\"y z\" date, \"点.x\" date, \"50%\" date, \"q'r\" date)");
    CreateAAndB();
    RunWizard(query, "nothing", [&] {
        Do("<<;>>;+B;+A;+" + odd + ";+A;");
        DoubleClick(*Page().GetDlgItem(kSelectedList), {5, 5});
        Do("<<;#2;1,0?" + odd + ";1,1;");  // nothing is selected any more
        EXPECT_EQ(Pick("[y z]"), "[y z];点.x;50%;q'r;");
        Do("#5;");
        EXPECT_EQ(Statement(), "SELECT " + odd + ".[y z] FROM A," + odd + " ");
        Do("#0;");
        DoubleClick(*Page().GetDlgItem(kAvailableList), {5, 2 * MemoryList::kItemHeight + 5});
        Execute("DROP TABLE " + quoted);
        Do("#2;2,1;");
        Keys("B");  // the wizard is closed in the midst of it
    });
    RunWizard(query, "SELECT A.x FROM ", [&] {
        EXPECT_EQ(NativeOf(*Page().GetDlgItem(kAvailableList)).AsList()->Count(), 2);
        Do("#2;1,0=A;1,1=x;2,0?" + odd + ";2,1;");
        EXPECT_EQ(Pick(""), "");
        Do("3,0;");
        Keys("B");
        Do("#5;");  // which ends the edit
        EXPECT_EQ(Statement(), "SELECT A.x FROM A," + odd + ",B ");
        Do("#0;-" + odd + ";-B;-A;#2;");
        EXPECT_EQ(Cells(), "表|字段/A|x/" + odd + "|/B|/B| @3,0");
        Do("删除;删除;删除;#5;确定;");
    });
    EXPECT_TRUE(desktop->MessageBoxes().empty());
}

TEST_F(Wizard, WorksByTheKeyboardAlone) {
    CreateAAndB();
    const std::string toTheNextPage = "→⇥", back = "⇦" + toTheNextPage;
    RunWizard(query, "SELECT B.y FROM A,B WHERE ((A.x = B.x)) AND ((A.x='甲') )ORDER BY B.x ASC,1", [&] {
        Keys("↓⇥⇥␣⇤⇤↓⇥⇥␣⇥⇥⇥" + toTheNextPage);  // past Cancel to the tabs
        Keys("⏎↓⏎→⏎↓⏎→⏎↓↓⏎→⏎↓⏎" + back);
        Keys("⏎B⇥y⏎⇨⇥⇥⇥" + toTheNextPage);
        Keys("⏎↓⏎↓⏎↓⏎↓='甲'⏎" + back);
        Keys("⏎↓↓⏎→⏎↓⏎→⏎↓⏎" + back);
        Keys("⇲,1⇥⇥⇨⇥⇥⏎");
    });
}

TEST_F(Wizard, CheckShowsTheFirstRowsOfAResult) {
    Execute("CREATE TABLE t (a integer)");
    Execute(
        "INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 10 UNION SELECT i + 1 FROM n LIMIT 25) SELECT i FROM "
        "n");
    const std::string fromEleven = "|a/11|10/12|11/13|12/14|13/15|14/16|15/17|16/18|17/19|18/20|19";
    const std::string checks[][2] = {
        {"SELECT a FROM t", "|a/0|10/1|11/2|12/3|13/4|14/5|15/6|16/7|17/8|18/9|19"},
        {"SELECT a FROM t", fromEleven},
        {"UPDATE t SET a = a + 1", fromEleven},
        {"SELECT nosuch FROM t", fromEleven},
        {"SELECT a AS 名 FROM t WHERE a > 90", "|名"},
        {"SELECT a, '甲' AS 乙\r\nFROM t\r\nWHERE a < 13", "|a|乙/1|11|甲/2|12|甲"}};
    m_database.SetQueryTimeout(7);
    RunWizard(query, "nothing", [&] {
        Do("#5;");
        for (const auto& [sql, cells] : checks) {
            Page().SetDlgItemText(kStatementEdit, FromUtf8(sql));
            Push("检查");
            EXPECT_EQ(Cells(), cells) << sql;
            EXPECT_EQ(m_database.GetQueryTimeout(), 999U);
        }
        EXPECT_EQ(Query("SELECT MIN(a) FROM t"), std::vector<Row>{{"11"}});  // changed once
    });
}

TEST_F(Wizard, StatementsAreLoadedAndSavedAsAWhole) {
    const std::string path = m_folder / "文件.SQL", folder = m_folder.Path().native();
    const std::string whole = "VESKARDO QUERY FILE" + std::string("\2\0\0\0", 4) + Gbk("甲");
    const auto press = [&](const char* button, const std::string& file, const std::string& statement) {
        Page().SetDlgItemText(kStatementEdit, FromUtf8(statement));
        desktop->NextFile(CString(file));
        Push(button);
        return Statement();
    };
    RunWizard(query, "甲", [&] {
        Do("#5;");
        for (const std::string& damaged : {whole.substr(0, 24), "X" + whole, std::string()}) {
            MakeFile(path, damaged);
            EXPECT_EQ(press("装入...", path, "now"), "now");
        }
        for (const std::string& file : {folder, folder + "/none/none"})
            press("装入...", file, "now"), press("保存...", file, "now");
        press("保存...", path, "甲");
        std::make_unique<FileLimit>(100), press("保存...", path, std::string(500, 'x'));
        EXPECT_EQ(ContentOf(path), whole);
        MakeFile(path, whole + "behind");
        EXPECT_EQ(press("装入...", path, ""), "甲");
        Do("保存...;装入...;");  // both cancelled
        const auto& request = desktop->FileRequests().at(10);
        EXPECT_FALSE(request.confirmReplacing);
        EXPECT_EQ(request.defaultExtension + request.initialName, "");
        EXPECT_EQ(request.filters.at(0).name + request.filters[0].patterns,
                  FromUtf8("数据库查询(*.SQL)*.SQL"));
        press("保存...", path, "");  // asks for no file
        Do("装入...;确定;");
    });
    const CString other = FromUtf8("文件格式不正确"), unopened = FromUtf8("打开文件失败");
    EXPECT_THAT(desktop->MessageBoxes(),
                ::testing::ElementsAre(other, other, other, unopened, unopened, unopened, unopened,
                                       FromUtf8("保存文件失败")));
    EXPECT_EQ(ContentOf(path), whole + "behind");
    EXPECT_EQ(m_folder.CountEntries(), 2);  // with the database
}
