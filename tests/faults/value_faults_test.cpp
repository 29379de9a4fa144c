#include "tests/support/scripted/faultfixture.h"

#include <sqlext.h>

namespace kortavin::testing {
namespace {

struct Case {
    const char* name;
    Value value;
    std::string outcome;  // the text, or "state message"
};

// By what SQL_GETDATA_EXTENSIONS allows: columns are bound behind the first row, or never. What a reader sees
// must be the same. The driver refuses to read where that is not allowed.
class ValueFaults : public FaultTest, public WithParamInterface<int> {
  protected:
    void SetUp() override { m_source.getDataExtensions = GetParam(); }

    // Reads each case's value in the first row and in later ones, at each place in a row.
    void Check(const std::vector<Case>& cases, const std::string& charset = "UTF-8") {
        for (const auto& [name, value, outcome] : cases) {
            Answer& answer = m_source.Statement(name).AddColumn("a").AddColumn("b").AddColumn("c");
            answer.AddRow({"a1", value}).AddRow({"a2", "former text"}).AddRow({"a3", value});
            answer.AddRow({value, value, "c4"}).AddRow({"a5", "b5", value});
        }
        Open(charset);
        for (const auto& [name, value, outcome] : cases) {
            EXPECT_THAT(Outcomes(name),
                        ElementsAre("a1|" + outcome + '|', "a2|former text|", "a3|" + outcome + '|',
                                    outcome + '|' + outcome + "|c4", "a5|b5|" + outcome))
                << name;
        }
        EXPECT_EQ(m_source.Calls("SQLBindCol").empty(), GetParam() < 11);
    }

    // Each row as "value|value"; what MoveNext throws stands as a row of its own.
    Strings Outcomes(const std::string& sql) {
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql(CString(sql));
        Strings rows;
        for (std::string failure; !recordset.IsEOF() && rows.size() < 10;) {
            rows.push_back(failure.empty() ? RowOf(recordset) : failure);
            failure = FailureOf([&] { recordset.MoveNext(); });
        }
        return rows;
    }
    static std::string RowOf(_CRecordsetEx& recordset) {
        std::string row;
        for (short i = 0; i < recordset.GetODBCFieldCount(); ++i) {
            CString value("untouched");
            const std::string failure = FailureOf([&] { recordset.ReadFieldText(i, value); });
            row.append(i > 0 ? "|" : "").append(failure.empty() ? value.View() : failure);
        }
        return row;
    }
};

INSTANTIATE_TEST_SUITE_P(Extensions, ValueFaults, Values(0, 3, 9, 10, 11), PrintToStringParamName());

TEST_P(ValueFaults, OutOfRangeGivesWhatWasReceivedAndAnyOtherErrorFailsAlone) {
    const Fault range = Error("22003", "out of range");
    Check({
        {"data", Value("99").But(range), "99"},
        {"nothing", range, ""},
        {"data without indicator", Value("99").But(range).NoIndicator(), ""},
        {"indicator without data", Value(range).Indicator(5), ""},
        {"largest indicator", Value(range).Indicator(std::numeric_limits<long long>::max()), ""},
        {"no total", Value(range).Indicator(SQL_NO_TOTAL), ""},
        {"division", Error("22012", "by zero"), "22012 by zero"},
        {"with data", Value("99").But(Error("22007", "no date")), "22008 no date"},
        {"general", Error("HY000", "broken page"), "S1000 broken page"},
        {"no data", NoData(), "02000 The data source has no data for this value."},
        {"torn", Value(Times(9999, "x")).Pieces(3000).FailsInPiece(2, Error("HY000", "torn")), "S1000 torn"},
    });
}

TEST_P(ValueFaults, ValuesComeWholeHoweverTheDriverCutsThem) {
    const std::string utf8 = Times(1501, "道a路😀");
    const std::string ascii = Times(4096, "x");
    const std::string zeros = Times(9000, std::string("ab\0", 3));
    m_source.stillExecuting = 2;
    Check({
        {"null", Value::Null(), ""},
        {"unmeasured", Value("x").NoIndicator(), ""},
        {"warned", Value("text").But(Warning("01000", "slow")), "text"},
        {"zero bytes", zeros.substr(2, 4), zeros.substr(2, 4)},
        {"long with zero bytes", Value(zeros).NoTotal(), zeros},
        {"total", utf8, Gbk(utf8)},
        {"no total", Value(utf8).NoTotal(), Gbk(utf8)},
        {"pieces without total", Value(utf8).Pieces(1000).NoTotal(), Gbk(utf8)},
        {"byte by byte", Value("x道路").Pieces(1), Gbk("x道路")},
        {"one byte too long", Value(ascii).NoTotal(), ascii},
        {"as long as a bound buffer", ascii.substr(0, 255), ascii.substr(0, 255)},
    });
}

TEST_P(ValueFaults, GbkPiecesAreJoinedAndColumnsThatCannotBeBoundAreReadAlone) {
    m_source.Fails("SQLBindCol", Error("HY003", "no such type").At(2));
    const std::string gbk = Times(5001, Gbk("道路"));
    Check({{"total", gbk, gbk}, {"odd pieces", Value(gbk).Pieces(333).NoTotal(), gbk}}, "GBK");
}

TEST_P(ValueFaults, TextThatIsNoTextNamesItsColumnAndIsNeverGuessed) {
    const std::string first = "22021 The value of column 1 (a) is not valid text in the character set UTF-8";
    const std::string second = "22021 The value of column 2 (b) is not valid text in the character set UTF-8";
    for (const std::string& broken : {std::string("\xFF"), Times(5000, "x") + "\xE9\x81"}) {
        Answer& answer = m_source.Statement("q") = Answer().AddColumn("a").AddColumn("b");
        answer.AddRow({broken, "1"}).AddRow({"2", broken}).AddRow({broken, broken}).AddRow({"3", "4"});
        Open();
        EXPECT_THAT(Outcomes("q"), ElementsAre(first + "|1", "2|" + second, first + '|' + second, "3|4"));
    }
}

TEST_P(ValueFaults, FetchThatFailsIsAnErrorOfMovingAndSparesTheOtherRows) {
    Answer& answer = m_source.Statement("q").AddColumn("a").AddColumn("b").AddRow({"1", "2"});
    answer.FetchFails(Error("22012", "no row")).AddRow({"3", Error("22012", "no value")});
    answer.FetchFails(Error("40001", "no row")).AddRow({"5", "6"}).FetchFails(ConnectionDies());
    Open();
    const std::string dead = "08S01 Communication link failure";
    EXPECT_THAT(Outcomes("q"), ElementsAre("1|2", "22012 no row", "3|22012 no value", "40001 no row", "5|6",
                                           dead, dead, dead, dead, dead))
        << "nobody may take it for the end";
}

}  // namespace
}  // namespace kortavin::testing
