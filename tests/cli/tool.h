#pragma once

#include <signal.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "tests/support/tempfolder.h"

// Runs the built command-line tool as a process of its own.
namespace kortavin::test {

using Arguments = std::vector<std::string>;

struct ToolResult {
    int exitCode = -1;  // minus the signal that ended it
    std::string output;
    std::string error;
};

// A shell command that runs the tool as "$@"; others have limits, variables and redirections of their own.
inline const std::string kPlain = "exec \"$@\"";

ToolResult RunTool(const Arguments& arguments, const std::string& shell = kPlain,
                   const std::string& input = {});

// A tool that is running on a terminal, which hangs up in the end.
class RunningTool {
  public:
    explicit RunningTool(const Arguments& arguments, const std::string& shell = kPlain);
    RunningTool(const RunningTool&) = delete;
    RunningTool& operator=(const RunningTool&) = delete;
    ~RunningTool() { close(m_terminal); }

    void Signal(int signal) const { kill(m_process, signal); }
    // All that the terminal shows until the tool has ended.
    std::string ReadToEnd() const;
    int Wait() const;  // the exit code as above

  private:
    int m_terminal = -1;
    pid_t m_process;
};

// The path of a sample database that is made once for all tests; tests only read it.
const std::string& SampleDatabase();

// The arguments of a command on it.
Arguments OnSample(const std::string& command, const Arguments& more);

}  // namespace kortavin::test
