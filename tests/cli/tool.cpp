#include "tests/cli/tool.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace kortavin::test {
namespace {

// Turns a forked child into the tool.
[[noreturn]] void Become(const std::string& shell, Arguments arguments) {
    unsetenv("KORTAVIN_CONNECTION");
    arguments.insert(arguments.begin(), {"sh", "-c", shell, "sh", KORTAVIN_TOOL});
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    execv("/bin/sh", pointers.data());
    _exit(127);
}

int ExitCode(pid_t process) {
    int status = 0;
    if (waitpid(process, &status, 0) < 0)
        throw std::system_error(errno, std::generic_category(), "waitpid");
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace

// The streams are files, so that neither side ever waits for the other.
ToolResult RunTool(const Arguments& arguments, const std::string& shell, const std::string& input) {
    const TempFolder streams;
    const std::array<std::string, 3> paths = {streams / "in", streams / "out", streams / "err"};
    MakeFile(paths[0], input);
    const pid_t process = fork();
    if (process == 0) {
        for (int stream = 0; stream < 3; ++stream)
            dup2(open(paths[stream].c_str(), stream == 0 ? O_RDONLY : O_WRONLY | O_CREAT, 0600), stream);
        Become(shell, arguments);
    }
    const int exitCode = ExitCode(process);
    return {exitCode, ContentOf(paths[1]), ContentOf(paths[2])};
}

RunningTool::RunningTool(const Arguments& arguments, const std::string& shell)
    : m_process(forkpty(&m_terminal, nullptr, nullptr, nullptr)) {
    if (m_process < 0)
        throw std::system_error(errno, std::generic_category(), "forkpty");
    if (m_process == 0)
        Become(shell, arguments);
}

std::string RunningTool::ReadToEnd() const {
    std::string shown;
    std::array<char, 4096> piece;
    ssize_t count = 0;
    while ((count = read(m_terminal, piece.data(), piece.size())) > 0)
        shown.append(piece.data(), static_cast<std::size_t>(count));
    return shown;
}

int RunningTool::Wait() const {
    return ExitCode(m_process);
}

const std::string& SampleDatabase() {
    static const TempFolder folder;
    static const std::string path = folder / "atlas.db";
    static const ToolResult made = RunTool({"sample", path});
    EXPECT_EQ(made.exitCode, 0) << made.error;
    return path;
}

Arguments OnSample(const std::string& command, const Arguments& more) {
    Arguments arguments = {command, "-c", SampleDatabase()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

}  // namespace kortavin::test
