#include <set>

#include "handles.h"

namespace kortavin::testing {

SQLRETURN Statement::Execute(const Answer& scripted) {
    if (!scripted.fault || scripted.fault->code == SQL_SUCCESS_WITH_INFO)
        answer = &scripted;
    return scripted.fault ? Obey(*this, connection, *scripted.fault) : SQL_SUCCESS;
}

bool Statement::MayTakeTime(const std::string& function) const {
    static const std::set<std::string> functions = {"SQLExecDirect", "SQLTables", "SQLColumns", "SQLGetData"};
    // unixODBC never leaves its waiting state when SQLFetch ends with anything but a row.
    return functions.contains(function) || (function == "SQLFetch" && RowComes());
}

bool Statement::StillExecuting(const Call& call) {
    if (!pending)
        pending = MayTakeTime(call.function) ? connection.script.stillExecuting : 0;
    if (--*pending >= 0)
        return true;
    pending.reset();
    return false;
}

namespace {

SQLRETURN ExecuteText(Statement& statement, const std::string& sql) {
    const auto& statements = statement.connection.script.statements;
    const auto found = statements.find(sql);
    return found != statements.end() ? statement.Execute(found->second)
                                     : statement.Fail("HY000", "nothing is scripted for " + sql);
}

}  // namespace

SCRIPTED_EXPORT SQLRETURN SQL_API SQLExecDirect(SQLHSTMT raw, SQLCHAR* text, SQLINTEGER length) {
    const std::string sql = Argument(text, length).value_or("");
    return Enter<Statement>(raw, {"SQLExecDirect", sql},
                            [&sql](Statement& statement) { return ExecuteText(statement, sql); });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT raw, SQLINTEGER attribute, SQLPOINTER value,
                                                 SQLINTEGER) {
    const auto number = reinterpret_cast<SQLLEN>(value);
    const Call call{"SQLSetStmtAttr", std::to_string(attribute) + ", " + std::to_string(number), attribute};
    return Enter<Statement>(raw, call, [](Statement&) { return SQL_SUCCESS; });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLNumResultCols(SQLHSTMT raw, SQLSMALLINT* count) {
    return Enter<Statement>(raw, {"SQLNumResultCols"}, [count](Statement& statement) {
        *count = statement.answer ? static_cast<SQLSMALLINT>(statement.answer->columns.size()) : 0;
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLDescribeCol(SQLHSTMT raw, SQLUSMALLINT number, SQLCHAR* name,
                                                 SQLSMALLINT size, SQLSMALLINT* length, SQLSMALLINT* type,
                                                 SQLULEN* precision, SQLSMALLINT* scale,
                                                 SQLSMALLINT* nullable) {
    return Enter<Statement>(
        raw, {"SQLDescribeCol", std::to_string(number), number}, [=](Statement& statement) -> SQLRETURN {
            if (statement.answer == nullptr || number < 1 || number > statement.answer->columns.size())
                return statement.Fail("07009", "there is no such column");
            const Column& column = statement.answer->columns[number - 1u];
            *type = static_cast<SQLSMALLINT>(column.type);
            *precision = static_cast<SQLULEN>(column.precision);
            *scale = 0;
            *nullable = SQL_NULLABLE_UNKNOWN;
            return CopyText(column.name, name, size, length);
        });
}

}  // namespace kortavin::testing
