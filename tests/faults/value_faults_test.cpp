#include "tests/faults/faultfixture.h"

#include <sqlext.h>

#include <span>

namespace kortavin::testing {
namespace {

struct Case {
    const char* name;
    Value value;
    std::string outcome;  // the text, or "!state message"
};

// Long values by their length and a sum, for outcomes that people can read.
std::string Shown(const std::string& value) {
    static constexpr std::size_t kShort = 80;
    return value.size() < kShort ? value
                                 : value.substr(0, 8) + "..." + std::to_string(value.size()) + " bytes, " +
                                       std::to_string(std::hash<std::string>()(value));
}

const Fault kRange = Error("22003", "out of range");

// By what SQL_GETDATA_EXTENSIONS allows: columns are bound behind the first row, or never. What a reader sees
// must be the same.
class ValueFaults : public FaultTest, public ::testing::WithParamInterface<int> {
  protected:
    Answer& Result(const std::string& sql, const Strings& columns) {
        Answer& answer = m_source.Statement(sql);
        for (const std::string& name : columns)
            answer.AddColumn(name);
        return answer;
    }
    void Open(const std::string& charset = "UTF-8") {
        m_source.GetDataExtensions(GetParam());
        FaultTest::Open(charset);
    }

    // Reads each case's value in the first row and in later ones, at each place in a row.
    void Check(std::span<const Case> cases, const std::string& charset = "UTF-8") {
        for (const auto& [name, value, outcome] : cases) {
            Result(name, {"a", "b", "c"})
                .AddRow({"a1", value, "c1"})
                .AddRow({"a2", "former text", "c2"})
                .AddRow({"a3", value, "c3"})
                .AddRow({value, value, "c4"})
                .AddRow({"a5", "b5", value})
                .AddRow({"a6", "b6", "c6"});
        }
        Open(charset);
        for (const auto& [name, value, whole] : cases) {
            const std::string outcome = whole.starts_with('!') ? whole : Shown(whole);
            EXPECT_THAT(Outcomes(name),
                        ElementsAre("a1|" + outcome + "|c1", "a2|former text|c2", "a3|" + outcome + "|c3",
                                    outcome + '|' + outcome + "|c4", "a5|b5|" + outcome, "a6|b6|c6"))
                << name;
        }
        EXPECT_EQ(m_source.Calls("SQLBindCol").empty(), GetParam() < 11);
    }

    // Each row as "value|value"; what MoveNext throws stands as a row of its own.
    Strings Outcomes(const std::string& sql) {
        static constexpr std::size_t kMostRows = 20;
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql(CString(sql));
        Strings rows;
        while (!recordset.IsEOF() && rows.size() < kMostRows) {
            rows.push_back(RowOf(recordset));
            std::string failure = FailureOf([&] { recordset.MoveNext(); });
            while (!failure.empty() && rows.size() < kMostRows) {
                rows.push_back('!' + failure);
                failure = FailureOf([&] { recordset.MoveNext(); });
            }
        }
        return rows;
    }
    static std::string ValueOf(_CRecordsetEx& recordset, short column) {
        CString value("untouched");
        const std::string failure = FailureOf([&] { recordset.ReadFieldText(column, value); });
        return failure.empty() ? Shown(std::string(value.View())) : '!' + failure;
    }
    static std::string RowOf(_CRecordsetEx& recordset) {
        std::string row = ValueOf(recordset, 0);
        for (short i = 1; i < recordset.GetODBCFieldCount(); ++i)
            row += '|' + ValueOf(recordset, i);
        return row;
    }
};

INSTANTIATE_TEST_SUITE_P(Extensions, ValueFaults, ::testing::Values(0, 1, 11, 15),
                         ::testing::PrintToStringParamName());

TEST_P(ValueFaults, OutOfRangeGivesWhatWasReceived) {
    static constexpr auto kLargest = std::numeric_limits<long long>::max();
    const Case cases[] = {
        {"data", Value("99").But(kRange), "99"},
        {"nothing", Value(kRange), ""},
        {"data without indicator", Value("99").But(kRange).NoIndicator(), ""},
        {"indicator without data", Value(kRange).Indicator(5), ""},
        {"huge indicator", Value(kRange).Indicator(1LL << 40), ""},
        {"largest indicator", Value(kRange).Indicator(kLargest), ""},
        {"no total", Value(kRange).Indicator(SQL_NO_TOTAL), ""},
        {"negative indicator", Value(kRange).Indicator(-7), ""},
        {"smallest indicator", Value(kRange).Indicator(-kLargest), ""},
        {"null indicator", Value(kRange).Indicator(SQL_NULL_DATA), ""},
        {"not the first record", Value("7").But(Error("22001", "cut").Also("22003", "range")), "7"},
        {"a later piece", Value(Times(20000, "9")).Pieces(3000).FailsInPiece(2, kRange), Times(3000, "9")},
    };
    Check(cases);
}

TEST_P(ValueFaults, FailingValueFailsAlone) {
    const Case cases[] = {
        {"division", Error("22012", "division by zero"), "!22012 division by zero"},
        {"conversion", Error("22018", "no number"), "!22005 no number"},
        {"with data", Value("99").But(Error("22007", "no date")), "!22008 no date"},
        {"no conversion", Error("07006", "restricted"), "!07006 restricted"},
        {"not implemented", Error("HYC00", "not capable"), "!S1C00 not capable"},
        {"general", Error("HY000", "broken page"), "!S1000 broken page"},
        {"server's own", Error("XX001", "data corrupted"), "!XX001 data corrupted"},
    };
    Check(cases);
}

TEST_P(ValueFaults, FailingWithoutAnyRecordHasATextAllTheSame) {
    const std::string text = "!HY000 The data source reported a failure without giving a reason.";
    const Case cases[] = {{"silent", ErrorWithoutRecord(), text}};
    Check(cases);
}

TEST_P(ValueFaults, NoDataIsAnErrorAndNeverAFormerValue) {
    const Case cases[] = {{"none", Value::NoData(), "!02000 The data source has no data for this value."}};
    Check(cases);
}

TEST_P(ValueFaults, EmptyAndUnmeasuredValuesAreEmpty) {
    const Case cases[] = {
        {"null", Value::Null(), ""},
        {"empty", "", ""},
        {"unmeasured", Value("x").NoIndicator(), ""},
        {"warned", Value("text").But(Warning("01000", "slow")), "text"},
    };
    Check(cases);
}

TEST_P(ValueFaults, ZeroBytesAreKept) {
    using namespace std::string_literals;
    const std::string longText = Times(9000, "ab\0"s);
    const Case cases[] = {
        {"inside", "a\0b"s, "a\0b"s},
        {"only", "\0"s, "\0"s},
        {"at the end", "ab\0\0"s, "ab\0\0"s},
        {"long", longText, longText},
        {"long without total", Value(longText).NoTotal(), longText},
    };
    Check(cases);
}

TEST_P(ValueFaults, LongValuesComeWholeHoweverTheDriverCutsThem) {
    const std::string utf8 = Times(1501, "道a路😀");
    const std::string ascii = Times(30000, "0123456789");
    const Case cases[] = {
        {"total", utf8, Gbk(utf8)},
        {"no total", Value(utf8).NoTotal(), Gbk(utf8)},
        {"pieces", Value(utf8).Pieces(1000), Gbk(utf8)},
        {"pieces without total", Value(utf8).Pieces(1000).NoTotal(), Gbk(utf8)},
        {"as long as a buffer", ascii.substr(0, 4095), ascii.substr(0, 4095)},
        {"one byte longer", Value(ascii.substr(0, 4096)).NoTotal(), ascii.substr(0, 4096)},
        {"as long as a bound buffer", Value(ascii.substr(0, 255)).NoTotal(), ascii.substr(0, 255)},
        {"longer than a bound one", Value(ascii.substr(0, 256)).NoTotal(), ascii.substr(0, 256)},
        {"large", Value(ascii).NoTotal(), ascii},
    };
    Check(cases);
}

// Also where a buffer would have held it all.
TEST_P(ValueFaults, PiecesShorterThanTheirBufferAreJoined) {
    const std::string text = Times(1000, "0123456789");
    const Case cases[] = {
        {"byte by byte", Value("x道路").Pieces(1), Gbk("x道路")},
        {"without total", Value("x道路").Pieces(1).NoTotal(), Gbk("x道路")},
        {"longer", Value(text).Pieces(333), text},
    };
    Check(cases);
}

TEST_P(ValueFaults, LongGbkValuesAreJoinedInsideACharacter) {
    const std::string gbk = "x" + Times(5001, Gbk("道路"));
    const Case cases[] = {
        {"total", gbk, gbk},
        {"odd pieces", Value(gbk).Pieces(333), gbk},
        {"odd pieces without total", Value(gbk).Pieces(333).NoTotal(), gbk},
    };
    Check(cases, "GBK");
}

TEST_P(ValueFaults, LaterPieceThatFailsFailsTheWholeValue) {
    const std::string text = Times(20000, "x");
    const Fault torn = Error("HY000", "torn");
    const Case cases[] = {
        {"second piece", Value(text).Pieces(3000).FailsInPiece(2, torn), "!S1000 torn"},
        {"small pieces", Value(text).Pieces(1000).NoTotal().FailsInPiece(15, torn), "!S1000 torn"},
    };
    Check(cases);
}

TEST_P(ValueFaults, TextThatIsNoTextNamesItsColumnAndIsNeverGuessed) {
    const auto said = [](const std::string& column) {
        return "!22021 The value of column " + column + " is not valid text in the character set UTF-8";
    };
    const std::string first = said("1 (a)");
    const std::string second = said(Gbk("2 (名称)"));
    const Strings broken = {"\xFF", "a\xE9\x81", "\xED\xA0\x80", "\xC0\xAF", Times(5000, "x") + '\xB5'};
    for (std::size_t i = 0; i < broken.size(); ++i)
        Result(std::to_string(i), {"a", "名称"})
            .AddRow({broken[i], "1"})
            .AddRow({"2", broken[i]})
            .AddRow({broken[i], broken[i]})
            .AddRow({"3", "4"});
    Open();
    for (std::size_t i = 0; i < broken.size(); ++i)
        EXPECT_THAT(Outcomes(std::to_string(i)),
                    ElementsAre(first + "|1", "2|" + second, first + '|' + second, "3|4"));
}

TEST_P(ValueFaults, TextIsReadInTheCharacterSetThatWasSet) {
    const Case cases[] = {{"euro", "\x80", Gbk("€")}, {"accents", "d\xE9j\xE0", Gbk("déjà")}};
    Check(cases, "windows-1252");
}

TEST_P(ValueFaults, FetchThatFailsIsAnErrorOfMovingAndSparesTheOtherRows) {
    for (const char* state : {"22012", "40001", "HY000"})
        Result(state, {"a", "b"})
            .AddRow({"1", "2"})
            .FetchFails(Error(state, "no row"))
            .AddRow({"3", Error("22012", "no value")})
            .FetchFails(Error(state, "no row again"))
            .AddRow({"5", "6"});
    Open();
    for (const auto& [sql, state] : {std::pair("22012", "22012"), {"40001", "40001"}, {"HY000", "S1000"}})
        EXPECT_THAT(Outcomes(sql),
                    ElementsAre("1|2", '!' + std::string(state) + " no row", "3|!22012 no value",
                                '!' + std::string(state) + " no row again", "5|6"));
}

TEST_P(ValueFaults, DeadConnectionIsAnErrorOfMovingForGood) {
    Result("q", {"a"}).AddRow({"1"}).AddRow({"2"}).FetchFails(ConnectionDies()).AddRow({"3"});
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("q");
    recordset.MoveNext();
    EXPECT_EQ(RowOf(recordset), "2");
    for (int i = 0; i < 2; ++i)
        EXPECT_THAT(FailureOf([&] { recordset.MoveNext(); }), StartsWith("08S01"));
    EXPECT_FALSE(recordset.IsEOF()) << "nobody may take it for the end";
    recordset.Close();
    EXPECT_FALSE(recordset.IsOpen());
}

TEST_P(ValueFaults, ValueIsReadAgainAsItWas) {
    Result("q", {"a", "b"})
        .AddRow({"1", Times(300, "x")})
        .AddRow({Error("22012", "never"), Times(300, "y")})
        .AddRow({"short", Value("9").But(kRange)});
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("q");
    EXPECT_EQ(RowOf(recordset), "1|" + Shown(Times(300, "x")));
    EXPECT_EQ(ValueOf(recordset, 1), Shown(Times(300, "x")));
    recordset.MoveNext();
    EXPECT_EQ(RowOf(recordset), "!22012 never|" + Shown(Times(300, "y")));
    EXPECT_EQ(ValueOf(recordset, 1), Shown(Times(300, "y")));
    recordset.MoveNext();
    EXPECT_EQ(RowOf(recordset), "short|9");
}

TEST_P(ValueFaults, AnswersThatTakeTimeAreWaitedFor) {
    m_source.StillExecuting(2);
    const std::string text = Times(9000, "z");
    const Case cases[] = {
        {"short", "text", "text"},
        {"long", Value(text).NoTotal(), text},
        {"failing", Error("22012", "division by zero"), "!22012 division by zero"},
        {"range", Value("1").But(kRange), "1"},
    };
    Check(cases);
    EXPECT_THAT(m_source.Calls("SQLExecDirect"), SizeIs(4));
}

TEST_P(ValueFaults, ColumnThatCannotBeBoundIsReadAlone) {
    m_source.Fails("SQLBindCol", Error("HY003", "no such type").At(2));
    const Case cases[] = {
        {"text", "text", "text"},
        {"long", Times(9000, "z"), Times(9000, "z")},
        {"failing", Error("22012", "division by zero"), "!22012 division by zero"},
    };
    Check(cases);
}

class LimitedGetData : public FaultTest, public ::testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(Extensions, LimitedGetData, ::testing::Values(0, 1, 2, 3, 7, 8, 9, 10),
                         ::testing::PrintToStringParamName());

TEST_P(LimitedGetData, DriverThatCannotReadBoundColumnsGetsNoneBound) {
    m_source.GetDataExtensions(GetParam());
    m_source.Statement("q").AddColumn("a").AddColumn("b").AddRow({"1", std::string(500, 'x')}, 3);
    Open();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql("q");
    for (; !recordset.IsEOF(); recordset.MoveNext()) {
        CString value;
        recordset.ReadFieldText(0, value);
        EXPECT_STREQ(value, "1");
        recordset.ReadFieldText(1, value);
        EXPECT_EQ(value.GetLength(), 500);
    }
    EXPECT_THAT(m_source.Calls("SQLBindCol"), IsEmpty());
}

class FetchData : public FaultTest {
  protected:
    // "length text" of one call, or the failure.
    std::string Fetch(const Value& value) {
        m_source.StillExecuting("SQLGetData", 2);
        m_source.Statement("q").AddColumn("a").AddRow({value});
        Open();
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql("q");
        char buffer[8] = "former";
        LONGLONG length = 0;
        const auto error = ErrorOf([&] {
            length = _CRecordsetEx::FetchData(&m_database, recordset.m_hstmt, 1, SQL_C_CHAR, buffer,
                                              sizeof buffer, 12);
        });
        if (error)
            return std::to_string(error->m_nRetCode) + ' ' + std::string(error->GetState().View());
        return std::to_string(length) + ' ' + buffer;
    }
};

TEST_F(FetchData, AnswersTheReportedLength) {
    EXPECT_EQ(Fetch("text"), "4 text");
}
TEST_F(FetchData, AcceptsACutValue) {
    EXPECT_EQ(Fetch("long text"), "9 long te");
}
TEST_F(FetchData, AnswersNullForNull) {
    EXPECT_EQ(Fetch(Value::Null()).substr(0, 3), "-1 ");
}
TEST_F(FetchData, IgnoresOutOfRange) {
    EXPECT_EQ(Fetch(Value("9").But(kRange)), "1 9");
}
TEST_F(FetchData, AnswersNullWhereNothingWasReported) {
    EXPECT_EQ(Fetch(Value(kRange)), "-1 former");
}
TEST_F(FetchData, ThrowsNoData) {
    EXPECT_EQ(Fetch(Value::NoData()), "100 02000");
}
TEST_F(FetchData, ThrowsAnyOtherError) {
    EXPECT_EQ(Fetch(Error("22012", "division")), "-1 22012");
}

}  // namespace
}  // namespace kortavin::testing
