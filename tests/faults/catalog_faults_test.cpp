#include "tests/faults/faultfixture.h"

namespace kortavin::testing {
namespace {

const Value kNull = Value::Null();

class CatalogFaults : public FaultTest {
  protected:
    static void AddTable(Answer& catalog, const Value& name) {
        catalog.AddRow({kNull, kNull, name, "TABLE"});
    }
    static void AddColumn(Answer& catalog, const Value& name) {
        catalog.AddRow({kNull, "own", "t", name, "4", "INTEGER", "10", "4"});
    }

    // "TRUE a b": the answer and the list, which held "before".
    std::string AllTables() {
        CStringArray tables;
        tables.Add("before");
        const BOOL result = m_database.GetAllTables(tables);
        return Told(result, tables);
    }
    std::string ColumnList(const char* table = "t") {
        CStringArray columns;
        columns.Add("before");
        const BOOL result = m_database.GetColumnList(table, columns);
        return Told(result, columns);
    }
    static std::string Told(BOOL result, const CStringArray& list) {
        std::string told = result ? "TRUE" : "FALSE";
        for (const std::string& name : ToStrings(list))
            told += '|' + name;
        return told;
    }

    std::size_t StatementsMade() const { return m_source.Calls("SQLAllocHandle").size(); }
};

TEST_F(CatalogFaults, JetDriverIsKnownByItsWholeNameInAnyLetterCase) {
    const auto isJet = [this](const std::string& name) {
        m_source.DriverName(name);
        Open();
        return m_database.IsODBCJetDriver();
    };
    for (const char* jet : {"ODBCJT32.DLL", "odbcjt32.dll", "OdbcJt32.dLL"})
        EXPECT_TRUE(isJet(jet)) << jet;
    const std::string jet = "ODBCJT32.DLL";
    for (const std::string& other :
         {jet + ' ', ' ' + jet, jet.substr(1), jet + std::string(187, ' '), std::string(),
          jet + std::string(188, 'x'), std::string(199, 'x'), std::string(5000, 'x')})
        EXPECT_FALSE(isJet(other)) << other;
}

TEST_F(CatalogFaults, DriverThatDoesNotTellItsNameIsNotTheJetDriver) {
    m_source.DriverName("ODBCJT32.DLL").Fails("SQLGetInfo", Error("HY000", "not now").At(6));
    AddColumn(m_source.Columns(), "a.b");
    Open();
    EXPECT_FALSE(m_database.IsODBCJetDriver());
    EXPECT_EQ(ColumnList(), "TRUE|before|a.b");
    EXPECT_THAT(m_boxes, IsEmpty());
    m_database.Close();
    EXPECT_FALSE(m_database.IsODBCJetDriver());
}

TEST_F(CatalogFaults, NamesWithDotsAndBlanksAreBracketedAsTheDriverNeedsIt) {
    Answer& columns = m_source.Columns();
    for (const char* name : {"id", "Order Date", "x.y", "x.y.z", "a b.c d", ".", "x.", " "})
        AddColumn(columns, name);
    AddColumn(columns, kNull);
    Open();
    EXPECT_EQ(ColumnList(), "TRUE|before|id|[Order Date]|x.y|x.y.z|[a b.c d]|.|x.|[ ]|");

    m_source.DriverName("odbcjt32.dll");
    Open();
    EXPECT_EQ(ColumnList(), "TRUE|before|id|Order Date|[x].[y]|[x].[y.z]|[a b].[c d]|[].[]|[x].[]| |");
    EXPECT_THAT(m_source.Calls("SQLGetInfo"), SizeIs(::testing::Ge(9u))) << "asked again for every row";
}

TEST_F(CatalogFaults, DriverWithoutTheCatalogFunctionIsTheCallersError) {
    m_source.Unsupported("SQLTables").Unsupported("SQLColumns");
    Open();
    const auto notSupported = [](const auto& action) {
        try {
            action();
        } catch (const CNotSupportedException& error) {
            return std::string(error.GetErrorMessage().View());
        }
        return std::string("nothing thrown");
    };
    EXPECT_EQ(notSupported([this] { AllTables(); }), "<::SQLTables> not supported.");
    EXPECT_EQ(notSupported([this] { ColumnList(); }), "<::SQLColumns> not supported.");
    EXPECT_THAT(m_boxes, IsEmpty());
    EXPECT_EQ(StatementsMade(), 0u);
}

TEST_F(CatalogFaults, ArgumentsReachTheDriverUnchanged) {
    m_source.Tables();
    m_source.Columns();
    Open();
    m_database.SetQueryTimeout(30);
    EXPECT_EQ(AllTables(), "TRUE");
    EXPECT_EQ(ColumnList("a_b%.[c d]\\'"), "FALSE|before");
    EXPECT_EQ(ColumnList(""), "FALSE|before");
    EXPECT_EQ(ColumnList(Gbk("道路").c_str()), "FALSE|before");
    EXPECT_THAT(m_source.Calls("SQLTables"), ElementsAre("SQLTables NULL, NULL, NULL, ''TABLE,VIEW''"));
    EXPECT_THAT(m_source.Calls("SQLColumns"),
                ElementsAre("SQLColumns NULL, NULL, 'a_b%.[c d]\\'', NULL", "SQLColumns NULL, NULL, '', NULL",
                            "SQLColumns NULL, NULL, '道路', NULL"));
    EXPECT_THAT(m_source.Calls("SQLSetStmtAttr"), SizeIs(4));
    EXPECT_THAT(m_source.Calls("SQLSetStmtAttr"), Contains("SQLSetStmtAttr 0, 30"));
}

TEST_F(CatalogFaults, RejectedCatalogCallIsShownWithMessageAndState) {
    m_source.Tables().Fails(Error("42000", "[Maker][Driver]no rights", 5).Also("01000", "none at all"));
    m_source.Columns().Fails(Error("HY000", "[Maker]", -7));
    Open();
    EXPECT_EQ(AllTables(), "FALSE");
    EXPECT_EQ(ColumnList(), "TRUE|before");
    EXPECT_THAT(m_boxes, ElementsAre("no rights\nnone at all\nState:37000,Native:5,Origin:[Maker][Driver]\n"
                                     "State:01000,Native:0,Origin:\n",
                                     "State:S1000,Native:-7,Origin:[Maker]\n"));
}

TEST_F(CatalogFaults, FailureWithoutAnyRecordIsShownAllTheSame) {
    EXPECT_EQ(AllTables(), "FALSE");
    EXPECT_EQ(ColumnList(), "TRUE|before");
    m_source.Tables().Fails(ErrorWithoutRecord());
    Open();
    EXPECT_EQ(AllTables(), "FALSE");
    EXPECT_THAT(m_boxes,
                ElementsAre(HasSubstr("\nState:08003"), HasSubstr("\nState:08003"), HasSubstr("\nState:")));
}

struct Step {
    const char* function;
    int argument;
};

class CatalogOpening : public CatalogFaults, public ::testing::WithParamInterface<Step> {};
INSTANTIATE_TEST_SUITE_P(At, CatalogOpening,
                         ::testing::Values(Step{"SQLNumResultCols", 0}, Step{"SQLDescribeCol", 5},
                                           Step{"SQLBindCol", 1}, Step{"SQLBindCol", 5}, Step{"SQLFetch", 0}),
                         [](const auto& info) {
                             return info.param.function + std::to_string(info.param.argument);
                         });

TEST_P(CatalogOpening, FailureIsShownAndLeavesNoNames) {
    const Step step = GetParam();
    Fault fault = Error("HY000", "no more");
    if (step.argument > 0)
        fault.At(step.argument);
    AddTable(m_source.Tables().Fails(step.function, fault), "t");
    AddColumn(m_source.Columns().Fails(step.function, fault), "c");
    Open();
    EXPECT_EQ(AllTables(), "FALSE");
    EXPECT_EQ(ColumnList(), "TRUE|before");
    EXPECT_THAT(m_boxes, ElementsAre(StartsWith("no more\nState:S1000"), StartsWith("no more\nState:S1000")));
}

TEST_F(CatalogFaults, WarningsAreNoFailures) {
    AddTable(m_source.Tables().Fails(Warning("01000", "slow")), "t");
    m_source.Fails("SQLFetch", Warning("01000", "slow"));
    Open();
    EXPECT_EQ(AllTables(), "TRUE|t");
    EXPECT_THAT(m_boxes, IsEmpty());
}

TEST_F(CatalogFaults, WithoutAStatementHandleTheAnswerIsFalseInSilence) {
    m_source.Fails("SQLAllocHandle", Error("HY001", "no more"));
    Open();
    EXPECT_EQ(AllTables(), "FALSE");
    EXPECT_EQ(ColumnList(), "FALSE|before");
    EXPECT_THAT(m_boxes, IsEmpty());
}

TEST_F(CatalogFaults, ErrorBehindTheFirstRowKeepsTheNamesReadSoFar) {
    Answer& tables = m_source.Tables();
    AddTable(tables, "a");
    AddTable(tables, "b");
    tables.FetchFails(Error("40001", "deadlock"));
    AddTable(tables, "c");
    Answer& columns = m_source.Columns();
    AddColumn(columns, "a b");
    AddColumn(columns, Error("22018", "bad name"));
    Open();
    EXPECT_EQ(AllTables(), "TRUE|a|b");
    EXPECT_EQ(ColumnList(), "TRUE|before|[a b]");
    EXPECT_THAT(m_boxes, ElementsAre("deadlock\nState:40001,Native:0,Origin:\n",
                                     "bad name\nState:22005,Native:0,Origin:\n"));
}

TEST_F(CatalogFaults, ConnectionThatDiesKeepsTheNamesReadSoFar) {
    Answer& tables = m_source.Tables();
    AddTable(tables, "a");
    tables.FetchFails(ConnectionDies());
    Open();
    EXPECT_EQ(AllTables(), "TRUE|a");
    EXPECT_EQ(AllTables(), "FALSE");
    EXPECT_EQ(ColumnList(), "FALSE|before") << "a dead connection has no statement to give";
    EXPECT_THAT(m_boxes, ElementsAre(HasSubstr("State:08S01")));
}

TEST_F(CatalogFaults, LongNamesAreCutAt255BytesButNotInsideACharacter) {
    const std::string names[] = {Times(255, "x"),       Times(256, "x"),        Times(5000, "x"),
                                 Times(200, "道"),      "x" + Times(200, "路"), "xy" + Times(3000, "道"),
                                 "x" + Times(100, "😀"), "路" + Times(64, "😀")};
    const std::string kept[] = {Times(255, "x"),
                                Times(255, "x"),
                                Times(255, "x"),
                                Gbk(Times(127, "道")),
                                Gbk("x" + Times(127, "路")),
                                Gbk("xy" + Times(126, "道")),
                                Gbk("x" + Times(63, "😀")),
                                Gbk("路" + Times(63, "😀"))};
    for (const std::string charset : {"UTF-8", "GB18030"}) {
        for (std::size_t i = 0; i < std::size(names); ++i) {
            for (const bool knowsTotal : {true, false}) {
                ScriptedSource source;
                Value name(charset == "UTF-8" ? names[i] : Gbk(names[i]));
                AddTable(source.Tables(), knowsTotal ? name : name.NoTotal());
                CGeoDatabase database;
                ASSERT_TRUE(database.SetNarrowCharset(charset));
                database.Open(CString(source.ConnectionString()));
                CStringArray tables;
                EXPECT_TRUE(database.GetAllTables(tables));
                EXPECT_THAT(ToStrings(tables), ElementsAre(kept[i])) << charset << ' ' << i << knowsTotal;
            }
        }
    }
    EXPECT_THAT(m_boxes, IsEmpty());
}

TEST_F(CatalogFaults, NamesWithoutTextAreEmpty) {
    Answer& tables = m_source.Tables();
    AddTable(tables, "first");
    AddTable(tables, kNull);
    AddTable(tables, "");
    AddTable(tables, Value("unmeasured").Indicator(-99));
    AddTable(tables, "last");
    Open();
    EXPECT_EQ(AllTables(), "TRUE|first||||last");
}

TEST_F(CatalogFaults, NameThatIsNoTextIsAnErrorThatSaysWhere) {
    Answer& tables = m_source.Tables();
    AddTable(tables, "a");
    AddTable(tables, "b\xFF");
    AddTable(tables, "c");
    Open();
    EXPECT_EQ(AllTables(), "TRUE|a");
    EXPECT_THAT(m_boxes, ElementsAre(HasSubstr("State:22021")));
    EXPECT_THAT(m_boxes, ElementsAre(HasSubstr("TABLE_NAME")));
}

TEST_F(CatalogFaults, TableNameThatTheCharsetLacksNeverReachesTheDriver) {
    AddColumn(m_source.Columns(), "c");
    Open("windows-1252");
    EXPECT_EQ(ColumnList(Gbk("道路").c_str()), "TRUE|before");
    EXPECT_THAT(m_boxes, ElementsAre(HasSubstr("State:22021")));
    EXPECT_THAT(m_source.Calls("SQLColumns"), IsEmpty());
}

TEST_F(CatalogFaults, AnswersThatTakeTimeAreWaitedForAndAskedOnce) {
    m_source.StillExecuting(3);
    for (const char* name : {"a", "b", "c"}) {
        AddTable(m_source.Tables(), name);
        AddColumn(m_source.Columns(), name);
    }
    Open();
    EXPECT_EQ(AllTables(), "TRUE|a");
    EXPECT_EQ(ColumnList(), "TRUE|before|a");
    EXPECT_THAT(m_source.Log(),
                Contains(HasSubstr("SQLColumns NULL, NULL, 't', NULL (still executing)")).Times(3));
    EXPECT_THAT(m_source.Calls("SQLTables"), SizeIs(1));
    EXPECT_THAT(m_source.Calls("SQLColumns"), SizeIs(1));
}

}  // namespace
}  // namespace kortavin::testing
