#include <clocale>

#include "tests/faults/faultfixture.h"

namespace kortavin::testing {
namespace {

class ConnectionFaults : public FaultTest {
  protected:
    void SetUp() override { m_source.Statement("q").AddColumn("a").AddRow({"1"}, 3); }

    // All texts of the error that opening throws.
    std::string RefusalOf(const std::string& more, const std::string& charset = "UTF-8") {
        EXPECT_TRUE(m_database.SetNarrowCharset(charset));
        const auto error =
            ErrorOf([&] { m_database.Open(CString(m_source.ConnectionString()) + CString(Gbk(more))); });
        EXPECT_FALSE(m_database.IsOpen());
        EXPECT_EQ(m_database.m_hdbc, nullptr);
        if (!error)
            return "not refused";
        return std::string(
            (error->m_strError + error->m_strStateNativeOrigin + error->GetErrorMessage()).View());
    }
};

TEST_F(ConnectionFaults, RefusalTellsTheReasonAndNoPassword) {
    m_source.Fails("SQLDriverConnect", Error("28000", "[%CONNECTION%]denied: %CONNECTION%!", 18456)
                                           .Also("08001", "login '%CONNECTION%' failed"));
    const std::pair<const char*, const char*> secrets[] = {
        {"UID=scott;PWD=tiger;", "tiger"},
        {"UID=scott;Password=tiger", "tiger"},
        {"pwd = tiger ;UID=scott", "tiger"},
        {"PWD={ti;ger};UID=scott", "ger}"},
        {"PWD={ti}}ger};UID=scott", "ger}"},
        {"PWD={ti}}ger};UID=scott", "{ti"},
        {"PWD=tiger;Password=lion;UID=scott", "lion"},
        {"PWD=ab;UID=scott", "=ab"},
        {"PWD={a};UID=scott", "{a}"},
        {"PWD=x;PWD=tiger;UID=scott", "tiger"},
        {"UID=scott;PWD=老虎", "\xC0\xCF"},
    };
    for (const auto& [more, secret] : secrets) {
        const std::string refusal = RefusalOf(more);
        EXPECT_THAT(refusal, HasSubstr("denied: ")) << more;
        EXPECT_THAT(refusal, HasSubstr("State:28000,Native:18456")) << more;
        EXPECT_THAT(refusal, HasSubstr("scott")) << more;
        EXPECT_THAT(refusal, Not(HasSubstr(secret))) << more;
    }
}

// The driver manager keeps 512 bytes of a message: a password may lose its end there.
TEST_F(ConnectionFaults, PasswordThatIsCutOffIsNotTold) {
    m_source.Fails("SQLDriverConnect", Error("28000", "denied: %CONNECTION%"));
    for (int padding = 200; padding < 500; ++padding) {
        const std::string refusal = RefusalOf("APP=" + std::string(static_cast<std::size_t>(padding), 'x') +
                                              ";PWD=tigerlily;UID=scott");
        ASSERT_THAT(refusal, Not(HasSubstr("tiger"))) << padding;
    }
}

TEST_F(ConnectionFaults, LaterErrorsTellNoPasswordEither) {
    m_source.Statement("rejected").Fails(Error("HY000", "[tiger]login scott/tiger expired"));
    ASSERT_TRUE(m_database.SetNarrowCharset("UTF-8"));
    m_database.Open(CString(m_source.ConnectionString("UID=scott;PWD=tiger;")));
    _CRecordsetEx recordset(&m_database);
    const auto error = ErrorOf([&] { recordset.OpenSql("rejected"); });
    ASSERT_TRUE(error);
    EXPECT_STREQ(error->m_strError, "login scott/*** expired\n");
    EXPECT_THAT(std::string(error->m_strStateNativeOrigin), Not(HasSubstr("tiger")));
}

TEST_F(ConnectionFaults, RefusalWithoutAnyRecordHasATextAllTheSame) {
    m_source.Fails("SQLDriverConnect", ErrorWithoutRecord());
    EXPECT_THAT(RefusalOf("UID=scott"), HasSubstr("without giving a reason"));
    EXPECT_THAT(FailureOf([&] { m_database.Open("Driver=/nowhere/at all.so"); }), Not(IsEmpty()));
    EXPECT_FALSE(m_database.IsOpen());
}

// The driver manager widens each byte of a connection's message once the process has a locale.
TEST_F(ConnectionFaults, MangledRefusalIsReadable) {
    const std::string former = std::setlocale(LC_ALL, nullptr);
    const std::string reason = "拒绝 scott: déjà vu";
    for (const std::string charset : {"UTF-8", "GB18030"}) {
        ScriptedSource source;
        source.Fails("SQLDriverConnect", Error("28000", charset == "UTF-8" ? reason : Gbk(reason)));
        ASSERT_TRUE(m_database.SetNarrowCharset(charset));
        for (const char* locale : {"C", "C.UTF-8"}) {
            ASSERT_NE(std::setlocale(LC_ALL, locale), nullptr);
            EXPECT_EQ(FailureOf([&] { m_database.Open(CString(source.ConnectionString())); }),
                      "28000 " + Gbk(reason))
                << charset << locale;
        }
        std::setlocale(LC_ALL, former.c_str());
    }
}

TEST_F(ConnectionFaults, MessagesThatAreNoTextAreEscaped) {
    m_source.Statement("rejected").Fails(Error("HY000", "bad \xFF\xB5 end"));
    Open();
    EXPECT_EQ(FailureOf([&] { m_database.ExecuteSQL("rejected"); }), "S1000 bad \\xFF\\xB5 end");
}

TEST_F(ConnectionFaults, ConnectionStringThatTheCharsetLacksIsRefused) {
    EXPECT_THAT(RefusalOf("UID=道路", "windows-1252"), HasSubstr("State:22021"));
    EXPECT_THAT(m_source.Log(), IsEmpty());
}

TEST_F(ConnectionFaults, UnknownCharacterSetsAreRefused) {
    EXPECT_TRUE(m_database.SetNarrowCharset("GBK"));
    EXPECT_FALSE(m_database.SetNarrowCharset("klingon"));
    EXPECT_NE(m_database.GetNarrowCharset().GetName().find("GB"), std::string::npos);

    m_source.DbmsName("PostgreSQL").Statement("SHOW client_encoding").AddColumn("c").AddRow({"KLINGON"});
    const std::string refusal = RefusalOf("", "");
    EXPECT_THAT(refusal, HasSubstr("State:2C000"));
    EXPECT_THAT(refusal, HasSubstr("klingon"));
    EXPECT_EQ(m_source.OpenConnections(), 0);
}

struct Detection {
    const char* dbms;
    const char* statement;
    Value answer;
    const char* charset;
};

TEST_F(ConnectionFaults, CharacterSetIsFoundOrTheProcessDecides) {
    const Detection detections[] = {
        {"PostgreSQL", "SHOW client_encoding", "UTF8", "UTF-8"},
        {"MariaDB", "SELECT @@character_set_results", "utf8mb4", "UTF-8"},
        {"MySQL", "SELECT @@character_set_results", Value::Null(), nullptr},
        {"PostgreSQL", "SHOW client_encoding", Error("HY000", "no value"), nullptr},
        {"PostgreSQL", "something else", "UTF8", nullptr},
        {"Scripted", "SHOW client_encoding", "UTF8", nullptr},
    };
    const std::string processes = base::NarrowCharset::OfEnvironment().GetName();
    for (const auto& [dbms, statement, answer, charset] : detections) {
        ScriptedSource source;
        source.DbmsName(dbms).StillExecuting(2).Statement(statement).AddColumn("c").AddRow({answer});
        source.AnyStatement().Fails(Error("42000", "no such setting"));
        CDatabase database;
        database.Open(CString(source.ConnectionString()));
        EXPECT_EQ(database.GetNarrowCharset().GetName(), charset ? charset : processes) << dbms << statement;
        EXPECT_EQ(source.OpenStatements(), 0);
    }
}

// In which order two recordsets and their connection go.
class Endings : public FaultTest, public ::testing::WithParamInterface<std::tuple<std::string, bool>> {};
INSTANTIATE_TEST_SUITE_P(
    Order, Endings,
    ::testing::Combine(::testing::Values("12d", "21d", "1d2", "2d1", "d12", "d21", "c12d", "1c2d", "cd12",
                                         "1cd2", "xyd12", "xcdy21"),
                       ::testing::Bool()),
    [](const auto& info) { return std::get<0>(info.param) + (std::get<1>(info.param) ? "Dead" : "Alive"); });

TEST_P(Endings, LeaveNothingBehind) {
    const auto& [order, dies] = GetParam();
    m_source.Statement("q").AddColumn("a").AddRow({"1"}, 2).FetchFails(ConnectionDies());
    auto database = std::make_unique<CGeoDatabase>();
    database->Open(CString(m_source.ConnectionString()));
    auto first = std::make_unique<_CRecordsetEx>(database.get());
    auto second = std::make_unique<_CRecordsetEx>(database.get());
    first->OpenSql("q");
    second->OpenSql("q");
    if (dies) {
        first->MoveNext();
        EXPECT_THAT(FailureOf([&] { first->MoveNext(); }), StartsWith("08S01"));
        EXPECT_THAT(FailureOf([&] { second->MoveNext(); }), StartsWith("08S01"));
    }
    for (const char step : order) {
        if (step == '1')
            first.reset();
        else if (step == '2')
            second.reset();
        else if (step == 'd')
            database.reset();
        else if (step == 'c')
            database->Close();
        else
            (step == 'x' ? first : second)->Close();
    }
    EXPECT_EQ(m_source.OpenConnections(), 0);
}

TEST_F(ConnectionFaults, DeadConnectionCanBeOpenedAgain) {
    m_source.Statement("dies").AddColumn("a").AddRow({"1"}).FetchFails(ConnectionDies());
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("dies");
    EXPECT_THAT(FailureOf([&] { recordset.MoveNext(); }), StartsWith("08S01"));
    EXPECT_FALSE(recordset.Open(CRecordset::forwardOnly, "q", CRecordset::executeDirect));
    EXPECT_THAT(FailureOf([&] { m_database.ExecuteSQL("q"); }), StartsWith("08S01"));
    m_database.Close();
    Open();
    recordset.OpenSql("q");
    EXPECT_TRUE(recordset.IsOpen());
}

}  // namespace
}  // namespace kortavin::testing
