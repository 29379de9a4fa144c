#include <algorithm>

#include "call.h"

namespace kortavin::testing {

std::size_t Statement::NextRow() const {
    return onRow && repetition + 1 >= answer->rows[row].times ? row + 1 : row;
}

// Whether the next SQLFetch will find a row that no script makes it fail on.
bool Statement::RowComes() const {
    if (answer == nullptr || NextRow() >= answer->rows.size())
        return false;
    const Row& next = answer->rows[NextRow()];
    return !next.fault && std::ranges::none_of(bindings, [&next](const auto& binding) {
        return binding.first <= next.values.size() && next.values[binding.first - 1u].fault;
    });
}

const Value& Statement::Current(SQLUSMALLINT column) const {
    static const Value null = Value::Null();
    const std::vector<Value>& values = answer->rows[row].values;
    return column <= values.size() ? values[column - 1u] : null;
}

SQLRETURN Statement::Fetch() {
    if (answer == nullptr || answer->columns.empty())
        return Fail("24000", "there is no result to fetch from");
    const std::size_t next = NextRow();
    repetition = onRow && next == row ? repetition + 1 : 0;
    row = next;
    onRow = false;
    if (row >= answer->rows.size())
        return SQL_NO_DATA;
    if (const auto& fault = answer->rows[row].fault) {
        connection.dead = fault->connectionDies;
        ++row;
        return Obey(*fault);
    }
    onRow = true;
    lastRead = 0;
    progress.assign(answer->columns.size(), {});
    return FillBindings();
}

// Behind the first value that fails, buffers keep what they held: nobody may rely on them after an error.
SQLRETURN Statement::FillBindings() {
    SQLRETURN result = SQL_SUCCESS;
    for (const auto& [column, target] : bindings) {
        if (column > answer->columns.size())
            continue;
        Progress once;
        const std::size_t known = records.size();
        const SQLRETURN code = Deliver(*this, Current(column), once, target);
        for (std::size_t i = known; i < records.size(); ++i)
            records[i].column = column;
        if (code == SQL_ERROR)
            return code;
        if (code == SQL_SUCCESS_WITH_INFO)
            result = code;
    }
    return result;
}

// What SQL_GETDATA_EXTENSIONS doesn't announce is refused, as drivers do that don't announce it.
const char* Statement::Refusal(SQLUSMALLINT column) const {
    const long long extensions = connection.Number(SQL_GETDATA_EXTENSIONS);
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
    const std::string how = std::to_string(column) + ", type " + std::to_string(type) + ", " +
                            (buffer ? "size " + std::to_string(size) : std::string("unbound"));
    return Enter<Statement>(raw, {"SQLBindCol", how, column}, [=](Statement& statement) {
        if (buffer)
            statement.bindings[column] = {type, buffer, size, indicator};
        else
            statement.bindings.erase(column);
        return SQL_SUCCESS;
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLGetData(SQLHSTMT raw, SQLUSMALLINT column, SQLSMALLINT type,
                                             SQLPOINTER buffer, SQLLEN size, SQLLEN* indicator) {
    const std::string how =
        std::to_string(column) + ", type " + std::to_string(type) + ", size " + std::to_string(size);
    return Enter<Statement>(raw, {"SQLGetData", how, column}, [=](Statement& statement) {
        return statement.GetData(column, {type, buffer, size, indicator});
    });
}

}  // namespace kortavin::testing
