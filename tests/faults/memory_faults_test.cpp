#include <cstdio>
#include <memory>

#include "tests/support/scripted/faultfixture.h"
#include "tests/support/scripted/scarcememory.h"

namespace kortavin::testing {
namespace {

// How many allocations fail, beginning with the one whose turn it is.
class MemoryFaults : public FaultTest, public WithParamInterface<std::size_t> {
  protected:
    void SetUp() override {
        for (const char* name : {"short", "a name that no small buffer holds", "last"})
            AddName(name);
        m_source.Statement("q").AddColumn("id").AddColumn("a column name that no small buffer holds");
        m_source.Statement("q").AddRow({"1", Times(300, "x")}).AddRow({"2", Times(9000, "道")});
        Open();
        window::SetMessageBoxHandler([this](const char* text, UINT) {
            return std::snprintf(m_box, sizeof m_box, "%s", text);  // without an allocation
        });
    }

    // Lets each allocation of `action` fail in turn until it needs none more, and has `check` look at what
    // came of it: whether that was felt, and whether an error reached the caller.
    void Sweep(auto action, auto check) {
        bool felt = true;
        for (std::size_t goesWell = 0; felt && !HasFailure(); ++goesWell) {
            m_box[0] = '\0';
            bool threw = false;
            {
                const ScarceMemory scarcity(goesWell, GetParam());
                try {
                    action();
                } catch (const std::exception&) {
                    threw = true;
                }
                felt = scarcity.WasFelt();
            }
            check(felt, threw);
            EXPECT_EQ(m_source.log.openStatements, 0);
        }
    }

    char m_box[64] = "";
};

INSTANTIATE_TEST_SUITE_P(Failing, MemoryFaults, Values(1, ScarceMemory::kForEver),
                         [](const auto& info) { return info.param == 1 ? "Once" : "ForEver"; });

TEST_P(MemoryFaults, ListsShowTheErrorAndKeepTheNamesReadSoFar) {
    CStringArray list;
    BOOL result = FALSE;
    const CString table("a table's name that no small buffer holds");
    const auto check = [&](bool felt, const std::string& error, const std::string& all) {
        EXPECT_EQ(m_box, felt ? error : "");
        std::string names;
        for (const CString& name : list)
            names.append(name.View()).append("|");
        EXPECT_EQ(names, felt ? all.substr(0, names.size()) : all);
        list.RemoveAll();
    };
    Sweep([&] { result = m_database.GetAllTables(list); },
          [&](bool felt, bool threw) {
              EXPECT_TRUE(!threw && (result || (felt && list.IsEmpty())));
              check(felt, Gbk("内存错误"), "short|a name that no small buffer holds|last|");
          });
    Sweep([&] { result = m_database.GetColumnList(table, list); },
          [&](bool felt, bool threw) {
              EXPECT_TRUE(!threw && result);
              check(felt, "Out-of-memory", "short|[a name that no small buffer holds]|last|");
          });
}

TEST_P(MemoryFaults, StatementsAndTheirDescriptionsFailInSilence) {
    CString sql("q");
    int count = 0;
    Sweep(
        [&] {
            const std::unique_ptr<void, void (*)(void*)> recordset(m_query.GetReocrd(sql),
                                                                   CQuerySql::ReleaseRecordset);
            if (recordset)
                CQuerySql::ReleaseFieldsInfo(m_query.GetFieldsInfo(recordset.get(), count));
        },
        [&](bool felt, bool) {
            EXPECT_EQ(count, felt ? 0 : 2);
            EXPECT_STREQ(m_box, "");
        });
}

TEST_P(MemoryFaults, ExportKeepsWhatIsWritten) {
    const CString sql("q");
    for (const int format : {1, 10}) {
        CMemFile whole;
        ASSERT_EQ(m_query.QueryDataToFile(&whole, format, 2, 0, sql), 1);
        const std::string all(whole.GetContent());
        auto file = std::make_unique<CMemFile>();
        int answer = 0;
        Sweep([&] { answer = m_query.QueryDataToFile(file.get(), format, 2, 0, sql); },
              [&](bool felt, bool threw) {
                  EXPECT_EQ(answer, !felt && !threw);
                  const std::string written(file->GetContent());
                  EXPECT_EQ(written, felt ? all.substr(0, written.size()) : all);
                  file = std::make_unique<CMemFile>();
                  answer = 0;
              });
    }
}

}  // namespace
}  // namespace kortavin::testing
