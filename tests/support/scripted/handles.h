#pragma once

#include <sql.h>
#include <sqlext.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "script.h"

// The driver manager exports functions of the same names: ours are visible to it and never called in here.
#define SCRIPTED_EXPORT extern "C" __attribute__((visibility("default")))

namespace kortavin::testing {

// What the log tells of a call, and what its faults are looked up by.
struct Call {
    std::string function;
    std::string arguments = {};
    std::optional<int> argument = {};
};

// An environment has no more than this.
struct Handle {
    virtual ~Handle() = default;

    std::vector<Diagnostic> records;

    SQLRETURN Fail(std::string state, std::string message);
};

struct Connection : Handle {
    Script script;
    Log* log = nullptr;
    bool dead = false;

    Connection& GetConnection() { return *this; }
    bool StillExecuting(const Call&) { return false; }
    const Fault* FindFault(const Call& call) const;
    SQLRETURN Connect(const std::string& connectionString);
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
    const Answer* answer = nullptr;
    std::map<SQLUSMALLINT, Target> bindings;
    // How many more times the function that is under way answers SQL_STILL_EXECUTING.
    std::optional<int> pending;

    std::size_t nextRow = 0;
    bool onRow = false;
    SQLUSMALLINT lastRead = 0;
    std::vector<Progress> progress;

    Connection& GetConnection() { return connection; }
    bool StillExecuting(const Call& call);
    const Fault* FindFault(const Call& call) const;
    SQLRETURN Execute(const Answer& scripted);
    SQLRETURN Fetch();
    SQLRETURN GetData(SQLUSMALLINT column, const Target& target);

  private:
    bool MayTakeTime(const std::string& function) const;
    bool RowComes() const;
    const Value& Current(SQLUSMALLINT column) const;
    SQLRETURN FillBindings();
    const char* Refusal(SQLUSMALLINT column) const;
};

// Does what a fault says; warnings come on top of the work that the caller has done.
SQLRETURN Obey(Handle& handle, Connection& connection, const Fault& fault);

// Writes what a value answers to one call into the target; records go to the statement.
SQLRETURN Deliver(Statement& statement, const Value& value, Progress& progress, const Target& target);

// A name or text argument as ODBC hands it over; absent for a null pointer.
std::optional<std::string> Argument(const SQLCHAR* text, SQLINTEGER length);
// Copies with truncation and reports the whole length, as every text answer of ODBC does.
SQLRETURN CopyText(std::string_view text, SQLPOINTER buffer, SQLLEN size, SQLSMALLINT* length);

// Every function that can be scripted to fail comes through here, before its own work.
template <class Owner>
SQLRETURN Enter(SQLHANDLE raw, const Call& call, auto work) {
    auto& handle = static_cast<Owner&>(*static_cast<Handle*>(raw));
    Connection& connection = handle.GetConnection();
    handle.records.clear();
    if (handle.StillExecuting(call))
        return SQL_STILL_EXECUTING;
    connection.log->calls.push_back(call.function + (call.arguments.empty() ? "" : ' ' + call.arguments));
    if (connection.dead)
        return handle.Fail("08S01", "Communication link failure");
    const Fault* fault = handle.FindFault(call);
    return fault ? Obey(handle, connection, *fault) : work(handle);
}

}  // namespace kortavin::testing
