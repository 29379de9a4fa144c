#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "kortavin/db/geodatabase.h"
#include "kortavin/db/recordsetex.h"
#include "tests/support/tempfolder.h"

// The real databases that tests run against: SQLite always, in a file of its own, and the servers whose
// connection strings the environment has (scripts/servers starts them). Without one its tests are skipped,
// or fail where KORTAVIN_REQUIRE_SERVERS is set.
//
// Statements and names are written in UTF-8 here, as the sources are; results are GBK bytes.
namespace kortavin::test {

enum class Backend { Sqlite, PostgresqlAnsi, PostgresqlUnicode, Mariadb };

std::string BackendName(const ::testing::TestParamInfo<Backend>& info);

std::string Gbk(const std::string& utf8);

using Row = std::vector<std::string>;

// The current row and all that follow, value by value.
std::vector<Row> RestOf(_CRecordsetEx& recordset);

// What an action throws; an error with code 0 when it throws nothing.
template <class Action>
CDBException ErrorOf(Action action) {
    try {
        action();
    } catch (const CDBException& error) {
        return error;
    }
    return CDBException(0, "", "");
}

class DatabaseFixture : public ::testing::Test {
  protected:
    explicit DatabaseFixture(Backend backend = Backend::Sqlite) : m_backend(backend) {}
    void SetUp() override;     // opens the database
    void TearDown() override;  // drops what was made

    void Open(const std::string& moreOptions = "");
    // Makes a table or view with a name that nobody else has, and answers the name; it needs no quoting.
    std::string Make(const std::string& kind, const std::string& name, const std::string& definition);
    std::string MakeTable(const std::string& columns) { return Make("TABLE", "t", "(" + columns + ")"); }
    void Execute(const std::string& sql);
    std::vector<Row> Query(const std::string& sql);
    // The type of a column that takes texts of any length.
    std::string LongTextType() const { return m_backend == Backend::Mariadb ? "longtext" : "text"; }

    Backend m_backend;
    TempFolder m_folder;
    std::string m_connectionString;  // UTF-8
    CGeoDatabase m_database;

  private:
    std::vector<std::string> m_made;  // "TABLE name", in the order made
};

// To be instantiated with kEveryBackend.
class EveryDatabaseTest : public DatabaseFixture, public ::testing::WithParamInterface<Backend> {
  protected:
    EveryDatabaseTest() : DatabaseFixture(GetParam()) {}
};

inline const auto kEveryBackend =
    ::testing::Values(Backend::Sqlite, Backend::PostgresqlAnsi, Backend::PostgresqlUnicode, Backend::Mariadb);

}  // namespace kortavin::test
