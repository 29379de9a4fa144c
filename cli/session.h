#pragma once

#include <string>
#include <vector>

#include "kortavin/db/geodatabase.h"

namespace CLI {
class App;
}

namespace kortavin::cli {

// What the data source answered, in UTF-8.
struct DatabaseReason {
    explicit DatabaseReason(const CDBException& error);
    std::string ToLine() const;  // "SQLSTATE 42S02: TEXT"

    std::string state;  // five characters; empty where there was no diagnostic record
    std::string text;
};

// The connection string for the path of an SQLite file, opened and never made by the driver. `extra` are
// further KEY=VALUE pairs. Throws Failure for a path that no connection string can hold.
CString SqliteConnection(const std::string& path, const std::string& extra = {});

// Takes the texts of the library's message boxes while it lives.
class MessageCollector {
  public:
    MessageCollector();
    MessageCollector(const MessageCollector&) = delete;
    MessageCollector& operator=(const MessageCollector&) = delete;
    ~MessageCollector();

    // Throws what was to be shown, if anything, as Failure.
    void ThrowMessages() const;

  private:
    std::vector<std::string> m_messages;
};

// An open connection.
class Session {
  public:
    // `connection` is the path of an SQLite file or an ODBC connection string. Throws Failure and
    // CDBException.
    explicit Session(const std::string& connection);

    CGeoDatabase& GetDatabase() { return m_database; }
    void ThrowMessages() const { m_messages.ThrowMessages(); }

  private:
    MessageCollector m_messages;
    CGeoDatabase m_database;
};

// Adds the option -c, which may come from the environment too, and says so below the command's own `help`.
void AddConnectionOption(CLI::App& command, std::string& connection, const std::string& help);

}  // namespace kortavin::cli
