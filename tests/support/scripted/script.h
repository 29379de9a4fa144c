#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What the scripted driver answers, as plain values: a test builds them and the driver obeys them. All texts
// are bytes and reach the application untouched.
namespace kortavin::testing {

struct Diagnostic {
    std::string state;
    std::string message;
    int native = 0;
};

// A scripted misbehaviour of one function or value. Without diagnostics the driver answers its code and owns
// up to nothing.
struct Fault {
    std::vector<Diagnostic> diagnostics;
    // The return code. SQL_SUCCESS_WITH_INFO (1): the work is done and the diagnostics come on top.
    int code = -1;
    // Only calls about this column, SQLGetInfo type or attribute; otherwise all of them.
    std::optional<int> argument;
    // From here on everything on the connection answers 08S01, but handles can be freed and SQLDisconnect
    // works.
    bool connectionDies = false;

    Fault& At(int which);
    Fault& Also(std::string state, std::string message, int native = 0);
};

Fault Error(std::string state, std::string message, int native = 0);
Fault ErrorWithoutRecord();
Fault NoData();
Fault Warning(std::string state, std::string message);
Fault ConnectionDies();

// By the driver's name for the function.
using FunctionFaults = std::vector<std::pair<std::string, Fault>>;

// One value of a row: bytes, NULL, or neither and a fault; then nothing but a given indicator is written. A
// value with the fault NoData leaves a bound buffer as it was.
struct Value {
    std::optional<std::string> bytes;
    bool null = false;
    std::optional<long long> indicator;
    bool writesIndicator = true;
    // At most so many bytes a call, whatever buffer is offered; 0: as many as fit.
    int pieceSize = 0;
    bool knowsTotal = true;
    std::optional<Fault> fault;
    int faultPiece = 1;
    bool dataDespiteFault = false;

    Value() = default;
    Value(std::string_view text) : bytes(text) {}
    Value(const std::string& text) : bytes(text) {}
    Value(const char* text) : bytes(text) {}
    Value(Fault failure) : fault(std::move(failure)) {}

    static Value Null();

    Value& Pieces(int size);
    // The indicator of an unfinished piece is SQL_NO_TOTAL, not the length of the rest.
    Value& NoTotal();
    Value& Indicator(long long reported);
    Value& NoIndicator();
    // The data is delivered and the fault is answered all the same.
    Value& But(Fault failure);
    // SQLGetData goes well until its call number `piece` for this value, which delivers nothing, nor do later
    // ones.
    Value& FailsInPiece(int piece, Fault failure);
};

struct Row {
    std::vector<Value> values;
    std::optional<Fault> fault;
};

struct Column {
    std::string name;
    int type = 12;
    long long precision = 0;
};

// What an execution or a catalog function answers. Without columns there is no result set.
struct Answer {
    std::optional<Fault> fault;  // of the executing function itself
    std::vector<Column> columns;
    std::vector<Row> rows;
    FunctionFaults faults;  // of functions on this result, such as SQLDescribeCol

    Answer& AddColumn(std::string name, int type = 12, long long precision = 255);
    // Columns without a value are NULL.
    Answer& AddRow(std::vector<Value> values);
    // SQLFetch answers the fault in the place of a row; the fetch after it goes on behind.
    Answer& FetchFails(Fault failure);
    Answer& Fails(Fault failure);
    Answer& Fails(std::string function, Fault failure);
};

struct Log {
    // Such as "SQLTables NULL, NULL, NULL, 'TABLE'" or "SQLSetStmtAttr 0, 30" (attribute, value); calls that
    // were answered with SQL_STILL_EXECUTING are left out.
    std::vector<std::string> calls;
    int openStatements = 0;  // also when their connection was closed
    int openConnections = 0;
};

struct Script {
    std::string driverName = "libscripteddriver.so";
    std::string dbmsName = "Scripted";
    // The driver refuses SQLGetData where this doesn't announce it. 15: any column, in any order, bound ones
    // too.
    int getDataExtensions = 15;
    bool hasCatalogFunctions = true;
    // Each SQLExecDirect, SQLTables, SQLColumns, SQLGetData, and SQLFetch before a row, is answered with so
    // many SQL_STILL_EXECUTING at first.
    int stillExecuting = 0;
    // In those of SQLDriverConnect, %CONNECTION% becomes the connection string.
    FunctionFaults faults;
    std::map<std::string, Answer> statements;
    Answer tables;
    Answer columns;
    Log log;
};

}  // namespace kortavin::testing
