#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

// Runs the built command-line tool as a process of its own.
namespace kortavin::test {

using Arguments = std::vector<std::string>;

struct ToolResult {
    int exitCode = -1;  // -1 when a signal ended it
    int signal = 0;
    std::string output;
    std::string error;
};

struct ToolSettings {
    std::string input{};
    Arguments environment{};  // "NAME=VALUE", in place of this process's
    // A shell command that runs the tool as "$@", with limits and redirections of its own.
    std::string shell = "exec \"$@\"";
};

ToolResult RunTool(const Arguments& arguments, const ToolSettings& settings = {});

// A tool that is running, its standard error on a terminal if asked for. Killed in the end if it still runs.
class RunningTool {
  public:
    enum class Streams { Discarded, Terminal };

    RunningTool(const Arguments& arguments, Streams streams, std::string shell = "exec \"$@\"");
    RunningTool(const RunningTool&) = delete;
    RunningTool& operator=(const RunningTool&) = delete;
    ~RunningTool();

    void Signal(int signal) const;
    // The terminal's keyboard and screen. ReadUntil answers all that was shown once `text` is part of it, or
    // what there was when the tool ended.
    void Type(std::string_view keys) const;
    std::string ReadUntil(std::string_view text);
    std::string ReadToEnd() { return ReadUntil(std::string(1, '\0')); }
    // The exit code, or minus the signal that ended it.
    int Wait();

  private:
    pid_t m_process = -1;
    int m_terminal = -1;
    std::string m_shown;
};

// A folder that is removed in the end.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    std::string Path(std::string_view name) const { return (m_path / name).string(); }
    std::string Write(std::string_view name, std::string_view content) const;  // its path
    // The names of the files, sorted.
    Arguments List() const;
    // Waits until a file is made whose name is none of those that are there already.
    class Watch {
      public:
        explicit Watch(const TemporaryFolder& folder);
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        ~Watch();
        void WaitForNewFile() const;

      private:
        int m_descriptor;
    };

  private:
    std::filesystem::path m_path;
};

std::string ReadFile(const std::string& path);

// The path of a sample database that is made once for all tests; tests only read it.
const std::string& SampleDatabase();

}  // namespace kortavin::test
