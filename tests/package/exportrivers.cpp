// Composes a statement and exports its rows: the sample's rivers, longest first, to rivers.csv.
#include <kortavin/base/codepage.h>
#include <kortavin/query/definition.h>
#include <kortavin/service/exportrows.h>
#include <kortavin/service/statement.h>

#include <iostream>

namespace service = kortavin::service;

int main() try {
    CGeoDatabase database;
    database.Open("Driver=SQLite3;Database=atlas.db;StepAPI=1");

    kortavin::query::QueryDefinition query;
    query.StoreTables("Rivers");
    query.StoreFields("Rivers.Name,Rivers.RoundedLengthKm");
    query.StoreOrder("Rivers.RoundedLengthKm DESC");
    const auto rows = service::OpenStatement(database, query.BuildSql());

    CFile file("rivers.csv", CFile::modeWrite | CFile::modeCreate);
    service::ExportRows(file, {service::ExportLayout::Comma, service::ExportQuote::Double, true}, *rows);
    file.Close();
    return 0;
} catch (const CException& error) {
    std::cerr << kortavin::base::GbkForDisplay(error.GetErrorMessage().View()) << '\n';
    return 1;
}
