#include "framework/base/file.h"
#include "service/exportrows.h"
#include "tests/faults/faultfixture.h"

namespace kortavin::testing {
namespace {

// A host's file that lets so many writes, flushes or seeks go well and then throws whatever the host throws.
template <class Thrown>
class FailingFile : public CMemFile {
  public:
    enum class Call { Write, Flush, Seek, GetPosition };

    FailingFile(Call call, int goesWell, Thrown thrown)
        : m_call(call), m_goesWell(goesWell), m_thrown(thrown) {}

    void Write(const void* buffer, UINT count) override {
        FailIfDue(Call::Write);
        CMemFile::Write(buffer, count);
    }
    void Flush() override {
        FailIfDue(Call::Flush);
        CMemFile::Flush();
    }
    ULONGLONG Seek(LONGLONG offset, UINT from) override {
        FailIfDue(Call::Seek);
        return CMemFile::Seek(offset, from);
    }
    ULONGLONG GetPosition() const override {
        FailIfDue(Call::GetPosition);
        return CMemFile::GetPosition();
    }

  private:
    void FailIfDue(Call call) const {
        if (call == m_call && m_goesWell-- <= 0)
            throw m_thrown;
    }

    Call m_call;
    mutable int m_goesWell;
    Thrown m_thrown;
};

const CFileException kDiskFull(CFileException::diskFull, 28, "out");

std::string Number(unsigned value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

std::string Record(const Strings& values) {
    std::string record;
    for (const std::string& value : values)
        record += Number(static_cast<unsigned>(value.size())) + value;
    return record;
}

class QueryFaults : public FaultTest {
  protected:
    int Export(CFile& file, int format, int quoteMode, int header, const char* sql = "q") {
        return m_query.QueryDataToFile(&file, format, quoteMode, header, sql);
    }
    void AddRows(Answer& answer, const Value& second) {
        answer.AddColumn("id", 4, 10).AddColumn("name").AddColumn("note", 91, 10);
        answer.AddRow({"1", "x", "u"}).AddRow({"2", second, "v"}).AddRow({"3", "z", "w"});
    }
    // What stands before the rows of the binary layout, and the number of rows in it.
    static constexpr std::size_t kHeader = 48 + 118 * 3;
    static unsigned RowCount(const CMemFile& file) {
        const std::string_view bytes = file.GetContent().substr(kHeader - 4, 4);
        unsigned count = 0;
        for (std::size_t i = 4; i-- > 0;)
            count = count << 8 | static_cast<unsigned char>(bytes[i]);
        return count;
    }

    CQuerySql m_query{&m_database};
};

struct Rejection {
    const char* name;
    Answer answer;
};

TEST_F(QueryFaults, StatementsThatFailAreNullZeroAndSilentAndExecutedOnce) {
    const Rejection rejections[] = {
        {"rejected", Answer().Fails(Error("42000", "no"))},
        {"silent", Answer().Fails(ErrorWithoutRecord())},
        {"count", Answer().AddColumn("a").Fails("SQLNumResultCols", Error("HY000", "no"))},
        {"column", Answer().AddColumn("a").Fails("SQLDescribeCol", Error("HY000", "no"))},
        {"name", Answer().AddColumn("\xFF")},
        {"fetch", Answer().AddColumn("a").FetchFails(Error("22012", "no"))},
        {"dies", Answer().AddColumn("a").FetchFails(ConnectionDies())},
    };
    for (const auto& [name, answer] : rejections)
        m_source.Statement(name) = [&] {
            Answer keyed = answer;
            keyed.key = name;
            return keyed;
        }();
    for (const auto& [name, answer] : rejections) {
        Open();
        CString sql(name);
        EXPECT_EQ(m_query.GetReocrd(sql), nullptr) << name;
        m_database.Close();
        Open();
        EXPECT_EQ(m_query.InspectSyntax(sql), 0) << name;
        m_database.Close();
        Open();
        int count = 77;
        EXPECT_EQ(m_query.GetFieldsInfo(sql, count), nullptr) << name;
        EXPECT_EQ(count, 0) << name;
        m_database.Close();
        Open();
        CMemFile file;
        for (const int format : {1, 10})
            EXPECT_EQ(Export(file, format, 2, 1, name), 0) << name;
        EXPECT_TRUE(file.GetContent().empty()) << name;
        EXPECT_STREQ(sql, name);
        EXPECT_EQ(m_source.OpenStatements(), 0) << name;
    }
    const std::string once = "SQLExecDirect rejected";
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), Contains(once).Times(5));
    EXPECT_THAT(m_boxes, IsEmpty());
}

TEST_F(QueryFaults, WithoutAStatementHandleOrAConnectionNothingIsExecuted) {
    CString sql("q");
    int count = 77;
    CMemFile file;
    const auto expectNothing = [&](CQuerySql& query) {
        EXPECT_EQ(query.GetReocrd(sql), nullptr);
        EXPECT_EQ(query.InspectSyntax(sql), 0);
        EXPECT_EQ(query.GetFieldsInfo(sql, count), nullptr);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(query.QueryDataToFile(&file, 1, 2, 1, sql), 0);
        EXPECT_TRUE(file.GetContent().empty());
    };
    expectNothing(m_query);
    m_source.Fails("SQLAllocHandle", Error("HY001", "no more"));
    Open();
    expectNothing(m_query);
    CQuerySql unconnected;
    expectNothing(unconnected);
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), IsEmpty());
}

TEST_F(QueryFaults, EachServiceExecutesOnceWithTheLongTimeout) {
    m_source.StillExecuting(2).Fails("SQLSetStmtAttr", Error("HYC00", "no timeouts").After(2));
    AddRows(m_source.Statement("q"), "y");
    Open();
    m_database.SetQueryTimeout(5);
    CString sql("q");
    void* const recordset = m_query.GetReocrd(sql);
    ASSERT_NE(recordset, nullptr);
    int count = 0;
    CQuerySql::ReleaseFieldsInfo(m_query.GetFieldsInfo(recordset, count));
    EXPECT_EQ(count, 3);
    CQuerySql::ReleaseRecordset(recordset);
    EXPECT_EQ(m_query.InspectSyntax(sql), 1);
    CQuerySql::ReleaseFieldsInfo(m_query.GetFieldsInfo(sql, count));
    CMemFile file;
    EXPECT_EQ(Export(file, 2, 1, 0), 1) << "a driver that refuses the timeout is used without";
    EXPECT_EQ(file.GetContent(), "1 x u\r\n2 y v\r\n3 z w\r\n");
    EXPECT_EQ(m_database.GetQueryTimeout(), 999u);
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), SizeIs(4));
    EXPECT_THAT(m_source.Calls("SQLSetStmtAttr"), ElementsAreArray(Strings(4, "SQLSetStmtAttr 0, 999")));
}

// How columns are read must not show: bound behind the first row, or never.
class ExportFaults : public QueryFaults, public ::testing::WithParamInterface<int> {
  protected:
    void SetUp() override { m_source.GetDataExtensions(GetParam()); }
};
INSTANTIATE_TEST_SUITE_P(Extensions, ExportFaults, ::testing::Values(0, 15),
                         ::testing::PrintToStringParamName());

TEST_P(ExportFaults, ValueThatFailsKeepsWhatIsWrittenInEveryLayout) {
    AddRows(m_source.Statement("q"), Error("22012", "division by zero"));
    Open();
    const std::string quotedNames = "'id','name','note'\r\n";
    const struct {
        int format, quoteMode, header;
        std::string content;
    } cases[] = {
        {1, 2, 1, quotedNames + "1,'x',u\r\n2,"},
        {1, 3, 0, "1,\"x\",u\r\n2,"},
        {2, 1, 1, "id name note\r\n1 x u\r\n2 "},
        {3, 0, 0, "1\tx\tu\r\n2\t"},
        {10, 2, 0, Record({"1", "x", "u"}) + Record({"2"})},
        {4, 2, 1, ""},
    };
    for (const auto& [format, quoteMode, header, content] : cases) {
        CMemFile file;
        EXPECT_EQ(Export(file, format, quoteMode, header), 0) << format;
        EXPECT_EQ(file.GetContent(), content) << format;
    }
    CMemFile binary;
    EXPECT_EQ(Export(binary, 10, 2, 1), 0);
    EXPECT_EQ(binary.GetContent().substr(kHeader), Record({"1", "x", "u"}) + Record({"2"}));
    EXPECT_EQ(RowCount(binary), 2u) << "the row begun counts";
    EXPECT_THAT(m_boxes, IsEmpty());
}

TEST_P(ExportFaults, FetchThatFailsEndsBehindTheRowBefore) {
    Answer& answer = m_source.Statement("q");
    AddRows(answer, "y");
    answer.FetchFails(Error("22012", "no row")).AddRow({"4"});
    Open();
    CMemFile text;
    EXPECT_EQ(Export(text, 1, 1, 0), 0);
    EXPECT_EQ(text.GetContent(), "1,x,u\r\n2,y,v\r\n3,z,w\r\n");
    CMemFile binary;
    EXPECT_EQ(Export(binary, 10, 1, 1), 0);
    EXPECT_EQ(RowCount(binary), 3u);
}

TEST_P(ExportFaults, DeadConnectionAndBrokenTextEndTheExportToo) {
    AddRows(m_source.Statement("broken"), "a\xFF");
    AddRows(m_source.Statement("dies"), ConnectionDies());
    Open();
    for (const char* sql : {"broken", "dies"}) {
        CMemFile file;
        EXPECT_EQ(Export(file, 1, 1, 0, sql), 0) << sql;
        EXPECT_THAT(std::string(file.GetContent()), StartsWith("1,x,u\r\n")) << sql;
        EXPECT_THAT(std::string(file.GetContent()), Not(HasSubstr("?"))) << sql;
    }
}

TEST_P(ExportFaults, OutOfRangeValueDoesNotStopTheExport) {
    AddRows(m_source.Statement("q"), Value("9").But(Error("22003", "range")));
    Open();
    CMemFile file;
    EXPECT_EQ(Export(file, 1, 1, 0), 1);
    EXPECT_EQ(file.GetContent(), "1,x,u\r\n2,9,v\r\n3,z,w\r\n");
}

class HostFileFaults : public QueryFaults {
  protected:
    using File = FailingFile<CFileException>;
    using Call = File::Call;

    void SetUp() override {
        AddRows(m_source.Statement("q"), "y");
        Open();
    }
    // The answer, or -1 for an error of the file's that reached the caller.
    int Answer(CFile& file, int format, int header) {
        try {
            return Export(file, format, 1, header);
        } catch (const CFileException&) {
            return -1;
        }
    }
};

TEST_F(HostFileFaults, WriteThatFailsInTheHeaderReachesTheCallerAndInTheRowsDoesNot) {
    const std::string whole = "id,name,note\r\n1,x,u\r\n2,y,v\r\n3,z,w\r\n";
    static constexpr int kWrites = 24;
    for (int goesWell = 0; goesWell <= kWrites; ++goesWell) {
        File file(Call::Write, goesWell, kDiskFull);
        EXPECT_EQ(Answer(file, 1, 1), goesWell < 6 ? -1 : goesWell < kWrites ? 0 : 1) << goesWell;
        EXPECT_THAT(whole, StartsWith(std::string(file.GetContent()))) << goesWell;
        EXPECT_EQ(m_source.OpenStatements(), 0);
    }
}

TEST_F(HostFileFaults, BinaryRowCountIsRightUpToTheFailingWrite) {
    bool inHeader = true;
    for (int goesWell = 0; goesWell < 100; ++goesWell) {
        File file(Call::Write, goesWell, kDiskFull);
        const int answer = Answer(file, 10, 1);
        EXPECT_EQ(m_source.OpenStatements(), 0);
        if (answer == 1)
            return;
        inHeader = inHeader && answer == -1;
        EXPECT_EQ(answer, inHeader ? -1 : 0) << goesWell;
        EXPECT_EQ(inHeader, file.GetContent().size() < kHeader) << goesWell;
    }
    ADD_FAILURE() << "never went well";
}

TEST_F(HostFileFaults, FlushThatFailsReachesTheCallerBehindTheHeaderOnly) {
    File behindHeader(Call::Flush, 0, kDiskFull);
    EXPECT_EQ(Answer(behindHeader, 1, 1), -1);
    EXPECT_EQ(behindHeader.GetContent(), "id,name,note\r\n");
    File behindRows(Call::Flush, 1, kDiskFull);
    EXPECT_EQ(Answer(behindRows, 1, 1), 0);
    File behindCount(Call::Flush, 2, kDiskFull);
    EXPECT_EQ(Answer(behindCount, 10, 1), 0);
    File never(Call::Flush, 3, kDiskFull);
    EXPECT_EQ(Answer(never, 10, 1), 1);
}

TEST_F(HostFileFaults, PositionBelongsToTheHeaderAndSeekingBackDoesNot) {
    File position(Call::GetPosition, 0, kDiskFull);
    EXPECT_EQ(Answer(position, 10, 1), -1);
    File seek(Call::Seek, 0, kDiskFull);
    EXPECT_EQ(Answer(seek, 10, 1), 0);
    EXPECT_EQ(seek.GetContent().substr(kHeader),
              Record({"1", "x", "u"}) + Record({"2", "y", "v"}) + Record({"3", "z", "w"}));
    EXPECT_EQ(RowCount(seek), 0u);
    for (const int format : {1, 2, 3, 4}) {
        File noSeek(Call::Seek, 0, kDiskFull);
        EXPECT_EQ(Answer(noSeek, format, 1), 1) << format;
    }
    File noHeader(Call::Seek, 0, kDiskFull);
    EXPECT_EQ(Answer(noHeader, 10, 0), 1);
}

TEST_F(HostFileFaults, WhateverTheFileThrowsInTheRowsIsDiscarded) {
    using Thrower = FailingFile<int>;
    Thrower rows(Thrower::Call::Write, 8, 42);
    EXPECT_EQ(Export(rows, 1, 1, 1), 0);
    Thrower header(Thrower::Call::Write, 0, 42);
    EXPECT_THROW(Export(header, 1, 1, 1), int);
}

TEST_F(HostFileFaults, OperationsThatThrowTellWhyAndHowFarTheyCame) {
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("q");
    File file(Call::Write, 14, kDiskFull);
    service::RowExport rows(file, {service::ExportLayout::Tab, service::ExportQuote::None, true}, recordset);
    rows.WriteHeader();
    EXPECT_THROW(rows.WriteRows(), CFileException);
    EXPECT_EQ(rows.GetProgress().rows, 2u);
    EXPECT_EQ(rows.GetProgress().bytes, file.GetContent().size());

    recordset.OpenSql("q");
    CMemFile whole;
    const auto stop = [](const service::ExportProgress& progress) {
        if (progress.rows == 2)
            throw 42;
    };
    EXPECT_THROW(service::ExportRows(whole, {}, recordset, stop), int);
    EXPECT_EQ(whole.GetContent(), "id,name,note\r\n1,x,u\r\n2,y,v\r\n");
}

}  // namespace
}  // namespace kortavin::testing
