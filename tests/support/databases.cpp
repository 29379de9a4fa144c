#include "tests/support/databases.h"

#include <unistd.h>

#include <cstdlib>

namespace kortavin::test {
namespace {

struct BackendFacts {
    const char* name;
    const char* variable;  // of the environment; null: needs none
};

// By Backend.
constexpr BackendFacts kFacts[] = {
    {"Sqlite", nullptr},
    {"PostgresqlAnsi", "KORTAVIN_TEST_POSTGRESQL_ANSI"},
    {"PostgresqlUnicode", "KORTAVIN_TEST_POSTGRESQL_UNICODE"},
    {"Mariadb", "KORTAVIN_TEST_MARIADB"},
};

}  // namespace

std::string BackendName(const ::testing::TestParamInfo<Backend>& info) {
    return kFacts[static_cast<int>(info.param)].name;
}

std::string Gbk(const std::string& utf8) {
    return std::string(CString::FromUtf8(utf8).value().View());
}

std::vector<Row> RestOf(_CRecordsetEx& recordset) {
    std::vector<Row> rows;
    for (; !recordset.IsEOF(); recordset.MoveNext()) {
        Row& row = rows.emplace_back();
        CString value;
        for (short i = 0; i < recordset.GetODBCFieldCount(); ++i) {
            recordset.ReadFieldText(i, value);
            row.emplace_back(value.View());
        }
    }
    return rows;
}

void DatabaseFixture::SetUp() {
    const char* const variable = kFacts[static_cast<int>(m_backend)].variable;
    if (variable == nullptr)
        m_connectionString = "Driver=SQLite3;Database=" + (m_folder / "test.db") + ";StepAPI=1";
    else if (const char* const told = std::getenv(variable))
        m_connectionString = told;
    else if (std::getenv("KORTAVIN_REQUIRE_SERVERS") != nullptr)
        FAIL() << variable << " is not set, but KORTAVIN_REQUIRE_SERVERS is";
    else
        GTEST_SKIP() << variable << " is not set";
    Open();
}

// On a connection of its own: the test may have closed the first one, or left it in any state.
void DatabaseFixture::TearDown() {
    m_database.Close();
    if (m_made.empty())
        return;
    Open();
    for (; !m_made.empty(); m_made.pop_back())
        Execute("DROP " + m_made.back());
}

void DatabaseFixture::Open(const std::string& moreOptions) {
    m_database.Open(CString(Gbk(m_connectionString + moreOptions)));
}

std::string DatabaseFixture::Make(const std::string& kind, const std::string& name,
                                  const std::string& definition) {
    const std::string made = name + std::to_string(getpid()) + "n" + std::to_string(m_made.size());
    Execute("CREATE " + kind + " " + made + " " + definition);
    m_made.push_back(kind + " " + made);
    return made;
}

void DatabaseFixture::Execute(const std::string& sql) {
    m_database.ExecuteSQL(CString(Gbk(sql)));
}

std::vector<Row> DatabaseFixture::Query(const std::string& sql) {
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk(sql)));
    return RestOf(recordset);
}

}  // namespace kortavin::test
