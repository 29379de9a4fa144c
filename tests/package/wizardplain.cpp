// A host without a toolkit of its own: it runs the query wizard on a database, and prints the rows of the
// statement.
#include <kortavin/base/codepage.h>
#include <kortavin/service/querysql.h>
#include <kortavin/service/statement.h>

#include <iostream>

using kortavin::base::GbkForDisplay;

void PrintRows(CGeoDatabase& database, const CString& statement) {
    const auto rows = kortavin::service::OpenStatement(database, statement);
    for (; !rows->IsEOF(); rows->MoveNext()) {
        for (short i = 0; i < rows->GetODBCFieldCount(); ++i) {
            CString value;
            rows->ReadFieldText(i, value);
            std::cout << (i > 0 ? "\t" : "") << GbkForDisplay(value.View());
        }
        std::cout << '\n';
    }
}

int main(int argc, char** argv) try {
    CGeoDatabase database;
    database.Open(CString::FromUtf8(argc > 1 ? argv[1] : "").value_or(CString()));
    CQuerySql service(&database);
    CString statement;
    if (service.ConstructQuery(statement) != 1)
        return 0;  // the user cancelled
    std::cerr << GbkForDisplay(statement.View()) << '\n';
    PrintRows(database, statement);
    return 0;
} catch (const CException& error) {
    std::cerr << GbkForDisplay(error.GetErrorMessage().View()) << '\n';
    return 1;
}
