// The peers that the export is measured against: the least code that turns a result into comma-separated
// text, once with SQLGetData for every value and once with bound columns, one row a fetch. Neither converts
// texts nor looks after faults.
#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr SQLLEN kValueSize = 1024;
constexpr std::size_t kOutputSize = 1 << 20;

[[noreturn]] void Fail(SQLSMALLINT type, SQLHANDLE handle) {
    SQLCHAR state[6] = "", message[512] = "";
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRec(type, handle, 1, state, &native, message, sizeof message, &length);
    std::fprintf(stderr, "%s %s\n", state, message);
    std::exit(1);
}

SQLHDBC Connect(const char* connectionString) {
    SQLHENV environment;
    SQLHDBC connection;
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &environment);
    SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC2), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment, &connection);
    auto* text = reinterpret_cast<SQLCHAR*>(const_cast<char*>(connectionString));
    if (!SQL_SUCCEEDED(
            SQLDriverConnect(connection, nullptr, text, SQL_NTS, nullptr, 0, nullptr, SQL_DRIVER_NOPROMPT)))
        Fail(SQL_HANDLE_DBC, connection);
    return connection;
}

void WriteValue(const char* value, SQLLEN length, bool isLast) {
    if (length > 0)
        std::fwrite(value, 1, static_cast<std::size_t>(length), stdout);
    std::fwrite(isLast ? "\r\n" : ",", 1, isLast ? 2 : 1, stdout);
}

void RunWithGetData(SQLHSTMT statement, SQLSMALLINT columns) {
    std::vector<char> value(kValueSize);
    while (SQL_SUCCEEDED(SQLFetch(statement))) {
        for (SQLSMALLINT i = 1; i <= columns; ++i) {
            SQLLEN length = 0;
            if (!SQL_SUCCEEDED(SQLGetData(statement, static_cast<SQLUSMALLINT>(i), SQL_C_CHAR, value.data(),
                                          kValueSize, &length)))
                Fail(SQL_HANDLE_STMT, statement);
            WriteValue(value.data(), length, i == columns);
        }
    }
}

// Buffers that fit the columns, as a careful programmer would size them.
SQLLEN BufferSize(SQLHSTMT statement, SQLSMALLINT column) {
    SQLCHAR name[256];
    SQLSMALLINT length, type, scale, nullable;
    SQLULEN precision = 0;
    SQLDescribeCol(statement, static_cast<SQLUSMALLINT>(column), name, sizeof name, &length, &type,
                   &precision, &scale, &nullable);
    const bool isText = type == SQL_CHAR || type == SQL_VARCHAR;
    if (type == SQL_LONGVARCHAR || (isText && precision > 255))
        return kValueSize;
    return isText ? static_cast<SQLLEN>(precision) * 4 + 1 : 40;
}

void RunBound(SQLHSTMT statement, SQLSMALLINT columns) {
    std::vector<std::unique_ptr<char[]>> values;
    std::vector<SQLLEN> lengths(static_cast<std::size_t>(columns));
    for (SQLSMALLINT i = 1; i <= columns; ++i) {
        const SQLLEN size = BufferSize(statement, i);
        values.push_back(std::make_unique<char[]>(static_cast<std::size_t>(size)));
        SQLBindCol(statement, static_cast<SQLUSMALLINT>(i), SQL_C_CHAR, values.back().get(), size,
                   &lengths[static_cast<std::size_t>(i - 1)]);
    }
    while (SQL_SUCCEEDED(SQLFetch(statement)))
        for (std::size_t i = 0; i < values.size(); ++i)
            WriteValue(values[i].get(), lengths[i], i + 1 == values.size());
}

// The names of all tables and views, as often as given, on a new connection each time; prints the median
// milliseconds without the connecting.
void TimeTables(const char* connectionString, int runs) {
    std::vector<double> times;
    std::vector<char> name(kValueSize);
    for (int run = 0; run < runs; ++run) {
        SQLHSTMT statement;
        SQLHDBC connection = Connect(connectionString);
        SQLAllocHandle(SQL_HANDLE_STMT, connection, &statement);
        const auto start = std::chrono::steady_clock::now();
        std::string types = "'TABLE','VIEW'";
        if (!SQL_SUCCEEDED(SQLTables(statement, nullptr, 0, nullptr, 0, nullptr, 0,
                                     reinterpret_cast<SQLCHAR*>(types.data()), SQL_NTS)))
            Fail(SQL_HANDLE_STMT, statement);
        SQLLEN length = 0;
        while (SQL_SUCCEEDED(SQLFetch(statement)))
            SQLGetData(statement, 3, SQL_C_CHAR, name.data(), kValueSize, &length);
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        SQLFreeHandle(SQL_HANDLE_STMT, statement);
        SQLDisconnect(connection);
    }
    std::sort(times.begin(), times.end());
    std::printf("%.3f\n", times[times.size() / 2]);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fputs("usage: plainloop getdata|bound CONNECTION-STRING SQL | tables CONNECTION-STRING RUNS\n",
                   stderr);
        return 2;
    }
    std::vector<char> output(kOutputSize);
    std::setvbuf(stdout, output.data(), _IOFBF, output.size());
    if (std::strcmp(argv[1], "tables") == 0) {
        TimeTables(argv[2], std::atoi(argv[3]));
        return std::fflush(stdout) == 0 ? 0 : 1;
    }
    SQLHSTMT statement;
    SQLAllocHandle(SQL_HANDLE_STMT, Connect(argv[2]), &statement);
    if (!SQL_SUCCEEDED(SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(argv[3]), SQL_NTS)))
        Fail(SQL_HANDLE_STMT, statement);
    SQLSMALLINT columns = 0;
    SQLNumResultCols(statement, &columns);
    if (std::strcmp(argv[1], "bound") == 0)
        RunBound(statement, columns);
    else
        RunWithGetData(statement, columns);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
