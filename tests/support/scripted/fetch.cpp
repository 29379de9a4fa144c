#include <algorithm>

#include "handles.h"

namespace kortavin::testing {

// Whether the next SQLFetch will find a row that no script makes it fail on.
bool Statement::RowComes() const {
    if (answer == nullptr || nextRow >= answer->rows.size())
        return false;
    const Row& next = answer->rows[nextRow];
    return !next.fault && std::ranges::none_of(bindings, [&next](const auto& binding) {
        return binding.first <= next.values.size() && next.values[binding.first - 1u].fault;
    });
}

const Value& Statement::Current(SQLUSMALLINT column) const {
    static const Value null = Value::Null();
    const std::vector<Value>& values = answer->rows[nextRow - 1].values;
    return column <= values.size() ? values[column - 1u] : null;
}

SQLRETURN Statement::Fetch() {
    onRow = false;
    if (answer == nullptr || answer->columns.empty())
        return Fail("24000", "there is no result to fetch from");
    if (nextRow >= answer->rows.size())
        return SQL_NO_DATA;
    const Row& row = answer->rows[nextRow++];
    if (row.fault)
        return Obey(*this, connection, *row.fault);
    onRow = true;
    lastRead = 0;
    progress.assign(answer->columns.size(), {});
    return FillBindings();
}

// Behind the first value that fails, buffers keep what they held: nobody may rely on them after an error.
SQLRETURN Statement::FillBindings() {
    SQLRETURN result = SQL_SUCCESS;
    for (const auto& [column, target] : bindings) {
        Progress once;
        const SQLRETURN code = Deliver(*this, Current(column), once, target);
        if (code == SQL_ERROR)
            return code;
        if (code == SQL_SUCCESS_WITH_INFO)
            result = code;
    }
    return result;
}

// What SQL_GETDATA_EXTENSIONS doesn't announce is refused, as drivers do that don't announce it.
const char* Statement::Refusal(SQLUSMALLINT column) const {
    const int extensions = connection.script.getDataExtensions;
    if (!(extensions & SQL_GD_BOUND) && bindings.contains(column))
        return "the column is bound";
    if (!(extensions & SQL_GD_ANY_COLUMN) && !bindings.empty() && column < bindings.rbegin()->first)
        return "the column stands before the last bound one";
    if (!(extensions & SQL_GD_ANY_ORDER) && column < lastRead)
        return "a later column was read before";
    return nullptr;
}

SQLRETURN Statement::GetData(SQLUSMALLINT column, const Target& target) {
    if (!onRow)
        return Fail("24000", "the cursor is on no row");
    if (column < 1 || column > progress.size())
        return Fail("07009", "there is no such column");
    if (const char* refusal = Refusal(column))
        return Fail("07009", refusal);
    lastRead = column;
    return Deliver(*this, Current(column), progress[column - 1u], target);
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLFetch(SQLHSTMT raw) {
    return Enter<Statement>(raw, {"SQLFetch"}, [](Statement& statement) { return statement.Fetch(); });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLBindCol(SQLHSTMT raw, SQLUSMALLINT column, SQLSMALLINT type,
                                             SQLPOINTER buffer, SQLLEN size, SQLLEN* indicator) {
    return Enter<Statement>(raw, {"SQLBindCol", std::to_string(column), column}, [=](Statement& statement) {
        statement.bindings[column] = {type, buffer, size, indicator};
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetData(SQLHSTMT raw, SQLUSMALLINT column, SQLSMALLINT type,
                                             SQLPOINTER buffer, SQLLEN size, SQLLEN* indicator) {
    return Enter<Statement>(raw, {"SQLGetData", std::to_string(column), column}, [=](Statement& statement) {
        return statement.GetData(column, {type, buffer, size, indicator});
    });
}

}  // namespace kortavin::testing
