#include "tests/cli/tool.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <spawn.h>
#include <sys/inotify.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace kortavin::test {
namespace {

namespace fs = std::filesystem;

// Argument vectors as the system wants them; valid as long as the texts.
std::vector<char*> Pointers(const Arguments& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

Arguments ShellCommand(const std::string& shell, const Arguments& arguments) {
    Arguments command = {"/bin/sh", "-c", shell, "sh", KORTAVIN_TOOL};
    command.insert(command.end(), arguments.begin(), arguments.end());
    return command;
}

// The environment of this process without what steers the tool, and the given ones.
Arguments Environment(const Arguments& given) {
    Arguments environment = given;
    for (char** variable = environ; *variable != nullptr; ++variable)
        if (!std::string_view(*variable).starts_with("KORTAVIN_"))
            environment.emplace_back(*variable);
    return environment;
}

[[noreturn]] void ThrowErrno(const char* what) {
    throw std::system_error(errno, std::generic_category(), what);
}

ToolResult ResultOf(int status) {
    ToolResult result;
    if (WIFEXITED(status))
        result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        result.signal = WTERMSIG(status);
    return result;
}

int WaitFor(pid_t process) {
    int status = 0;
    while (waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            ThrowErrno("waitpid");
    return status;
}

}  // namespace

// The streams are files, so that neither side ever waits for the other.
ToolResult RunTool(const Arguments& arguments, const ToolSettings& settings) {
    const TemporaryFolder streams;
    const std::string input = streams.Write("in", settings.input);
    const std::string output = streams.Path("out");
    const std::string error = streams.Path("err");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, input.c_str(), O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, error.c_str(), O_WRONLY | O_CREAT, 0600);

    const Arguments command = ShellCommand(settings.shell, arguments);
    const Arguments environment = Environment(settings.environment);
    pid_t process = -1;
    const int failed = posix_spawn(&process, command[0].c_str(), &actions, nullptr, Pointers(command).data(),
                                   Pointers(environment).data());
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0)
        throw std::system_error(failed, std::generic_category(), "posix_spawn");

    ToolResult result = ResultOf(WaitFor(process));
    result.output = ReadFile(output);
    result.error = ReadFile(error);
    return result;
}

RunningTool::RunningTool(const Arguments& arguments, Streams streams, std::string shell) {
    const Arguments command = ShellCommand(shell, arguments);
    Arguments environment = Environment({"TERM=xterm"});
    const std::vector<char*> argumentPointers = Pointers(command);
    const std::vector<char*> environmentPointers = Pointers(environment);
    winsize size = {};
    size.ws_col = 200;
    m_process = streams == Streams::Terminal ? forkpty(&m_terminal, nullptr, nullptr, &size) : fork();
    if (m_process < 0)
        ThrowErrno("fork");
    if (m_process > 0)
        return;

    if (streams == Streams::Discarded) {
        const int nothing = open("/dev/null", O_RDWR);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            dup2(nothing, stream);
    }
    execve(argumentPointers[0], argumentPointers.data(), environmentPointers.data());
    _exit(127);
}

RunningTool::~RunningTool() {
    if (m_process > 0) {
        kill(m_process, SIGKILL);
        WaitFor(m_process);
    }
    if (m_terminal >= 0)
        close(m_terminal);
}

void RunningTool::Signal(int signal) const {
    if (kill(m_process, signal) != 0)
        ThrowErrno("kill");
}

void RunningTool::Type(std::string_view keys) const {
    if (write(m_terminal, keys.data(), keys.size()) < 0)
        ThrowErrno("write");
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

int RunningTool::Wait() {
    const ToolResult result = ResultOf(WaitFor(m_process));
    m_process = -1;
    return result.signal != 0 ? -result.signal : result.exitCode;
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "kortavin-cli-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr)
        ThrowErrno("mkdtemp");
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string TemporaryFolder::Write(std::string_view name, std::string_view content) const {
    std::ofstream(m_path / name, std::ios::binary) << content;
    return Path(name);
}

Arguments TemporaryFolder::List() const {
    Arguments names;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_path))
        names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

TemporaryFolder::Watch::Watch(const TemporaryFolder& folder) : m_descriptor(inotify_init1(IN_CLOEXEC)) {
    if (inotify_add_watch(m_descriptor, folder.m_path.c_str(), IN_CREATE) < 0)
        ThrowErrno("inotify");
}

TemporaryFolder::Watch::~Watch() {
    close(m_descriptor);
}

void TemporaryFolder::Watch::WaitForNewFile() const {
    std::array<char, 4096> event;
    if (read(m_descriptor, event.data(), event.size()) <= 0)
        ThrowErrno("inotify");
}

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const std::string& SampleDatabase() {
    static const TemporaryFolder folder;
    static const std::string path = [] {
        const ToolResult made = RunTool({"sample", folder.Path("atlas.db")});
        if (made.exitCode != 0)
            throw std::runtime_error("no sample database: " + made.error);
        return folder.Path("atlas.db");
    }();
    return path;
}

}  // namespace kortavin::test
