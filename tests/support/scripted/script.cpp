#include "script.h"

namespace kortavin::testing {

Fault& Fault::At(int which) {
    argument = which;
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

Fault NoData() {
    Fault fault;
    fault.code = 100;
    return fault;
}

Fault Warning(std::string state, std::string message) {
    Fault warning = Error(std::move(state), std::move(message));
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

Answer& Answer::AddColumn(std::string name, int type, long long precision) {
    columns.push_back({std::move(name), type, precision});
    return *this;
}

Answer& Answer::AddRow(std::vector<Value> values) {
    rows.push_back({std::move(values), std::nullopt});
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

}  // namespace kortavin::testing
