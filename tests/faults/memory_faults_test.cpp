#include <algorithm>
#include <cstring>
#include <memory>

#include "framework/base/file.h"
#include "tests/faults/faultfixture.h"
#include "tests/faults/scarcememory.h"

namespace kortavin::testing {
namespace {

constexpr const char* kOutOfMemory = "Out-of-memory";
constexpr std::size_t kMostAllocations = 5000;

// How many allocations fail, beginning with the one whose turn it is.
class MemoryFaults : public FaultTest, public ::testing::WithParamInterface<std::size_t> {
  protected:
    static constexpr std::size_t kBoxSize = 256;

    void SetUp() override {
        Answer& tables = m_source.Tables();
        Answer& columns = m_source.Columns();
        for (const char* name : {"short", "a name that no small buffer holds", "last", "one more name"}) {
            tables.AddRow({Value::Null(), Value::Null(), name});
            columns.AddRow({Value::Null(), Value::Null(), "t", name, "4"});
        }
        Answer& query = m_source.Statement(kSql);
        query.AddColumn("id", 4, 10).AddColumn("a column name that no small buffer holds");
        query.AddRow({"1", Times(300, "x")}).AddRow({"2", Times(9000, "道")}).AddRow({"3", "z"});
        Open();
        window::SetMessageBoxHandler([this](const char* text, UINT) {
            ++m_boxCount;
            std::strncpy(m_box, text, kBoxSize - 1);  // without an allocation
            return IDOK;
        });
    }

    // Lets each allocation of `action` fail in turn until it needs none more, and has `check` look at what
    // came of it.
    template <class Action, class Check>
    void Sweep(Action action, Check check) {
        for (std::size_t first = 1; first < kMostAllocations; ++first) {
            m_boxCount = 0;
            m_box[0] = '\0';
            m_thrown.clear();
            bool felt = false;
            const char* thrown = "";
            {
                const ScarceMemory scarcity(first, GetParam());
                try {
                    action();
                } catch (const CMemoryException&) {
                    thrown = "CMemoryException";
                } catch (const CDBException&) {
                    thrown = "CDBException";
                } catch (const std::bad_alloc&) {
                    thrown = "bad_alloc";
                }
                felt = scarcity.WasFelt();
            }
            m_thrown = thrown;
            ASSERT_EQ(m_source.OpenStatements(), 0) << first;
            check(felt);
            if (HasFailure())
                FAIL() << "at allocation " << first;
            if (!felt)
                return;
        }
        FAIL() << "there is no end of allocations";
    }

    static void ExpectBeginning(const Strings& all, const CStringArray& list, std::size_t least) {
        const Strings some = ToStrings(list);
        ASSERT_LE(some.size(), all.size());
        EXPECT_GE(some.size(), least);
        EXPECT_TRUE(std::equal(some.begin(), some.end(), all.begin()));
    }

    static constexpr const char* kSql = "a statement that no small buffer holds";
    int m_boxCount = 0;
    char m_box[kBoxSize] = "";
    std::string m_thrown;
};

INSTANTIATE_TEST_SUITE_P(Failing, MemoryFaults, ::testing::Values(1, 2, ScarceMemory::kForEver),
                         [](const auto& info) {
                             return info.param == ScarceMemory::kForEver ? "ForEver"
                                                                         : std::to_string(info.param);
                         });

TEST_P(MemoryFaults, TableListShowsTheErrorAndKeepsTheNamesReadSoFar) {
    const Strings all = {"short", "a name that no small buffer holds", "last", "one more name"};
    CStringArray tables;
    BOOL result = FALSE;
    Sweep(
        [&] {
            tables.RemoveAll();
            result = m_database.GetAllTables(tables);
        },
        [&](bool felt) {
            EXPECT_EQ(m_thrown, "");
            EXPECT_EQ(m_boxCount, felt);
            EXPECT_EQ(m_box, felt ? Gbk("内存错误") : "");
            ExpectBeginning(all, tables, felt ? 0 : all.size());
            EXPECT_TRUE(result || tables.IsEmpty());
            EXPECT_TRUE(result || felt);
        });
}

TEST_P(MemoryFaults, ColumnListShowsTheErrorAndKeepsTheNamesReadSoFar) {
    const Strings all = {"before", "short", "[a name that no small buffer holds]", "last", "[one more name]"};
    const CString table("a table's name that no small buffer holds");
    CStringArray columns;
    BOOL result = FALSE;
    Sweep(
        [&] {
            columns.RemoveAll();
            columns.Add("before");
            result = m_database.GetColumnList(table, columns);
        },
        [&](bool felt) {
            if (columns.IsEmpty())
                return;  // the test's own allocation
            EXPECT_EQ(m_thrown, "");
            EXPECT_EQ(m_boxCount, felt);
            EXPECT_STREQ(m_box, felt ? kOutOfMemory : "");
            ExpectBeginning(all, columns, felt ? 1 : all.size());
            EXPECT_TRUE(result);
        });
}

// Of two errors either may be shown, but one is.
TEST_P(MemoryFaults, RejectedCatalogIsReportedEvenWithoutMemory) {
    m_database.Close();
    ScriptedSource refusing;
    refusing.Tables().Fails(Error("42000", "a message that no small buffer holds"));
    refusing.Columns().Fails(Error("42000", "a message that no small buffer holds"));
    m_database.Open(CString(refusing.ConnectionString()));
    CStringArray list;
    const CString table("t");
    const auto check = [&](bool felt, const std::string& memory) {
        EXPECT_EQ(m_thrown, "");
        EXPECT_EQ(m_boxCount, 1);
        const std::string shown = m_box;
        if (!felt || shown != memory) {
            EXPECT_THAT(shown, StartsWith("a message that no small buffer holds\nState:37000"));
        }
    };
    BOOL result = TRUE;
    Sweep([&] { result = m_database.GetAllTables(list); },
          [&](bool felt) {
              check(felt, Gbk("内存错误"));
              EXPECT_FALSE(result);
          });
    Sweep([&] { result = m_database.GetColumnList(table, list); },
          [&](bool felt) {
              check(felt, kOutOfMemory);
              EXPECT_TRUE(result);
          });
    EXPECT_EQ(refusing.OpenStatements(), 0);
    m_database.Close();
}

TEST_P(MemoryFaults, StatementsFailInSilence) {
    CQuerySql query(&m_database);
    CString sql(kSql);
    int count = 0;
    void* recordset = nullptr;
    Sweep(
        [&] {
            recordset = query.GetReocrd(sql);
            CQuerySql::ReleaseRecordset(recordset);
        },
        [&](bool felt) {
            EXPECT_EQ(m_thrown, "");
            EXPECT_EQ(recordset == nullptr, felt);
        });
    CODBCFieldInfo* infos = nullptr;
    Sweep(
        [&] {
            infos = nullptr;
            count = 77;
            infos = query.GetFieldsInfo(sql, count);
            CQuerySql::ReleaseFieldsInfo(infos);
        },
        [&](bool felt) {
            EXPECT_THAT(m_thrown, ::testing::AnyOf("", "CMemoryException"));
            EXPECT_TRUE(felt || infos != nullptr);
            EXPECT_EQ(count, infos != nullptr ? 2 : 0);
        });
    EXPECT_EQ(m_boxCount, 0);
}

TEST_P(MemoryFaults, RecordsetThrowsTheMemoryErrorAndIsClosed) {
    _CRecordsetEx recordset(&m_database);
    const CString sql(kSql);
    CString value;
    bool wasOpen = false;
    Sweep(
        [&] {
            const struct AtEnd {
                _CRecordsetEx& recordset;
                bool& wasOpen;
                ~AtEnd() {
                    wasOpen = recordset.IsOpen();
                    recordset.Close();
                }
            } atEnd{recordset, wasOpen};
            recordset.OpenSql(sql);
        },
        [&](bool felt) {
            EXPECT_EQ(m_thrown, felt ? "CMemoryException" : "");
            EXPECT_NE(wasOpen, felt);
        });
    Sweep(
        [&] {
            const struct AtEnd {
                _CRecordsetEx& recordset;
                ~AtEnd() { recordset.Close(); }
            } atEnd{recordset};
            recordset.OpenSql(sql);
            for (; !recordset.IsEOF(); recordset.MoveNext())
                for (short i = 0; i < 2; ++i)
                    recordset.ReadFieldText(i, value);
        },
        [&](bool felt) { EXPECT_EQ(m_thrown, felt ? "CMemoryException" : ""); });
}

TEST_P(MemoryFaults, ExportKeepsWhatIsWritten) {
    CQuerySql query(&m_database);
    for (const int format : {1, 10}) {
        CMemFile whole;
        ASSERT_EQ(query.QueryDataToFile(&whole, format, 2, 1, kSql), 1);
        const std::string all(whole.GetContent());
        const std::size_t countAt = format == 10 ? 44 + 118 * 2 : all.size();
        int answer = 0;
        std::string content;
        std::unique_ptr<CMemFile> file;
        const CString sql(kSql);
        Sweep(
            [&] {
                answer = -1;
                file.reset();
                file = std::make_unique<CMemFile>();
                answer = query.QueryDataToFile(file.get(), format, 2, 1, sql);
            },
            [&](bool felt) {
                EXPECT_EQ(answer == 1, !felt);
                EXPECT_EQ(answer == -1, !m_thrown.empty());
                if (!file)
                    return;
                const std::string written(file->GetContent());
                ASSERT_LE(written.size(), all.size());
                EXPECT_EQ(written.substr(0, countAt), all.substr(0, std::min(written.size(), countAt)));
                const std::size_t rows = std::min(countAt + 4, written.size());
                EXPECT_EQ(written.substr(rows),
                          all.substr(std::min(rows, all.size()), written.size() - rows));
            });
    }
    EXPECT_EQ(m_boxCount, 0);
}

TEST_P(MemoryFaults, ConnectionThatCannotBeOpenedIsClosed) {
    m_database.Close();
    const CString connectionString(m_source.ConnectionString("UID=scott;PWD=tiger;"));
    Sweep(
        [&] {
            CDatabase database;
            database.Open(connectionString);
        },
        [&](bool felt) {
            EXPECT_EQ(m_thrown.empty(), !felt);
            EXPECT_EQ(m_source.OpenConnections(), 0);
        });
}

}  // namespace
}  // namespace kortavin::testing
