#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "db/geodatabase.h"
#include "db/recordsetex.h"
#include "tests/framework/base/tempfolder.h"

// The real databases that tests run against: SQLite always, in a file of its own, and the servers whose
// connection strings the environment has (scripts/servers starts them). Without one its tests are skipped,
// or fail where KORTAVIN_REQUIRE_SERVERS is 1.
//
// Statements and names are written in UTF-8 here, as the sources are; results are GBK bytes.
namespace kortavin::test {

enum class Backend { Sqlite, PostgresqlAnsi, PostgresqlUnicode, Mariadb };

void PrintTo(Backend backend, std::ostream* out);
std::string BackendName(const testing::TestParamInfo<Backend>& info);

std::string Gbk(const std::string& utf8);

using Row = std::vector<std::string>;

// The current row and all that follow, value by value.
std::vector<Row> RestOf(_CRecordsetEx& recordset);

class DatabaseFixture : public testing::Test {
  protected:
    explicit DatabaseFixture(Backend backend);
    void SetUp() override;     // opens the database
    void TearDown() override;  // drops what MakeTable and MakeView made

    // Makes a table with a name that nobody else has, and answers the name; it needs no quoting.
    std::string MakeTable(const std::string& name, const std::string& columns);
    std::string MakeView(const std::string& name, const std::string& select);
    void Execute(const std::string& sql);
    std::vector<Row> Query(const std::string& sql);
    // `name` quoted for a statement, whatever it holds.
    std::string Quoted(const std::string& name) const;
    // The type of a column that takes texts of any length.
    std::string LongTextType() const;

    Backend m_backend;
    TempFolder m_folder;
    std::string m_connectionString;  // UTF-8
    CGeoDatabase m_database;

  private:
    std::string Make(const std::string& kind, const std::string& name, const std::string& definition);

    std::vector<std::string> m_made;  // "TABLE name", in the order made
};

class SqliteTest : public DatabaseFixture {
  protected:
    SqliteTest() : DatabaseFixture(Backend::Sqlite) {}
};

// To be instantiated with kEveryBackend.
class EveryDatabaseTest : public DatabaseFixture, public testing::WithParamInterface<Backend> {
  protected:
    EveryDatabaseTest() : DatabaseFixture(GetParam()) {}
};

inline const auto kEveryBackend =
    testing::Values(Backend::Sqlite, Backend::PostgresqlAnsi, Backend::PostgresqlUnicode, Backend::Mariadb);

}  // namespace kortavin::test
