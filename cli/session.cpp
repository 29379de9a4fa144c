#include "cli/session.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "cli/failure.h"
#include "cli/text.h"
#include "framework/base/codepage.h"
#include "framework/window/messagebox.h"

namespace kortavin::cli {
namespace {

namespace fs = std::filesystem;

// Any file opens as a database with the SQLite driver, and statements that read no table even work; so look
// before. An empty file is an empty database.
void RequireSqliteFile(const fs::path& path) {
    if (!fs::is_regular_file(path))
        throw Failure(fmt::format("{}: not a file", path.string()));
    constexpr std::string_view kMagic("SQLite format 3\0", 16);
    std::string begin(kMagic.size(), '\0');
    std::ifstream file(path, std::ios::binary);
    if (file)
        file.read(begin.data(), static_cast<std::streamsize>(begin.size()));
    if (file.bad() || !file.is_open())
        throw Failure(fmt::format("{}: {}", path.string(), std::strerror(errno)));
    if (file.gcount() > 0 && begin != kMagic)
        throw Failure(fmt::format("{}: not an SQLite database", path.string()));
}

void OpenConnection(CGeoDatabase& database, const std::string& connection) {
    std::error_code error;
    if (fs::exists(connection, error)) {
        RequireSqliteFile(connection);
        // The path's bytes are to reach the driver as they are, whatever the locale says.
        database.SetNarrowCharset("UTF-8");
        return database.Open(SqliteConnection(connection));
    }
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
    window::SetMessageBoxHandler([this](const CString& text, UINT) {
        m_messages.push_back(DisplayLines(text));
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

void AddConnectionOption(CLI::App& command, std::string& connection) {
    command
        .add_option(
            "-c,--connection", connection,
            "Path of an SQLite file, or an ODBC connection string. Arguments can be read in the process "
            "list: a connection string with a password is better given in the environment")
        ->envname("KORTAVIN_CONNECTION")
        ->required()
        ->type_name("CONNECTION");
}

}  // namespace kortavin::cli
