#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "cli/failure.h"
#include "cli/output.h"
#include "cli/session.h"
#include "cli/statementsource.h"
#include "cli/table.h"
#include "cli/text.h"
#include "kortavin/base/codepage.h"
#include "kortavin/base/file.h"
#include "kortavin/db/recordsetex.h"
#include "kortavin/service/statement.h"

namespace kortavin::cli {
namespace {

using Json = nlohmann::ordered_json;
using Rows = std::vector<std::vector<CString>>;

struct StatementArguments {
    std::string connection;
    StatementSource statement;
    int rows = 10;
    bool json = false;
};

std::string Utf8(const CString& gbk) {
    return base::GbkForDisplay(gbk.View());
}

std::string TypeName(const CODBCFieldInfo& info) {
    CString name = service::FieldTypeName(info.m_nSQLType);  // padded with blanks
    return Utf8(name.TrimRight());
}

const char* Nullability(const CODBCFieldInfo& info) {
    constexpr const char* kNames[] = {"no", "yes"};
    return info.m_nNullability == 0 || info.m_nNullability == 1 ? kNames[info.m_nNullability] : "unknown";
}

void WriteJson(const Json& json) {
    WriteOutput(json.dump() + "\n");
}

void ExecuteChecked(const StatementArguments& arguments) {
    const CString statement = ReadStatement(arguments.statement);
    Session session(arguments.connection);
    service::OpenStatement(session.GetDatabase(), statement);
}

// The failure is the answer here, so it goes to the standard output; only the exit code is the same as for
// any failure.
[[noreturn]] void AnswerRefused(const std::string& state, const std::string& message) {
    WriteJson({{"ok", false}, {"state", state}, {"message", message}});
    throw CLI::RuntimeError(1);
}

void CheckAsJson(const StatementArguments& arguments) {
    try {
        ExecuteChecked(arguments);
    } catch (const CDBException& error) {
        const DatabaseReason reason(error);
        AnswerRefused(reason.state, reason.text);
    } catch (const Failure& failure) {
        AnswerRefused("", failure.what());
    } catch (const CFileException& error) {
        AnswerRefused("", Utf8(error.GetErrorMessage()));
    }
    WriteJson({{"ok", true}});
}

void Check(const StatementArguments& arguments) {
    if (arguments.json)
        return CheckAsJson(arguments);
    ExecuteChecked(arguments);
    WriteOutput("The data source accepts the statement.\n");
}

void WriteDescriptionJson(const std::vector<CODBCFieldInfo>& columns) {
    Json array = Json::array();
    for (const CODBCFieldInfo& info : columns)
        array.push_back({{"name", Utf8(info.m_strName)},
                         {"type", info.m_nSQLType},
                         {"typeName", TypeName(info)},
                         {"precision", info.m_nPrecision},
                         {"scale", info.m_nScale},
                         {"nullable", Nullability(info)}});
    WriteJson(array);
}

void WriteDescription(const std::vector<CODBCFieldInfo>& columns) {
    std::vector<std::vector<std::string>> rows;
    for (const CODBCFieldInfo& info : columns)
        rows.push_back({Shown(info.m_strName), fmt::to_string(info.m_nSQLType), TypeName(info),
                        fmt::to_string(info.m_nPrecision), fmt::to_string(info.m_nScale), Nullability(info)});
    WriteOutput(LineUp(
        {{"Name"}, {"Type", true}, {"Type name"}, {"Precision", true}, {"Scale", true}, {"Nullable"}}, rows));
}

void Describe(const StatementArguments& arguments) {
    const CString statement = ReadStatement(arguments.statement);
    Session session(arguments.connection);
    const auto recordset = service::OpenStatement(session.GetDatabase(), statement);
    const std::vector<CODBCFieldInfo> columns = service::DescribeResult(*recordset);
    if (arguments.json)
        WriteDescriptionJson(columns);
    else
        WriteDescription(columns);
}

Rows ReadRows(_CRecordsetEx& recordset, std::size_t columns, int limit) {
    Rows rows;
    if (columns == 0)
        return rows;
    for (; limit > 0 && !recordset.IsBOF() && !recordset.IsEOF(); --limit) {
        std::vector<CString>& row = rows.emplace_back(columns);
        for (std::size_t i = 0; i < columns; ++i)
            recordset.ReadFieldText(static_cast<short>(i), row[i]);
        if (limit > 1)
            recordset.MoveNext();
    }
    return rows;
}

bool IsNumber(const CODBCFieldInfo& info) {
    return info.m_nSQLType >= 2 && info.m_nSQLType <= 8;
}

void WriteRows(const std::vector<CODBCFieldInfo>& columns, const Rows& rows) {
    std::vector<TableColumn> titles;
    for (const CODBCFieldInfo& info : columns)
        titles.push_back({Shown(info.m_strName), IsNumber(info)});
    std::vector<std::vector<std::string>> texts;
    for (const std::vector<CString>& row : rows) {
        std::vector<std::string>& line = texts.emplace_back();
        for (const CString& value : row)
            line.push_back(Shown(value));
    }
    WriteOutput(LineUp(titles, texts));
}

void WriteRowsJson(const std::vector<CODBCFieldInfo>& columns, const Rows& rows) {
    Json names = Json::array();
    for (const CODBCFieldInfo& info : columns)
        names.push_back(Utf8(info.m_strName));
    Json lines = Json::array();
    for (const std::vector<CString>& row : rows) {
        Json& line = lines.emplace_back(Json::array());
        for (const CString& value : row)
            line.push_back(Utf8(value));
    }
    WriteJson({{"columns", names}, {"rows", lines}});
}

void Preview(const StatementArguments& arguments) {
    const CString statement = ReadStatement(arguments.statement);
    Session session(arguments.connection);
    const auto recordset = service::OpenStatement(session.GetDatabase(), statement);
    const std::vector<CODBCFieldInfo> columns = service::DescribeResult(*recordset);
    const Rows rows = ReadRows(*recordset, columns.size(), arguments.rows);
    if (arguments.json)
        WriteRowsJson(columns, rows);
    else if (!columns.empty())
        WriteRows(columns, rows);
    else
        WriteMessage("the statement was executed; it has no result columns");
}

// What distinguishes the commands; each has arguments of its own, since the environment variable is applied
// to all commands, called or not.
struct StatementCommand {
    const char* name;
    const char* description;
    const char* json;
    const char* help;
    void (*run)(const StatementArguments&);
};

constexpr StatementCommand kCheck = {
    "check", "Execute a statement and tell whether the data source accepts it",
    "As {\"ok\": true}, or {\"ok\": false, \"state\": ..., \"message\": ...} with exit code 1",
    "The statement is really executed. Interrupted, it may go on at the server.\n\n"
    "Example:\n  kortavin check -c atlas.db \"SELECT * FROM Cities\"",
    Check};
constexpr StatementCommand kDescribe = {"describe", "Describe the result columns of a statement",
                                        "As a JSON array of objects",
                                        "The statement is really executed. Types are ODBC 2 type codes.\n\n"
                                        "Example:\n  kortavin describe -c atlas.db -f big.SQL",
                                        Describe};
constexpr StatementCommand kPreview = {
    "preview", "Show the first rows of a statement's result",
    "As {\"columns\": [...], \"rows\": [[...], ...]}, every value a text",
    "NULL shows as an empty text; control characters are escaped in the table.\n\n"
    "Example:\n  kortavin preview -c atlas.db -n 5 \"SELECT Name, 中文名 FROM Cities\"",
    Preview};

std::shared_ptr<StatementArguments> AddStatementCommand(CLI::App& app, const StatementCommand& kind) {
    const auto arguments = std::make_shared<StatementArguments>();
    CLI::App* command = app.add_subcommand(kind.name, kind.description);
    AddConnectionOption(*command, arguments->connection, kind.help);
    AddStatementSource(*command, arguments->statement);
    command->add_flag("--json", arguments->json, kind.json);
    command->callback([arguments, run = kind.run] { run(*arguments); });
    return arguments;
}

}  // namespace

void AddStatementCommands(CLI::App& app) {
    AddStatementCommand(app, kCheck);
    AddStatementCommand(app, kDescribe);
    const auto arguments = AddStatementCommand(app, kPreview);
    app.get_subcommand(kPreview.name)
        ->add_option("-n,--rows", arguments->rows, "At most so many rows, up to a million; 10 unless told")
        ->check(CLI::Range(0, 1'000'000).description(""))
        ->type_name("COUNT");
}

}  // namespace kortavin::cli
