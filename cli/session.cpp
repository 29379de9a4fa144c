#include "cli/session.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <filesystem>

#include "cli/failure.h"
#include "cli/text.h"
#include "kortavin/base/codepage.h"
#include "kortavin/window/messagebox.h"

namespace kortavin::cli {
namespace {

namespace fs = std::filesystem;

void OpenFile(CGeoDatabase& database, const std::string& path) {
    if (!fs::is_regular_file(path))
        throw Failure(fmt::format("{}: not a file", path));
    // The path's bytes are to reach the driver as they are, whatever the locale says.
    database.SetNarrowCharset("UTF-8");
    try {
        database.Open(SqliteConnection(path));
        // With the SQLite driver any file opens, and its catalog is then just empty.
        database.ExecuteSQL("SELECT name FROM sqlite_master");
    } catch (const CDBException& error) {
        throw Failure(fmt::format("{}: {}", path, DatabaseReason(error).ToLine()));
    }
}

void OpenConnection(CGeoDatabase& database, const std::string& connection) {
    std::error_code error;
    if (fs::exists(connection, error))
        return OpenFile(database, connection);
    if (connection.find('=') == std::string::npos)
        throw Failure(fmt::format("{}: {}", connection, error ? error.message() : "no such file"));
    database.Open(ToGbk(connection));
}

std::string DisplayLines(const CString& text) {
    std::string lines = base::GbkForDisplay(text.View());
    lines.erase(lines.find_last_not_of("\r\n") + 1);
    return lines;
}

}  // namespace

DatabaseReason::DatabaseReason(const CDBException& error)
    : state(base::GbkForDisplay(error.GetState().View())), text(DisplayLines(error.GetErrorMessage())) {}

std::string DatabaseReason::ToLine() const {
    return state.empty() ? text : fmt::format("SQLSTATE {}: {}", state, text);
}

CString SqliteConnection(const std::string& path, const std::string& extra) {
    // An absolute path begins with '/', so blanks and braces at its beginning mean nothing to the driver
    // manager.
    const std::string absolute = fs::absolute(path).string();
    if (absolute.find(';') != std::string::npos)
        throw Failure(fmt::format("{}: a path with ';' cannot stand in a connection string", absolute));
    return ToGbk(fmt::format("Driver=SQLite3;Database={};StepAPI=1;NoCreat=1{}", absolute, extra));
}

MessageCollector::MessageCollector() {
    window::SetMessageBoxHandler([this](const char* text, UINT) {
        m_messages.push_back(DisplayLines(CString(text)));
        return IDOK;
    });
}

MessageCollector::~MessageCollector() {
    window::SetMessageBoxHandler({});
}

void MessageCollector::ThrowMessages() const {
    if (!m_messages.empty())
        throw Failure(fmt::format("{}", fmt::join(m_messages, "\n")));
}

Session::Session(const std::string& connection) {
    OpenConnection(m_database, connection);
}

void AddConnectionOption(CLI::App& command, std::string& connection, const std::string& help) {
    command.add_option("-c,--connection", connection, "Path of an SQLite file, or an ODBC connection string")
        ->envname("KORTAVIN_CONNECTION")
        ->required()
        ->type_name("CONNECTION");
    command.footer(
        help +
        "\n\nOther users can read a command's arguments in the process list. A connection string with a\n"
        "password belongs into the environment variable KORTAVIN_CONNECTION.");
}

}  // namespace kortavin::cli
