#include "call.h"

namespace kortavin::testing {

SQLRETURN Statement::Execute(Answer* scripted, const std::string& asked) {
    Close();
    if (scripted == nullptr)
        return Fail("HY000", "nothing is scripted for " + asked);
    if (!scripted->fault)
        return Show(scripted);
    const Fault& fault = *scripted->fault;
    connection.dead = fault.connectionDies;
    if (fault.code == SQL_SUCCESS_WITH_INFO)
        Show(scripted);
    return Obey(fault);
}

SQLRETURN Statement::Show(Answer* result) {
    Close();
    answer = result;
    return SQL_SUCCESS;
}

void Statement::Close() {
    answer = nullptr;
    row = 0;
    repetition = 0;
    onRow = false;
}

int Statement::Delay(const std::string& function) const {
    // unixODBC never leaves its waiting state when SQLFetch ends with anything but a row.
    if (function == "SQLFetch" && !RowComes())
        return 0;
    static const std::set<std::string> everywhere = {"SQLExecDirect", "SQLPrepare", "SQLExecute", "SQLTables",
                                                     "SQLColumns",    "SQLFetch",   "SQLGetData"};
    int times = 0;
    for (const auto& [name, delay] : connection.script.stillExecuting) {
        if (name == function || (name == "*" && everywhere.contains(function)))
            times = delay;
    }
    return times;
}

bool Statement::StillExecuting(const std::string& function) {
    if (!pending || pending->first != function)
        pending = {function, Delay(function)};
    if (pending->second-- > 0)
        return true;
    pending.reset();
    return false;
}

namespace {

SQLRETURN ExecuteText(Statement& statement, const std::string& sql) {
    Connection& connection = statement.connection;
    return statement.Execute(connection.Find(connection.script.statements, sql), sql);
}

SQLRETURN Describe(Statement& statement, SQLUSMALLINT number, SQLPOINTER name, SQLSMALLINT size,
                   SQLSMALLINT* length, SQLSMALLINT* type, SQLULEN* precision, SQLSMALLINT* scale,
                   SQLSMALLINT* nullable) {
    if (statement.answer == nullptr || number < 1 || number > statement.answer->columns.size())
        return statement.Fail("07009", "there is no such column");
    const Column& column = statement.answer->columns[number - 1u];
    const auto put = [](auto* place, auto value) {
        if (place)
            *place = static_cast<std::remove_pointer_t<decltype(place)>>(value);
    };
    put(type, column.type);
    put(precision, column.precision);
    put(scale, column.scale);
    put(nullable, column.nullable);
    if (CopyText(column.name, name, size, length))
        return SQL_SUCCESS;
    statement.Fail("01004", "the name was cut");
    return SQL_SUCCESS_WITH_INFO;
}

}  // namespace

SCRIPTED_EXPORT SQLRETURN SQL_API SQLExecDirect(SQLHSTMT raw, SQLCHAR* text, SQLINTEGER length) {
    const std::string sql = Argument(text, length).value_or("");
    return Enter<Statement>(raw, {"SQLExecDirect", sql},
                            [&sql](Statement& statement) { return ExecuteText(statement, sql); });
}

// Nothing is looked up before the execution, so that is where a statement's own failure shows.
SCRIPTED_EXPORT SQLRETURN SQL_API SQLPrepare(SQLHSTMT raw, SQLCHAR* text, SQLINTEGER length) {
    const std::string sql = Argument(text, length).value_or("");
    return Enter<Statement>(raw, {"SQLPrepare", sql}, [&sql](Statement& statement) {
        statement.prepared = sql;
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLExecute(SQLHSTMT raw) {
    return Enter<Statement>(raw, {"SQLExecute"},
                            [](Statement& statement) { return ExecuteText(statement, statement.prepared); });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLSetStmtAttr(SQLHSTMT raw, SQLINTEGER attribute, SQLPOINTER value,
                                                 SQLINTEGER) {
    const auto number = reinterpret_cast<SQLLEN>(value);
    const Call call{"SQLSetStmtAttr", std::to_string(attribute) + ", " + std::to_string(number), attribute};
    return Enter<Statement>(raw, call, [=](Statement& statement) -> SQLRETURN {
        if (attribute == SQL_ATTR_ROW_ARRAY_SIZE && number != 1)
            return statement.Fail("HYC00", "one row a fetch");
        return SQL_SUCCESS;
    });
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
        raw, {"SQLDescribeCol", std::to_string(number), number}, [=](Statement& statement) {
            return Describe(statement, number, name, size, length, type, precision, scale, nullable);
        });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLRowCount(SQLHSTMT raw, SQLLEN* count) {
    return Enter<Statement>(raw, {"SQLRowCount"}, [count](Statement& statement) {
        *count = statement.answer ? static_cast<SQLLEN>(statement.answer->rowCount) : -1;
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLMoreResults(SQLHSTMT raw) {
    return Enter<Statement>(raw, {"SQLMoreResults"}, [](Statement& statement) -> SQLRETURN {
        if (statement.answer == nullptr || statement.answer->more.empty())
            return SQL_NO_DATA;
        return statement.Execute(&statement.answer->more.front(), "another result");
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLCloseCursor(SQLHSTMT raw) {
    return Enter<Statement>(raw, {"SQLCloseCursor"}, [](Statement& statement) {
        statement.Close();
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLCancel(SQLHSTMT raw) {
    static_cast<Statement&>(*static_cast<Handle*>(raw)).pending.reset();
    return Enter<Statement>(raw, {"SQLCancel"}, [](Statement&) { return SQL_SUCCESS; });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLFreeStmt(SQLHSTMT raw, SQLUSMALLINT option) {
    const char* name = option == SQL_CLOSE ? "close" : option == SQL_UNBIND ? "unbind" : "reset parameters";
    return Enter<Statement>(raw, {"SQLFreeStmt", name}, [option](Statement& statement) {
        if (option == SQL_CLOSE)
            statement.Close();
        else if (option == SQL_UNBIND)
            statement.bindings.clear();
        return SQL_SUCCESS;
    });
}

}  // namespace kortavin::testing
