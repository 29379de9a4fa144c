// A host as small as it can be: it composes a statement and exports its rows to memory.
#include <kortavin/query/definition.h>
#include <kortavin/service/querysql.h>

#include <cstdio>

int main() {
    CGeoDatabase database;
    database.Open("Driver=SQLite3;Database=:memory:;StepAPI=1");
    database.ExecuteSQL("CREATE TABLE Roads (Name varchar(20), Width integer)");
    database.ExecuteSQL("INSERT INTO Roads VALUES ('Ring', 12)");

    kortavin::query::QueryDefinition query;
    query.StoreTables("Roads");
    query.StoreFields("Roads.Name");
    CQuerySql service(&database);
    CMemFile rows;
    if (service.QueryDataToFile(&rows, 1, 2, 1, query.BuildSql()) != 1)
        return 1;
    const auto text = rows.GetContent();
    std::printf("%.*s", static_cast<int>(text.size()), text.data());
    return text == "'Name'\r\n'Ring'\r\n" ? 0 : 1;
}
