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
[[noreturn]] void Become(const std::string& shell, Arguments arguments, Arguments environment = {}) {
    unsetenv("KORTAVIN_CONNECTION");
    for (std::string& variable : environment)
        putenv(variable.data());
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
ToolResult RunTool(const Arguments& arguments, const ToolSettings& settings) {
    const TempFolder streams;
    const std::array<std::string, 3> paths = {streams / "in", streams / "out", streams / "err"};
    MakeFile(paths[0], settings.input);
    const pid_t process = fork();
    if (process == 0) {
        for (int stream = 0; stream < 3; ++stream)
            dup2(open(paths[stream].c_str(), stream == 0 ? O_RDONLY : O_WRONLY | O_CREAT, 0600), stream);
        Become(settings.shell, arguments, settings.environment);
    }
    const int exitCode = ExitCode(process);
    return {exitCode, ContentOf(paths[1]), ContentOf(paths[2])};
}

RunningTool::RunningTool(const Arguments& arguments, const std::string& shell) {
    winsize size = {};
    size.ws_col = 200;
    m_process = forkpty(&m_terminal, nullptr, nullptr, &size);
    if (m_process == 0)
        Become(shell, arguments, {"TERM=xterm"});
}

std::string RunningTool::ReadUntil(std::string_view text) {
    std::array<char, 4096> piece;
    while (m_shown.find(text) == std::string::npos) {
        const ssize_t count = read(m_terminal, piece.data(), piece.size());
        if (count <= 0)
            break;  // EIO: the other side is closed
        m_shown.append(piece.data(), static_cast<std::size_t>(count));
    }
    return m_shown;
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
