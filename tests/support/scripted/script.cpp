#include "script.h"

namespace kortavin::testing {

Fault& Fault::At(int which) {
    argument = which;
    return *this;
}

Fault& Fault::After(int calls) {
    after = calls;
    return *this;
}

Fault& Fault::Also(std::string state, std::string message, int native) {
    diagnostics.push_back({std::move(state), std::move(message), native});
    return *this;
}

Fault Error(std::string state, std::string message, int native) {
    return Fault().Also(std::move(state), std::move(message), native);
}

Fault ErrorWithoutRecord() {
    return {};
}

Fault Warning(std::string state, std::string message, int native) {
    Fault warning = Error(std::move(state), std::move(message), native);
    warning.code = 1;
    return warning;
}

Fault ConnectionDies() {
    Fault death = Error("08S01", "Communication link failure");
    death.connectionDies = true;
    return death;
}

Value Value::Null() {
    Value value;
    value.null = true;
    return value;
}

Value Value::NoData() {
    Fault noData;
    noData.code = 100;
    return Value(noData);
}

Value& Value::Pieces(int size) {
    pieceSize = size;
    return *this;
}

Value& Value::NoTotal() {
    knowsTotal = false;
    return *this;
}

Value& Value::Indicator(long long reported) {
    indicator = reported;
    return *this;
}

Value& Value::NoIndicator() {
    writesIndicator = false;
    return *this;
}

Value& Value::But(Fault failure) {
    fault = std::move(failure);
    dataDespiteFault = true;
    return *this;
}

Value& Value::FailsInPiece(int piece, Fault failure) {
    fault = std::move(failure);
    faultPiece = piece;
    return *this;
}

Answer& Answer::AddColumn(std::string name, int type, long long precision, int scale, int nullable) {
    columns.push_back({std::move(name), type, precision, scale, nullable});
    return *this;
}

Answer& Answer::AddRow(std::vector<Value> values, int times) {
    rows.push_back({std::move(values), std::nullopt, times});
    return *this;
}

Answer& Answer::FetchFails(Fault failure) {
    rows.push_back({{}, std::move(failure)});
    return *this;
}

Answer& Answer::Fails(Fault failure) {
    fault = std::move(failure);
    return *this;
}

Answer& Answer::Fails(std::string function, Fault failure) {
    faults.emplace_back(std::move(function), std::move(failure));
    return *this;
}

Answer& Answer::Affects(long long affected) {
    rowCount = affected;
    return *this;
}

Answer& Answer::Next() {
    return more.emplace_back();
}

}  // namespace kortavin::testing
