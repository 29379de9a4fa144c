#include "scriptedsource.h"

#include <cstdint>
#include <cstdlib>

namespace kortavin::testing {
namespace {

// The driver manager looks for its registry once, at a process's first call.
[[maybe_unused]] const int registered = setenv("ODBCSYSINI", KORTAVIN_SCRIPTED_REGISTRY, 1);

}  // namespace

ScriptedSource::ScriptedSource() {
    for (const char* name : {"TABLE_QUALIFIER", "TABLE_OWNER", "TABLE_NAME", "TABLE_TYPE", "REMARKS"})
        tables.AddColumn(name);
    for (const char* name : {"TABLE_QUALIFIER", "TABLE_OWNER", "TABLE_NAME", "COLUMN_NAME", "DATA_TYPE",
                             "TYPE_NAME", "PRECISION", "LENGTH", "SCALE", "RADIX", "NULLABLE", "REMARKS"})
        columns.AddColumn(name);
}

std::string ScriptedSource::ConnectionString(std::string_view more) {
    const auto address = reinterpret_cast<std::uintptr_t>(static_cast<Script*>(this));
    std::string text = "Driver=Scripted;Script=";
    return text.append(std::to_string(address)).append(";").append(more);
}

std::vector<std::string> ScriptedSource::Calls(std::string_view function) const {
    std::vector<std::string> calls = log.calls;
    std::erase_if(calls, [function](const std::string& call) {
        return std::string_view(call).substr(0, call.find(' ')) != function;
    });
    return calls;
}

}  // namespace kortavin::testing
