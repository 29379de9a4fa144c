#pragma once

#include <exception>

#include "handles.h"

namespace kortavin::testing {

// What the log tells of a call, and what its faults are looked up by.
struct Call {
    std::string function;
    std::string arguments = {};
    std::optional<int> argument = {};
};

Connection& ConnectionOf(Connection& connection);
Connection& ConnectionOf(Statement& statement);
bool StillExecuting(Connection& connection, const Call& call);
bool StillExecuting(Statement& statement, const Call& call);
// The fault that this call runs into, if any; counts the calls that still go well.
const Fault* FindFault(Connection& connection, const Call& call);
const Fault* FindFault(Statement& statement, const Call& call);
void LogCall(Connection& connection, const Call& call, bool stillExecuting);

template <class Owner>
SQLRETURN Answered(Owner& handle, const Call& call, auto work) {
    LogCall(ConnectionOf(handle), call, false);
    if (ConnectionOf(handle).dead)
        return handle.Fail("08S01", "Communication link failure");
    const Fault* fault = FindFault(handle, call);
    if (fault == nullptr)
        return work(handle);
    if (fault->connectionDies)
        ConnectionOf(handle).dead = true;
    if (fault->code != SQL_SUCCESS_WITH_INFO)
        return handle.Obey(*fault);
    const SQLRETURN done = work(handle);
    return done == SQL_SUCCESS ? handle.Obey(*fault) : done;
}

// Every function that can be scripted to fail comes through here, before and around its own work.
template <class Owner>
SQLRETURN Enter(SQLHANDLE raw, const Call& call, auto work) {
    auto& handle = static_cast<Owner&>(*static_cast<Handle*>(raw));
    handle.records.clear();
    if (StillExecuting(handle, call)) {
        LogCall(ConnectionOf(handle), call, true);
        return SQL_STILL_EXECUTING;
    }
    try {
        handle.code = Answered(handle, call, work);
    } catch (const std::exception& error) {
        handle.code = handle.Fail("HY000", error.what());
    }
    return handle.code;
}

}  // namespace kortavin::testing
