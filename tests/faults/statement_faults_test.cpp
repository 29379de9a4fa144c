#include "service/statement.h"
#include "tests/faults/faultfixture.h"

namespace kortavin::testing {
namespace {

class StatementFaults : public FaultTest {
  protected:
    void SetUp() override { m_source.Statement("good").AddColumn("g").AddRow({"1"}).AddRow({"2"}); }

    // What opening says; afterwards the recordset must be closed and good for another statement.
    std::string FailureOfOpening(const char* sql) {
        _CRecordsetEx recordset(&m_database);
        const std::string failure = FailureOf([&] { recordset.OpenSql(sql); });
        EXPECT_FALSE(recordset.IsOpen());
        EXPECT_EQ(recordset.m_hstmt, nullptr);
        EXPECT_TRUE(recordset.IsBOF() && recordset.IsEOF());
        EXPECT_EQ(m_source.OpenStatements(), 0);
        recordset.OpenSql("good");
        CString value;
        recordset.ReadFieldText(0, value);
        EXPECT_STREQ(value, "1");
        return failure;
    }
};

TEST_F(StatementFaults, RejectedStatementClosesTheRecordsetForAnother) {
    m_source.Statement("rejected").Fails(Error("42S02", "[Maker]no such table: t", 208));
    m_source.Statement("silent").Fails(ErrorWithoutRecord());
    m_source.Statement("twice").Fails(Error("01000", "first").Also("42000", "second"));
    Open();
    EXPECT_EQ(FailureOfOpening("rejected"), "S0002 no such table: t");
    EXPECT_EQ(FailureOfOpening("silent"),
              "HY000 The data source reported a failure without giving a reason.");
    EXPECT_EQ(FailureOfOpening("twice"), "01000 first");
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), SizeIs(6));
    EXPECT_THAT(m_boxes, IsEmpty());
}

TEST_F(StatementFaults, DescriptionThatFailsClosesTheRecordset) {
    m_source.Statement("count").AddColumn("a").Fails("SQLNumResultCols", Error("HY000", "no count"));
    m_source.Statement("column").AddColumn("a").AddColumn("b").Fails("SQLDescribeCol",
                                                                     Error("HY000", "no column").At(2));
    m_source.Statement("silent").AddColumn("a").Fails("SQLDescribeCol", ErrorWithoutRecord());
    m_source.Statement("fetch").AddColumn("a").FetchFails(Error("40001", "deadlock"));
    Open();
    EXPECT_EQ(FailureOfOpening("count"), "S1000 no count");
    EXPECT_EQ(FailureOfOpening("column"), "S1000 no column");
    EXPECT_THAT(FailureOfOpening("silent"), HasSubstr("without giving a reason"));
    EXPECT_EQ(FailureOfOpening("fetch"), "40001 deadlock");
}

TEST_F(StatementFaults, FailureLeavesNothingOfTheFormerDescription) {
    m_source.Statement("rejected").Fails(Error("42000", "no"));
    m_source.Statement("half").AddColumn("a").AddColumn("b").Fails("SQLDescribeCol",
                                                                   Error("HY000", "no").At(2));
    m_source.Statement("update").Affects(3);
    m_source.Statement("wide").AddColumn("x").AddColumn("y").AddColumn("z").AddRow({"1", "2", "3"});
    Open();
    _CRecordsetEx recordset(&m_database);
    const auto outcome = [&](const char* sql) {
        const std::string failure = FailureOf([&] { recordset.OpenSql(sql); });
        std::string names = failure + " " + std::to_string(recordset.GetODBCFieldCount());
        CODBCFieldInfo info;
        for (short i = 0; FailureOf([&] { recordset.GetODBCFieldInfo(i, info); }).empty(); ++i)
            names += ' ' + std::string(info.m_strName.View());
        return names;
    };
    EXPECT_EQ(outcome("wide"), " 3 x y z");
    EXPECT_EQ(outcome("good"), " 1 g");
    EXPECT_EQ(outcome("wide"), " 3 x y z");
    EXPECT_EQ(outcome("half"), "S1000 no -1");
    EXPECT_EQ(outcome("wide"), " 3 x y z");
    EXPECT_EQ(outcome("update"), " 0");
}

TEST_F(StatementFaults, WithoutAStatementHandleOpeningAnswersFalse) {
    m_source.Fails("SQLAllocHandle", Error("HY001", "no more"));
    Open();
    _CRecordsetEx recordset(&m_database);
    EXPECT_FALSE(recordset.Open(CRecordset::forwardOnly, "good", CRecordset::executeDirect));
    EXPECT_FALSE(recordset.IsOpen());
    EXPECT_NO_THROW(recordset.OpenSql("good"));
    EXPECT_FALSE(recordset.IsOpen());
}

TEST_F(StatementFaults, PreparedExecutionFailsLikeADirectOne) {
    m_source.Statement("rejected").Fails(Error("42000", "no"));
    m_source.StillExecuting(2);
    Open();
    _CRecordsetEx recordset(&m_database);
    EXPECT_EQ(FailureOf([&] { recordset.Open(CRecordset::forwardOnly, "rejected", 0); }), "37000 no");
    EXPECT_TRUE(recordset.Open(CRecordset::forwardOnly, "good", 0));
    EXPECT_THAT(m_source.Calls("SQLExecute"), SizeIs(2));
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), IsEmpty());
}

TEST_F(StatementFaults, WarningsAndNoDataAreNoFailures) {
    Fault noRow = ErrorWithoutRecord();
    noRow.code = 100;
    m_source.Statement("delete").Fails(noRow);
    m_source.Statement("warned").AddColumn("a").AddRow({"1"}).Fails(Warning("01000", "slow"));
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("delete");
    EXPECT_TRUE(recordset.IsOpen() && recordset.IsEOF());
    EXPECT_NO_THROW(m_database.ExecuteSQL("delete"));
    recordset.OpenSql("warned");
    EXPECT_EQ(recordset.GetODBCFieldCount(), 1);
    EXPECT_FALSE(recordset.IsEOF());
}

TEST_F(StatementFaults, StillExecutingCountsAsOneExecution) {
    m_source.StillExecuting(5);
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("good");
    int rows = 0;
    for (; !recordset.IsEOF(); recordset.MoveNext())
        ++rows;
    EXPECT_EQ(rows, 2);
    m_database.ExecuteSQL("good");
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), ElementsAre("SQLExecDirect good", "SQLExecDirect good"));
    EXPECT_THAT(m_source.Log(), Contains("SQLExecDirect good (still executing)").Times(10));
}

TEST_F(StatementFaults, LongColumnNamesAreCutAt256BytesButNotInsideACharacter) {
    const struct {
        std::string name;
        std::string kept;
    } names[] = {
        {Times(256, "x"), Times(256, "x")},
        {Times(257, "x"), Times(256, "x")},
        {Times(3000, "x"), Times(256, "x")},
        {Times(128, "道"), Times(128, "道")},
        {Times(200, "道"), Times(128, "道")},
        {"x" + Times(200, "道"), "x" + Times(127, "道")},
        {"xy" + Times(2000, "路"), "xy" + Times(127, "路")},
        {"路" + Times(300, "😀"), "路" + Times(63, "😀")},
    };
    for (const std::string charset : {"UTF-8", "GB18030"}) {
        Answer& result = m_source.Statement(charset);
        for (const auto& [name, kept] : names)
            result.AddColumn(charset == "UTF-8" ? name : Gbk(name));
        Open(charset);
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql(CString(charset));
        ASSERT_EQ(recordset.GetODBCFieldCount(), std::size(names));
        for (std::size_t i = 0; i < std::size(names); ++i) {
            CODBCFieldInfo info;
            recordset.GetODBCFieldInfo(static_cast<short>(i), info);
            EXPECT_EQ(info.m_strName.View(), Gbk(names[i].kept)) << charset << ' ' << i;
        }
    }
}

TEST_F(StatementFaults, ColumnNameThatIsNoTextIsAnErrorThatTellsTheColumn) {
    m_source.Statement("utf8").AddColumn("a").AddColumn("b\xFF");
    m_source.Statement("cut").AddColumn("a").AddColumn(Times(5000, "x") + "\xFF").AddColumn("\xB5\xC0");
    Open();
    EXPECT_EQ(FailureOfOpening("utf8"),
              "22021 The name of column 2 is not valid text in the character set UTF-8");
    EXPECT_EQ(FailureOfOpening("cut"),
              "22021 The name of column 3 is not valid text in the character set UTF-8");
}

TEST_F(StatementFaults, DescriptionsKeepTheirLimits) {
    static constexpr long long kHuge = 5'000'000'000;
    m_source.Statement("q")
        .AddColumn("a", -32768, 0, -32768, 0)
        .AddColumn("b", 32767, 4294967295, 32767, 1)
        .AddColumn("c", -5, kHuge, -1, 2)
        .AddColumn("", 0, std::numeric_limits<long long>::max(), 0, 2)
        .AddRow({"1", "2", "3", "4"})
        .AddRow({"5", "6", "7", "8"});
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("q");
    const auto told = [&](short i) {
        CODBCFieldInfo info;
        recordset.GetODBCFieldInfo(i, info);
        return std::string(info.m_strName.View()) + ' ' + std::to_string(info.m_nSQLType) + ' ' +
               std::to_string(info.m_nPrecision) + ' ' + std::to_string(info.m_nScale) + ' ' +
               std::to_string(info.m_nNullability);
    };
    EXPECT_EQ(told(0), "a -32768 0 -32768 0");
    EXPECT_EQ(told(1), "b 32767 4294967295 32767 1");
    EXPECT_EQ(told(2), "c -5 4294967295 -1 2") << "not the low 32 bits";
    EXPECT_EQ(told(3), " 0 4294967295 0 2");
    EXPECT_EQ(service::FieldTypeName(-32768), service::FieldTypeName(32767));
    recordset.MoveNext();
    CString value;
    recordset.ReadFieldText(3, value);
    EXPECT_STREQ(value, "8");
}

TEST_F(StatementFaults, StatementThatTheCharsetLacksNeverReachesTheDriver) {
    Open("windows-1252");
    const std::string sql = "SELECT '" + Gbk("道") + "'";
    const std::string zero("good\0; more", 11);
    for (const std::string& text : {sql, std::string("\x81"), std::string("'\xFF'"), zero}) {
        EXPECT_THAT(FailureOf([&] { m_database.ExecuteSQL(CString(text)); }), StartsWith("22021")) << text;
        _CRecordsetEx recordset(&m_database);
        EXPECT_THAT(FailureOf([&] { recordset.OpenSql(CString(text)); }), StartsWith("22021")) << text;
        EXPECT_FALSE(recordset.IsOpen());
    }
    m_database.ExecuteSQL(CString(Gbk("good")));
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), ElementsAre("SQLExecDirect good"));
}

}  // namespace
}  // namespace kortavin::testing
