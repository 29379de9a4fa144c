#pragma once

#include <sql.h>
#include <sqlext.h>

#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "script.h"

// The driver manager exports functions of the same names: ours are visible to it and never called in here.
#define SCRIPTED_EXPORT extern "C" __attribute__((visibility("default")))

namespace kortavin::testing {

struct Record {
    Diagnostic diagnostic;
    SQLINTEGER column = SQL_COLUMN_NUMBER_UNKNOWN;
};

struct Handle {
    virtual ~Handle() = default;

    std::vector<Record> records;
    SQLRETURN code = SQL_SUCCESS;

    SQLRETURN Fail(std::string state, std::string message);
    SQLRETURN Obey(const Fault& fault);
};

struct Environment : Handle {};

class Log {
  public:
    void Open(const std::string& path);
    void Line(const std::string& text);

  private:
    std::ofstream m_file;
};

struct Connection : Handle {
    Script script;
    Log log;
    bool dead = false;
    // Those that the application never frees go with the connection; the log leaves them open.
    std::map<Handle*, std::unique_ptr<Handle>> statements;

    SQLRETURN Connect(const std::string& connectionString);
    // Answers with the same key take turns, the last one stays; null if nothing fits.
    Answer* Find(std::list<Answer>& answers, const std::string& key);
    // The scripted number for a SQLGetInfo type.
    long long Number(int type) const;

  private:
    std::map<const Answer*, std::size_t> m_turns;
};

struct Target {
    SQLSMALLINT type = SQL_C_CHAR;
    SQLPOINTER buffer = nullptr;
    SQLLEN size = 0;
    SQLLEN* indicator = nullptr;
};

// How far SQLGetData has come with one value.
struct Progress {
    std::size_t offset = 0;
    int calls = 0;
    bool finished = false;
};

struct Statement : Handle {
    explicit Statement(Connection& owner) : connection(owner) {}

    Connection& connection;
    std::string prepared;
    Answer* answer = nullptr;
    std::map<SQLUSMALLINT, Target> bindings;
    // How many more times the function that is under way answers SQL_STILL_EXECUTING.
    std::optional<std::pair<std::string, int>> pending;

    std::size_t row = 0;
    int repetition = 0;
    bool onRow = false;
    SQLUSMALLINT lastRead = 0;
    std::vector<Progress> progress;

    SQLRETURN Execute(Answer* scripted, const std::string& asked);
    SQLRETURN Show(Answer* result);
    void Close();
    bool StillExecuting(const std::string& function);

    SQLRETURN Fetch();
    SQLRETURN GetData(SQLUSMALLINT column, const Target& target);

  private:
    int Delay(const std::string& function) const;
    std::size_t NextRow() const;
    bool RowComes() const;
    const Value& Current(SQLUSMALLINT column) const;
    SQLRETURN FillBindings();
    const char* Refusal(SQLUSMALLINT column) const;
};

// Writes what a value answers to one call into the target; records go to the statement.
SQLRETURN Deliver(Statement& statement, const Value& value, Progress& progress, const Target& target);

// A name or text argument as ODBC hands it over; absent for a null pointer.
std::optional<std::string> Argument(const SQLCHAR* text, SQLINTEGER length);
// Copies with truncation and reports the whole length, as every text answer of ODBC does. Answers false if
// cut.
bool CopyText(std::string_view text, SQLPOINTER buffer, SQLLEN size, SQLSMALLINT* length);

}  // namespace kortavin::testing
