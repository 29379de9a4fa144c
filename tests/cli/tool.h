#pragma once

#include <signal.h>
#include <unistd.h>

#include <string>
#include <string_view>
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

// A shell command that runs the tool as "$@"; others have limits and redirections of their own.
inline const std::string kPlain = "exec \"$@\"";

struct ToolSettings {
    std::string input{};
    Arguments environment{};  // "NAME=VALUE", besides this process's
    std::string shell = kPlain;
};

ToolResult RunTool(const Arguments& arguments, const ToolSettings& settings = {});

// A tool that is running on a terminal, which hangs up in the end.
class RunningTool {
  public:
    explicit RunningTool(const Arguments& arguments, const std::string& shell = kPlain);
    RunningTool(const RunningTool&) = delete;
    RunningTool& operator=(const RunningTool&) = delete;
    ~RunningTool() { close(m_terminal); }

    void Signal(int signal) const { kill(m_process, signal); }
    // All that the terminal shows once `text` is part of it, or when the tool has ended.
    std::string ReadUntil(std::string_view text);
    std::string ReadToEnd() { return ReadUntil(std::string(1, '\0')); }
    int Wait() const;  // the exit code as above

  private:
    pid_t m_process = -1;
    int m_terminal = -1;
    std::string m_shown;
};

// The path of a sample database that is made once for all tests; tests only read it.
const std::string& SampleDatabase();

// The arguments of a command on it.
Arguments OnSample(const std::string& command, const Arguments& more);

}  // namespace kortavin::test
