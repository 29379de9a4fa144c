// Makes the table that the export is measured on: integers, doubles, short and long texts with Chinese,
// dates, timestamps, numerics and NULLs. The rows are the same in every database.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "kortavin/db/geodatabase.h"

namespace {

constexpr const char* kTable =
    "CREATE TABLE measurements (id integer, reading double precision, station varchar(40), remark "
    "varchar(400), "
    "day date, taken timestamp, amount numeric(12,2), comment varchar(60))";

// `n` counts the rows from 1; `||` joins texts in both dialects.
constexpr const char* kColumns =
    "n, n * 0.37 + 0.125, 'Station ' || n || ' 观测站', "
    "'水文观测记录第' || n || '条: the level was read at the gauge below the bridge, "
    "上游降雨后水位略有上升, and the reading was confirmed by a second "
    "observer on the opposite bank.', "
    "'2024-03-' || CASE WHEN n % 28 < 9 THEN '0' ELSE '' END || (n % 28 + 1), "
    "'2024-03-15 12:' || CASE WHEN n % 60 < 10 THEN '0' ELSE '' END || (n % 60) || ':00', "
    "n % 100000 * 0.01, CASE WHEN n % 3 = 0 THEN NULL ELSE 'note ' || n END";

std::string Fill(bool isSqlite, long rows) {
    const std::string count = std::to_string(rows);
    if (isSqlite)
        return "INSERT INTO measurements WITH RECURSIVE numbers(n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM "
               "numbers WHERE n < " +
               count + ") SELECT " + kColumns + " FROM numbers";
    std::string columns = kColumns;
    const auto cast = [&columns](const std::string& before, const std::string& after) {
        columns.replace(columns.find(before), before.size(), after);
    };
    cast("'2024-03-' ||", "('2024-03-' ||");
    cast("(n % 28 + 1),", "(n % 28 + 1))::date,");
    cast("'2024-03-15 12:'", "('2024-03-15 12:'");
    cast("':00',", "':00')::timestamp,");
    return "INSERT INTO measurements SELECT " + columns + " FROM generate_series(1, " + count +
           ") AS numbers(n)";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: benchdata CONNECTION-STRING ROWS\n", stderr);
        return 2;
    }
    try {
        CGeoDatabase database;
        database.Open(*CString::FromUtf8(argv[1]));
        const bool isSqlite = std::string(argv[1]).find("SQLite") != std::string::npos;
        database.ExecuteSQL("DROP TABLE IF EXISTS measurements");
        database.ExecuteSQL(kTable);
        database.ExecuteSQL(*CString::FromUtf8(Fill(isSqlite, std::atol(argv[2]))));
    } catch (const CException& error) {
        std::fprintf(stderr, "%s\n", kortavin::base::GbkForDisplay(error.GetErrorMessage().View()).c_str());
        return 1;
    }
    return 0;
}
