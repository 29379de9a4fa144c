#include "scriptedsource.h"

#include <stdlib.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace kortavin::testing {
namespace {

// The driver manager asks for its registry's place once, at the first call of the process.
const bool kRegistryIsOurs = setenv("ODBCSYSINI", KORTAVIN_SCRIPTED_REGISTRY, 1) == 0;

constexpr int kDriverName = 6;
constexpr int kDbmsName = 17;
constexpr int kGetDataExtensions = 81;
constexpr int kSmallInt = 5;
constexpr int kInteger = 4;

Answer& Added(std::list<Answer>& answers, std::optional<std::string> key) {
    Answer& answer = answers.emplace_back();
    answer.key = std::move(key);
    return answer;
}

Answer& WithTablesColumns(Answer& answer) {
    for (const char* name : {"TABLE_QUALIFIER", "TABLE_OWNER", "TABLE_NAME", "TABLE_TYPE", "REMARKS"})
        answer.AddColumn(name);
    return answer;
}

Answer& WithColumnsColumns(Answer& answer) {
    for (const char* name : {"TABLE_QUALIFIER", "TABLE_OWNER", "TABLE_NAME", "COLUMN_NAME"})
        answer.AddColumn(name);
    answer.AddColumn("DATA_TYPE", kSmallInt, 5).AddColumn("TYPE_NAME");
    answer.AddColumn("PRECISION", kInteger, 10).AddColumn("LENGTH", kInteger, 10);
    for (const char* name : {"SCALE", "RADIX", "NULLABLE"})
        answer.AddColumn(name, kSmallInt, 5);
    return answer.AddColumn("REMARKS");
}

template <class Value>
void Set(std::vector<std::pair<int, Value>>& entries, int type, Value value) {
    std::erase_if(entries, [type](const auto& entry) { return entry.first == type; });
    entries.emplace_back(type, std::move(value));
}

std::filesystem::path NewFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "scriptedXXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), pattern);
    return pattern;
}

}  // namespace

ScriptedSource::ScriptedSource() : m_folder(NewFolder()) {
    DriverName("libscripteddriver.so").DbmsName("Scripted").GetDataExtensions(15);
}

ScriptedSource::~ScriptedSource() {
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

Answer& ScriptedSource::Statement(std::string text) {
    return Added(m_script.statements, std::move(text));
}

Answer& ScriptedSource::AnyStatement() {
    return Added(m_script.statements, std::nullopt);
}

Answer& ScriptedSource::Tables() {
    return WithTablesColumns(Added(m_script.tables, std::nullopt));
}

Answer& ScriptedSource::Tables(std::string types) {
    return WithTablesColumns(Added(m_script.tables, std::move(types)));
}

Answer& ScriptedSource::Columns() {
    return WithColumnsColumns(Added(m_script.columns, std::nullopt));
}

Answer& ScriptedSource::Columns(std::string table) {
    return WithColumnsColumns(Added(m_script.columns, std::move(table)));
}

ScriptedSource& ScriptedSource::DriverName(std::string name) {
    return Info(kDriverName, std::move(name));
}

ScriptedSource& ScriptedSource::DbmsName(std::string name) {
    return Info(kDbmsName, std::move(name));
}

ScriptedSource& ScriptedSource::GetDataExtensions(int bits) {
    return Info(kGetDataExtensions, bits);
}

ScriptedSource& ScriptedSource::Info(int type, std::string text) {
    Set(m_script.infoTexts, type, std::move(text));
    return *this;
}

ScriptedSource& ScriptedSource::Info(int type, long long number) {
    Set(m_script.infoNumbers, type, number);
    return *this;
}

ScriptedSource& ScriptedSource::Unsupported(std::string function) {
    m_script.unsupported.insert(std::move(function));
    return *this;
}

ScriptedSource& ScriptedSource::Fails(std::string function, Fault fault) {
    m_script.faults.emplace_back(std::move(function), std::move(fault));
    return *this;
}

ScriptedSource& ScriptedSource::StillExecuting(std::string function, int times) {
    m_script.stillExecuting.emplace_back(std::move(function), times);
    return *this;
}

ScriptedSource& ScriptedSource::StillExecuting(int times) {
    return StillExecuting("*", times);
}

std::string ScriptedSource::Written(std::string_view driver, std::string_view more) const {
    std::ofstream file(ScriptPath(), std::ios::binary);
    file << ToText(m_script) << std::flush;
    if (!file)
        throw std::runtime_error("the script cannot be written");
    return "Driver=" + std::string(driver) + ";Script=" + ScriptPath().string() + ';' + std::string(more);
}

std::string ScriptedSource::ConnectionString(std::string_view more) const {
    return Written(KORTAVIN_SCRIPTED_DRIVER, more);
}

std::string ScriptedSource::RegisteredConnectionString(std::string_view driver, std::string_view more) const {
    if (!kRegistryIsOurs)
        throw std::runtime_error("the registry of the tests cannot be set");
    return Written('{' + std::string(driver) + '}', more);
}

std::vector<std::string> ScriptedSource::Log() const {
    std::ifstream file(ScriptPath().string() + ".log", std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> ScriptedSource::Calls(std::string_view function) const {
    std::vector<std::string> calls = Log();
    std::erase_if(calls, [function](const std::string& line) {
        return line.substr(0, line.find(' ')) != function || line.ends_with(" (still executing)");
    });
    return calls;
}

std::ptrdiff_t ScriptedSource::OpenStatements() const {
    const auto lines = Log();
    return std::ranges::count(lines, "statement opened") - std::ranges::count(lines, "statement closed");
}

std::ptrdiff_t ScriptedSource::OpenConnections() const {
    const auto lines = Log();
    return std::ranges::count(lines, "connection opened") - std::ranges::count(lines, "connection closed");
}

}  // namespace kortavin::testing
