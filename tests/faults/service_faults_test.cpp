#include "tests/support/scripted/failingfile.h"
#include "tests/support/scripted/faultfixture.h"

namespace kortavin::testing {
namespace {

class ServiceFaults : public FaultTest {
  protected:
    // What stands before the rows of the binary layout; the number of rows is its end.
    static constexpr std::size_t kHeader = 48 + 118 * 3;

    void Script(const Value& value) {
        m_source.Statement("good").AddColumn("id", 4, 10).AddColumn("name").AddColumn("note", 91, 10);
        m_source.Statement("good").AddRow({"1", "x", "u"}).AddRow({"2", value, "v"}).AddRow({"3", "z", "w"});
    }
    int Export(CFile& file, int format, int quoteMode = 1, int header = 1, const CString& sql = "good") {
        return m_query.QueryDataToFile(&file, format, quoteMode, header, sql);
    }

    // What opening says; a recordset that failed must be closed, and any good for another statement.
    std::string FailureOfOpening(const CString& sql) {
        _CRecordsetEx recordset(&m_database);
        const std::string failure = FailureOf([&] { recordset.OpenSql(sql); });
        EXPECT_EQ(recordset.IsOpen(), failure.empty());
        EXPECT_EQ(m_source.log.openStatements, failure.empty());
        recordset.OpenSql("good");
        CString value;
        recordset.ReadFieldText(1, value);
        EXPECT_STREQ(value, "x");
        return failure;
    }

    // The services' answers where there is no result: nothing, and nobody is told.
    void ExpectNothing(CString sql) {
        int count = 77;
        CMemFile file;
        EXPECT_EQ(m_query.GetReocrd(sql), nullptr) << sql;
        EXPECT_EQ(m_query.InspectSyntax(sql), 0) << sql;
        EXPECT_EQ(m_query.GetFieldsInfo(sql, count), nullptr) << sql;
        EXPECT_EQ(Export(file, 10, 2, 1, sql), 0) << sql;
        EXPECT_TRUE(count == 0 && file.GetContent().empty() && m_boxes.empty()) << sql;
    }
};

TEST_F(ServiceFaults, StatementThatFailsIsToldAndClosesTheRecordsetForAnother) {
    const struct {
        const char* sql;
        Answer answer;
        std::string failure;
    } cases[] = {
        {"rejected", Answer().Fails(Error("42S02", "[Maker]no such table")), "S0002 no such table"},
        {"silent", Answer().Fails(ErrorWithoutRecord()),
         "HY000 The data source reported a failure without giving a reason."},
        {"no text", Answer().Fails(Error("HY000", "bad \xFF\xB5 end")), "S1000 bad \\xFF\\xB5 end"},
        {"count", Answer().Fails("SQLNumResultCols", Error("HY000", "no")), "S1000 no"},
        {"column", Answer().AddColumn("a").Fails("SQLDescribeCol", Error("HY000", "no")), "S1000 no"},
        {"name", Answer().AddColumn("a").AddColumn("b\xFF"),
         "22021 The name of column 2 is not valid text in the character set UTF-8"},
        {"fetch", Answer().AddColumn("a").FetchFails(Error("40001", "deadlock")), "40001 deadlock"},
        {"no row", Answer().Fails(NoData()), ""},
        {"warned", Answer().AddColumn("a").AddRow({"1"}).Fails(Warning("01000", "slow")), ""},
    };
    Script("y");
    for (const auto& [sql, answer, failure] : cases) {
        m_source.Statement(sql) = answer;
        Open();
        EXPECT_EQ(FailureOfOpening(sql), failure) << sql;
        if (!failure.empty())
            ExpectNothing(sql);
    }
}

TEST_F(ServiceFaults, WithoutAStatementHandleOrAConnectionNothingIsExecuted) {
    ExpectNothing("good");
    m_source.Fails("SQLAllocHandle", Error("HY001", "no more"));
    Open();
    ExpectNothing("good");
    _CRecordsetEx recordset(&m_database);
    EXPECT_FALSE(recordset.Open(CRecordset::forwardOnly, "good", CRecordset::executeDirect));
    EXPECT_EQ(AllTables() + ColumnList(), "FALSEFALSE|before");
    EXPECT_THAT(m_boxes, IsEmpty());
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), IsEmpty());
}

TEST_F(ServiceFaults, EachServiceExecutesOnceWithTheLongTimeoutAndWaits) {
    Script("y");
    AddName("t");
    m_source.stillExecuting = 3;
    m_source.Fails("SQLSetStmtAttr", Error("HYC00", "no timeouts"));
    Open();
    CString sql("good");
    int count = 0;
    CQuerySql::ReleaseRecordset(m_query.GetReocrd(sql));
    CQuerySql::ReleaseFieldsInfo(m_query.GetFieldsInfo(sql, count));
    EXPECT_EQ(count, 3);
    EXPECT_EQ(m_query.InspectSyntax(sql), 1);
    CMemFile file;
    EXPECT_EQ(Export(file, 2, 1, 0), 1);
    EXPECT_EQ(file.GetContent(), "1 x u\r\n2 y v\r\n3 z w\r\n");
    EXPECT_EQ(m_source.Calls("SQLExecDirect"), Strings(4, "SQLExecDirect good"));
    EXPECT_EQ(m_source.Calls("SQLSetStmtAttr"), Strings(4, "SQLSetStmtAttr 0, 999"));
    EXPECT_EQ(AllTables() + ColumnList(), "TRUE|tTRUE|before|t");
}

TEST_F(ServiceFaults, TextThatTheCharsetLacksNeverReachesTheDriver) {
    Script("y");
    Open("windows-1252");
    for (const std::string& text : {Gbk("道"), std::string("\x81"), std::string("good\0; more", 11)}) {
        EXPECT_THAT(FailureOf([&] { m_database.ExecuteSQL(CString(text)); }), StartsWith("22021")) << text;
        EXPECT_THAT(FailureOfOpening(CString(text)), StartsWith("22021")) << text;
    }
    ColumnList(Gbk("道"));
    EXPECT_THAT(m_boxes, ElementsAre(HasSubstr("State:22021,Native:0,Origin:[Kortavin]")));
    EXPECT_EQ(m_source.Calls("SQLExecDirect"), Strings(3, "SQLExecDirect good"));
}

TEST_F(ServiceFaults, ValueThatFailsKeepsWhatIsExportedInEveryLayout) {
    Script(Error("22012", "division by zero"));
    Open();
    const std::string records("\1\0\0\0001\1\0\0\0x\1\0\0\0u\1\0\0\0002", 20);
    const struct {
        int format, quoteMode, header;
        std::string content;
    } cases[] = {
        {1, 2, 1, "'id','name','note'\r\n1,'x',u\r\n2,"},
        {2, 1, 1, "id name note\r\n1 x u\r\n2 "},
        {3, 0, 0, "1\tx\tu\r\n2\t"},
        {10, 2, 0, records},
    };
    for (const auto& [format, quoteMode, header, content] : cases) {
        CMemFile file;
        EXPECT_EQ(Export(file, format, quoteMode, header), 0) << format;
        EXPECT_EQ(file.GetContent(), content) << format;
    }
    CMemFile binary;
    EXPECT_EQ(Export(binary, 10), 0);
    EXPECT_EQ(binary.GetContent().substr(kHeader - 4), std::string("\2\0\0\0", 4) + records);
}

// The header ends with a flush.
TEST_F(ServiceFaults, WhateverAHostsFileThrowsReachesTheCallerFromTheHeaderOnly) {
    Script("y");
    Open();
    for (const int format : {1, 10}) {
        CMemFile whole;
        ASSERT_EQ(Export(whole, format), 1);
        int answer = 0;
        for (int goesWell = 0; answer != 1; ++goesWell) {
            FailingFile file(goesWell);
            try {
                answer = Export(file, format);
                EXPECT_TRUE(file.wasFlushed) << goesWell;
            } catch (int) {
                EXPECT_FALSE(file.wasFlushed) << goesWell;
            }
            const auto content = file.GetContent().substr(0, kHeader - 4);
            EXPECT_EQ(content, whole.GetContent().substr(0, content.size()));
        }
    }
}

}  // namespace
}  // namespace kortavin::testing
