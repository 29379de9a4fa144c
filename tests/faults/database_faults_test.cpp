#include <clocale>
#include <functional>
#include <map>
#include <memory>

#include "tests/support/scripted/faultfixture.h"

namespace kortavin::testing {
namespace {

class DatabaseFaults : public FaultTest {
  protected:
    // All texts of the error that opening throws.
    std::string RefusalOf(const std::string& more, const std::string& charset = "UTF-8") {
        EXPECT_TRUE(m_database.SetNarrowCharset(charset));
        try {
            m_database.Open(CString(m_source.ConnectionString() + Gbk(more)));
        } catch (const CDBException& error) {
            EXPECT_FALSE(m_database.IsOpen());
            return std::string((error.m_strError + error.m_strStateNativeOrigin).View());
        }
        return "not refused";
    }
};

TEST_F(DatabaseFaults, RefusalTellsTheReasonAndNoPassword) {
    m_source.Fails("SQLDriverConnect", Error("28000", "[%CONNECTION%]denied: %CONNECTION%!", 18456)
                                           .Also("08001", "login '%CONNECTION%' failed"));
    const std::pair<const char*, const char*> secrets[] = {
        {"UID=scott;Password=tiger", "tiger"},     {"pwd = tiger ;UID=scott", "tiger"},
        {"PWD={ti;ger};UID=scott", "ger}"},        {"PWD={ti}}ger};UID=scott", "ger}"},
        {"PWD=a;Password=lion;UID=scott", "lion"}, {"UID=scott;PWD=老虎", "\xC0\xCF"},
    };
    for (const auto& [more, secret] : secrets) {
        EXPECT_THAT(RefusalOf(more), AllOf(HasSubstr("denied: "), HasSubstr("State:28000,Native:18456"),
                                           HasSubstr("scott"), Not(HasSubstr(secret))));
    }
}

// The driver manager keeps 512 bytes of a message: a password may lose its end there.
TEST_F(DatabaseFaults, PasswordThatIsCutOffIsNotTold) {
    m_source.Fails("SQLDriverConnect", Error("28000", "denied: %CONNECTION%"));
    for (int padding = 200; padding < 500; ++padding) {
        const std::string more = "APP=" + Times(padding, "x") + ";PWD=tigerlily;UID=scott";
        ASSERT_THAT(RefusalOf(more), Not(HasSubstr("tiger"))) << padding;
    }
}

TEST_F(DatabaseFaults, LaterErrorsTellNoPasswordEither) {
    m_source.Statement("rejected").Fails(Error("HY000", "login scott/tiger expired"));
    m_database.Open(CString(m_source.ConnectionString("UID=scott;PWD=tiger;")));
    EXPECT_EQ(FailureOf([&] { m_database.ExecuteSQL("rejected"); }), "S1000 login scott/*** expired");
}

// The driver manager widens each byte of a connection's message once the process has a locale.
TEST_F(DatabaseFaults, MangledRefusalIsReadable) {
    const std::string former = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "C.UTF-8"), nullptr);
    const std::string reason = "拒绝 scott: déjà vu";
    for (const std::string charset : {"UTF-8", "GB18030"}) {
        m_source.faults = {{"SQLDriverConnect", Error("28000", charset == "UTF-8" ? reason : Gbk(reason))}};
        EXPECT_EQ(FailureOf([&] { Open(charset); }), "28000 " + Gbk(reason)) << charset;
    }
    std::setlocale(LC_ALL, former.c_str());
}

TEST_F(DatabaseFaults, RefusalThatNoDriverExplainsHasATextAllTheSame) {
    EXPECT_FALSE(m_database.SetNarrowCharset("klingon"));
    EXPECT_THAT(RefusalOf("UID=道路", "windows-1252"), HasSubstr("State:22021"));
    EXPECT_THAT(m_source.log.calls, IsEmpty());
    m_source.dbmsName = "PostgreSQL";
    m_source.Statement("SHOW client_encoding").AddColumn("c").AddRow({"KLINGON"});
    EXPECT_THAT(RefusalOf("", ""), AllOf(HasSubstr("klingon"), HasSubstr("State:2C000")));
    m_source.Fails("SQLDriverConnect", ErrorWithoutRecord());
    EXPECT_THAT(RefusalOf("UID=scott"), HasSubstr("without giving a reason"));
}

TEST_F(DatabaseFaults, NoOrderOfEndingLeavesAnythingBehind) {
    m_source.Statement("q").AddColumn("a").AddRow({"1"}).AddRow({"1"}).FetchFails(ConnectionDies());
    std::unique_ptr<CGeoDatabase> database;
    std::unique_ptr<_CRecordsetEx> recordsets[2];
    const std::map<char, std::function<void()>> endings = {
        {'1', [&] { recordsets[0].reset(); }},
        {'2', [&] { recordsets[1].reset(); }},
        {'d', [&] { database.reset(); }},
        {'c', [&] { database->Close(); }},
    };
    for (const std::string order : {"12d", "1d2", "d12", "d21", "1c2d", "cd12"}) {
        database = std::make_unique<CGeoDatabase>();
        database->Open(CString(m_source.ConnectionString()));
        for (auto& recordset : recordsets) {
            recordset = std::make_unique<_CRecordsetEx>(database.get());
            recordset->OpenSql("q");
            recordset->MoveNext();
        }
        EXPECT_THAT(FailureOf([&] { recordsets[0]->MoveNext(); }), StartsWith("08S01"));
        for (const char ending : order)
            endings.at(ending)();
        EXPECT_EQ(m_source.log.openStatements + m_source.log.openConnections, 0) << order;
    }
}

TEST_F(DatabaseFaults, JetDriverIsKnownByItsWholeNameInAnyLetterCase) {
    const auto isJet = [this](const std::string& name) {
        m_source.driverName = name;
        Open();
        return m_database.IsODBCJetDriver();
    };
    const std::string jet = "OdbcJt32.dLL";
    EXPECT_TRUE(isJet(jet));
    for (const auto& other : {jet + ' ', jet.substr(1), jet + Times(188, " "), Times(5000, "x")})
        EXPECT_FALSE(isJet(other)) << other;
    m_source.Fails("SQLGetInfo", Error("HY000", "not now").At(6));
    EXPECT_FALSE(isJet(jet)) << "without being told";
}

TEST_F(DatabaseFaults, NamesWithDotsAndBlanksAreBracketedAsTheDriverNeedsIt) {
    for (const char* name : {"id", "Order Date", "x.y", "x.y.z", "a b.c d", ".", " "})
        AddName(name);
    AddName(Value::Null());
    Open();
    EXPECT_EQ(AllTables(), "TRUE|id|Order Date|x.y|x.y.z|a b.c d|.| |");
    EXPECT_EQ(ColumnList(), "TRUE|before|id|[Order Date]|x.y|x.y.z|[a b.c d]|.|[ ]|");
    m_source.driverName = "odbcjt32.dll";
    Open();
    EXPECT_EQ(ColumnList(), "TRUE|before|id|Order Date|[x].[y]|[x].[y.z]|[a b].[c d]|[].[]| |");
}

TEST_F(DatabaseFaults, DriverWithoutTheCatalogFunctionIsTheCallersError) {
    m_source.hasCatalogFunctions = false;
    Open();
    EXPECT_EQ(FailureOf([&] { AllTables(); }), "<::SQLTables> not supported.");
    EXPECT_EQ(FailureOf([&] { ColumnList(); }), "<::SQLColumns> not supported.");
    EXPECT_THAT(m_boxes, IsEmpty());
    EXPECT_THAT(m_source.Calls("SQLAllocHandle"), IsEmpty());
}

TEST_F(DatabaseFaults, CatalogArgumentsReachTheDriverUnchanged) {
    Open();
    EXPECT_EQ(AllTables(), "TRUE");
    for (const std::string& table : {std::string("a_b%.[c d]\\'"), std::string(), Gbk("道路")})
        EXPECT_EQ(ColumnList(table), "FALSE|before");
    EXPECT_THAT(m_source.Calls("SQLTables"), ElementsAre("SQLTables NULL, NULL, NULL, ''TABLE,VIEW''"));
    EXPECT_THAT(m_source.Calls("SQLColumns"),
                ElementsAre("SQLColumns NULL, NULL, 'a_b%.[c d]\\'', NULL", "SQLColumns NULL, NULL, '', NULL",
                            "SQLColumns NULL, NULL, '道路', NULL"));
}

TEST_F(DatabaseFaults, ErrorBeforeTheFirstNameIsShownAndLeavesNone) {
    AddName("t");
    const Fault fault = Error("HY000", "[Maker][Driver]no rights", -7).Also("01000", "at all");
    const std::string shown =
        "no rights\nat all\nState:S1000,Native:-7,Origin:[Maker][Driver]\nState:01000,Native:0,Origin:\n";
    for (const std::string function :
         {"SQLTables", "SQLNumResultCols", "SQLDescribeCol", "SQLBindCol", "SQLFetch"}) {
        m_source.faults = {{function, fault}, {function == "SQLTables" ? "SQLColumns" : function, fault}};
        Open();
        EXPECT_EQ(AllTables() + ColumnList(), "FALSETRUE|before") << function;
        EXPECT_THAT(m_boxes, ElementsAre(shown, shown)) << function;
        m_boxes.clear();
    }
    m_source.faults = {{"SQLTables", ErrorWithoutRecord()}};
    Open();
    EXPECT_EQ(AllTables(), "FALSE");
    m_database.Close();
    EXPECT_EQ(ColumnList(), "TRUE|before");
    EXPECT_THAT(m_boxes, ElementsAre(HasSubstr("without giving a reason"), HasSubstr("\nState:08003")));
}

TEST_F(DatabaseFaults, ErrorBehindTheFirstNameKeepsTheNamesReadSoFar) {
    const std::pair<Value, const char*> cases[] = {
        {Error("40001", "deadlock"), "deadlock\nState:40001,Native:0,Origin:\n"},
        {"b\xFF", "_NAME"},
        {ConnectionDies(), "State:08S01"},
    };
    for (const auto& [value, shown] : cases) {
        m_source.tables.rows = m_source.columns.rows = {};
        for (const Value& name : {Value("a a"), value, Value("c")})
            AddName(name);
        Open();
        EXPECT_EQ(AllTables(), "TRUE|a a") << shown;
        Open();
        EXPECT_EQ(ColumnList(), "TRUE|before|[a a]") << shown;
        EXPECT_THAT(m_boxes, ElementsAre(HasSubstr(shown), HasSubstr(shown)));
        m_boxes.clear();
    }
}

TEST_F(DatabaseFaults, LongNamesAreCutButNotInsideACharacter) {
    // Of a table 255 bytes are kept, of a result's column 256.
    const struct {
        std::string name, ofTable, ofColumn;
    } cases[] = {
        {Times(255, "x"), Times(255, "x"), Times(255, "x")},
        {Times(5000, "x"), Times(255, "x"), Times(256, "x")},
        {Times(200, "道"), Times(127, "道"), Times(128, "道")},
        {"x" + Times(3000, "路"), "x" + Times(127, "路"), "x" + Times(127, "路")},
        {"路" + Times(300, "😀"), "路" + Times(63, "😀"), "路" + Times(63, "😀")},
    };
    for (const std::string charset : {"UTF-8", "GB18030"}) {
        for (const auto& [name, ofTable, ofColumn] : cases) {
            const std::string narrow = charset == "UTF-8" ? name : Gbk(name);
            m_source.tables.rows.clear();
            AddName(narrow);
            AddName(Value(narrow).NoTotal());
            m_source.Statement("q").columns = {{narrow}};
            Open(charset);
            EXPECT_EQ(AllTables(), "TRUE|" + Gbk(ofTable + '|' + ofTable)) << charset << name;
            _CRecordsetEx recordset(&m_database);
            recordset.OpenSql("q");
            CODBCFieldInfo info;
            recordset.GetODBCFieldInfo(0, info);
            EXPECT_EQ(info.m_strName.View(), Gbk(ofColumn)) << charset;
        }
    }
}

}  // namespace
}  // namespace kortavin::testing
