#pragma once

#include <string>

#include "kortavin/base/cstring.h"

namespace CLI {
class App;
}

namespace kortavin::cli {

// A statement, given as an argument or as a saved-query file.
struct StatementSource {
    std::string text;
    std::string file;
};

void AddStatementSource(CLI::App& command, StatementSource& source);

// Throws UsageFailure when neither or an empty statement was given, Failure when the file cannot be read.
CString ReadStatement(const StatementSource& source);

// The statement of a saved-query file; throws Failure.
CString ReadStatementFile(const std::string& path);

}  // namespace kortavin::cli
