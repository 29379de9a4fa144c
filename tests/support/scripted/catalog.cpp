#include "handles.h"

namespace kortavin::testing {
namespace {

// The arguments as the log shows them: NULL for a null pointer, otherwise in quotes.
std::string Shown(std::initializer_list<std::optional<std::string>> arguments) {
    std::string shown;
    for (const auto& argument : arguments)
        shown += (shown.empty() ? "" : ", ") + (argument ? '\'' + *argument + '\'' : std::string("NULL"));
    return shown;
}

}  // namespace

SCRIPTED_EXPORT SQLRETURN SQL_API SQLTables(SQLHSTMT raw, SQLCHAR* catalog, SQLSMALLINT catalogLength,
                                            SQLCHAR* schema, SQLSMALLINT schemaLength, SQLCHAR* table,
                                            SQLSMALLINT tableLength, SQLCHAR* types,
                                            SQLSMALLINT typesLength) {
    const std::string asked = Shown({Argument(catalog, catalogLength), Argument(schema, schemaLength),
                                     Argument(table, tableLength), Argument(types, typesLength)});
    return Enter<Statement>(raw, {"SQLTables", asked}, [](Statement& statement) {
        return statement.Execute(statement.connection.script.tables);
    });
}

SCRIPTED_EXPORT SQLRETURN SQL_API SQLColumns(SQLHSTMT raw, SQLCHAR* catalog, SQLSMALLINT catalogLength,
                                             SQLCHAR* schema, SQLSMALLINT schemaLength, SQLCHAR* table,
                                             SQLSMALLINT tableLength, SQLCHAR* column,
                                             SQLSMALLINT columnLength) {
    const std::string asked = Shown({Argument(catalog, catalogLength), Argument(schema, schemaLength),
                                     Argument(table, tableLength), Argument(column, columnLength)});
    return Enter<Statement>(raw, {"SQLColumns", asked}, [](Statement& statement) {
        return statement.Execute(statement.connection.script.columns);
    });
}

}  // namespace kortavin::testing
