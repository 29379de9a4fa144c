#pragma once

#include <list>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What the scripted driver answers, as plain values: a test builds them, the script file carries them, the
// driver obeys them. All texts are bytes and reach the application untouched.
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
    // So many calls still go well.
    int after = 0;
    // From here on everything on the connection answers 08S01, but handles can be freed and SQLDisconnect
    // works.
    bool connectionDies = false;

    Fault& At(int which);
    Fault& After(int calls);
    Fault& Also(std::string state, std::string message, int native = 0);
};

Fault Error(std::string state, std::string message, int native = 0);
Fault ErrorWithoutRecord();
Fault Warning(std::string state, std::string message, int native = 0);
Fault ConnectionDies();

// One value of a row: bytes, NULL, or neither and a fault; then nothing but a given indicator is written.
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
    // SQLGetData answers SQL_NO_DATA at once; a bound column keeps what its buffer held.
    static Value NoData();

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
    int times = 1;
};

struct Column {
    std::string name;
    int type = 12;
    long long precision = 0;
    int scale = 0;
    int nullable = 2;
};

// What an execution or a catalog function answers. Without columns there is no result set.
struct Answer {
    std::optional<std::string> key;
    std::optional<Fault> fault;
    std::vector<Column> columns;
    std::vector<Row> rows;
    std::vector<std::pair<std::string, Fault>> faults;
    long long rowCount = -1;
    std::list<Answer> more;

    Answer& AddColumn(std::string name, int type = 12, long long precision = 255, int scale = 0,
                      int nullable = 2);
    // Columns without a value are NULL; `times` makes many rows of one.
    Answer& AddRow(std::vector<Value> values, int times = 1);
    // SQLFetch answers the fault in the place of a row; the fetch after it goes on behind.
    Answer& FetchFails(Fault failure);
    // The executing function itself.
    Answer& Fails(Fault failure);
    // A function on this result, such as SQLDescribeCol; Fault::At gives the column.
    Answer& Fails(std::string function, Fault failure);
    Answer& Affects(long long rows);
    // The answer behind SQLMoreResults.
    Answer& Next();
};

struct Script {
    std::vector<std::pair<int, std::string>> infoTexts;
    std::vector<std::pair<int, long long>> infoNumbers;
    std::set<std::string> unsupported;
    std::vector<std::pair<std::string, Fault>> faults;
    std::vector<std::pair<std::string, int>> stillExecuting;
    std::list<Answer> statements;
    std::list<Answer> tables;
    std::list<Answer> columns;
};

std::string ToText(const Script& script);
// Throws std::exception if it isn't what ToText writes.
Script FromText(const std::string& text);

}  // namespace kortavin::testing
