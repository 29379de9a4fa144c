#include "tests/support/databases.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace kortavin::test {
namespace {

struct BackendFacts {
    const char* name;
    const char* variable;  // of the environment; null: needs none
    char quote;
    const char* longText;
};

// By Backend.
constexpr BackendFacts kFacts[] = {
    {"Sqlite", nullptr, '"', "text"},
    {"PostgresqlAnsi", "KORTAVIN_TEST_POSTGRESQL_ANSI", '"', "text"},
    {"PostgresqlUnicode", "KORTAVIN_TEST_POSTGRESQL_UNICODE", '"', "text"},
    {"Mariadb", "KORTAVIN_TEST_MARIADB", '`', "longtext"},
};

const BackendFacts& FactsOf(Backend backend) {
    return kFacts[static_cast<int>(backend)];
}

bool ServersAreRequired() {
    const char* const required = std::getenv("KORTAVIN_REQUIRE_SERVERS");
    return required != nullptr && std::string_view(required) == "1";
}

}  // namespace

void PrintTo(Backend backend, std::ostream* out) {
    *out << FactsOf(backend).name;
}

std::string BackendName(const testing::TestParamInfo<Backend>& info) {
    return FactsOf(info.param).name;
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

DatabaseFixture::DatabaseFixture(Backend backend) : m_backend(backend) {}

void DatabaseFixture::SetUp() {
    const char* const variable = FactsOf(m_backend).variable;
    const char* const told = variable != nullptr ? std::getenv(variable) : nullptr;
    if (variable == nullptr)
        m_connectionString = "Driver=SQLite3;Database=" + (m_folder / "test.db") + ";StepAPI=1";
    else if (told != nullptr)
        m_connectionString = told;
    else if (ServersAreRequired())
        FAIL() << variable << " is not set, but KORTAVIN_REQUIRE_SERVERS is";
    else
        GTEST_SKIP() << variable << " is not set";
    m_database.Open(CString(Gbk(m_connectionString)));
}

// On a connection of its own: the test may have closed the first one, or left it in any state.
void DatabaseFixture::TearDown() {
    m_database.Close();
    if (m_made.empty())
        return;
    m_database.SetNarrowCharset("");
    m_database.Open(CString(Gbk(m_connectionString)));
    for (; !m_made.empty(); m_made.pop_back())
        Execute("DROP " + m_made.back());
}

std::string DatabaseFixture::Make(const std::string& kind, const std::string& name,
                                  const std::string& definition) {
    const std::string made = name + std::to_string(getpid()) + "n" + std::to_string(m_made.size());
    Execute("CREATE " + kind + " " + made + " " + definition);
    m_made.push_back(kind + " " + made);
    return made;
}

std::string DatabaseFixture::MakeTable(const std::string& name, const std::string& columns) {
    return Make("TABLE", name, "(" + columns + ")");
}

std::string DatabaseFixture::MakeView(const std::string& name, const std::string& select) {
    return Make("VIEW", name, "AS " + select);
}

void DatabaseFixture::Execute(const std::string& sql) {
    m_database.ExecuteSQL(CString(Gbk(sql)));
}

std::vector<Row> DatabaseFixture::Query(const std::string& sql) {
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk(sql)));
    return RestOf(recordset);
}

std::string DatabaseFixture::Quoted(const std::string& name) const {
    const char quote = FactsOf(m_backend).quote;
    return quote + name + quote;
}

std::string DatabaseFixture::LongTextType() const {
    return FactsOf(m_backend).longText;
}

}  // namespace kortavin::test
