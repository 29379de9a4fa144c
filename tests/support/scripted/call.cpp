#include "call.h"

namespace kortavin::testing {
namespace {

const Fault* Next(std::vector<std::pair<std::string, Fault>>& faults, const Call& call) {
    for (auto& [function, fault] : faults) {
        const bool meant = function == call.function && (!fault.argument || fault.argument == call.argument);
        if (meant && fault.after-- <= 0) {
            fault.after = 0;
            return &fault;
        }
    }
    return nullptr;
}

}  // namespace

Connection& ConnectionOf(Connection& connection) {
    return connection;
}

Connection& ConnectionOf(Statement& statement) {
    return statement.connection;
}

bool StillExecuting(Connection&, const Call&) {
    return false;
}

bool StillExecuting(Statement& statement, const Call& call) {
    return statement.StillExecuting(call.function);
}

const Fault* FindFault(Connection& connection, const Call& call) {
    return Next(connection.script.faults, call);
}

const Fault* FindFault(Statement& statement, const Call& call) {
    const Fault* ofResult = statement.answer ? Next(statement.answer->faults, call) : nullptr;
    return ofResult ? ofResult : FindFault(statement.connection, call);
}

void LogCall(Connection& connection, const Call& call, bool stillExecuting) {
    std::string line = call.function;
    if (!call.arguments.empty())
        line += ' ' + call.arguments;
    connection.log.Line(stillExecuting ? line + " (still executing)" : line);
}

}  // namespace kortavin::testing
