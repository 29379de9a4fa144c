#include "tests/faults/faultfixture.h"

namespace kortavin::testing {
namespace {

const Fault kRange = Error("22003", "out of range");

// How the driver lets values be read: from 11 on columns are bound behind the first row, otherwise never.
class ValueFaults : public FaultTest, public ::testing::WithParamInterface<int> {
  protected:
    Answer& Result(const Strings& columns) {
        m_source.GetDataExtensions(GetParam());
        Answer& answer = m_source.Statement("q");
        for (const std::string& name : columns)
            answer.AddColumn(name);
        return answer;
    }

    // The value between two others, in the first row, where nothing is bound yet, and in later ones.
    void AddEverywhere(const Value& value) {
        Result({"a", "b", "c"})
            .AddRow({"a1", value, "c1"})
            .AddRow({"a2", "former text", "c2"})
            .AddRow({"a3", value, "c3"})
            .AddRow({value, value, "c4"})
            .AddRow({"a5", "b5", value})
            .AddRow({"a6", "b6", "c6"});
    }
    static Strings Everywhere(const std::string& outcome) {
        return {"a1|" + outcome + "|c1", "a2|former text|c2",  "a3|" + outcome + "|c3",
                outcome + '|' + outcome + "|c4", "a5|b5|" + outcome, "a6|b6|c6"};
    }

    // Each row as "value|value"; a failure as "!state message" in the place of its value or its row.
    Strings Outcomes() {
        _CRecordsetEx recordset(&m_database);
        recordset.OpenSql("q");
        Strings rows;
        while (!recordset.IsEOF()) {
            rows.push_back(RowOf(recordset));
            while (true) {
                const std::string failure = FailureOf([&] { recordset.MoveNext(); });
                if (failure.empty())
                    break;
                rows.push_back('!' + failure);
                if (rows.size() > 20)
                    return rows;
            }
        }
        return rows;
    }
    static std::string RowOf(_CRecordsetEx& recordset) {
        std::string row;
        for (short i = 0; i < recordset.GetODBCFieldCount(); ++i) {
            CString value("untouched");
            const std::string failure = FailureOf([&] { recordset.ReadFieldText(i, value); });
            row += (i > 0 ? "|" : "") + (failure.empty() ? std::string(value.View()) : '!' + failure);
        }
        return row;
    }

    bool AnyBound() const { return !m_source.Calls("SQLBindCol").empty(); }
};

INSTANTIATE_TEST_SUITE_P(Extensions, ValueFaults, ::testing::Values(0, 1, 11, 15),
                         [](const auto& info) { return std::to_string(info.param); });

struct OutOfRange {
    const char* name;
    Value value;
    const char* outcome;
};

class RangeFaults : public ValueFaults {};
INSTANTIATE_TEST_SUITE_P(Extensions, RangeFaults, ::testing::Values(1, 11));

TEST_P(RangeFaults, OutOfRangeGivesWhatWasReceived) {
    const OutOfRange cases[] = {
        {"data", Value("99").But(kRange), "99"},
        {"no indicator", Value(kRange), ""},
        {"data without indicator", Value("99").But(kRange).NoIndicator(), ""},
        {"indicator without data", Value(kRange).Indicator(5), ""},
        {"huge indicator", Value(kRange).Indicator(1LL << 40), ""},
        {"largest indicator", Value(kRange).Indicator(std::numeric_limits<long long>::max()), ""},
        {"no total", Value(kRange).Indicator(-4), ""},
        {"negative indicator", Value(kRange).Indicator(-7), ""},
        {"smallest indicator", Value(kRange).Indicator(std::numeric_limits<long long>::min()), ""},
        {"null indicator", Value(kRange).Indicator(-1), ""},
        {"second record", Value(Error("22001", "cut").Also("22003", "range")), ""},
    };
    for (const OutOfRange& one : cases) {
        ScriptedSource former;
        std::swap(former, m_source);
    }
}

}  // namespace
}  // namespace kortavin::testing
