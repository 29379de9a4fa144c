#include "cli/output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "cli/failure.h"
#include "cli/text.h"

namespace kortavin::cli {
namespace {

bool WriteAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

std::string EscapeEachLine(std::string_view text) {
    std::string result;
    while (true) {
        const std::size_t end = text.find('\n');
        result += EscapeControls(text.substr(0, end));
        if (end == std::string_view::npos)
            return result;
        result += '\n';
        text.remove_prefix(end + 1);
    }
}

}  // namespace

void WriteOutput(std::string_view bytes) {
    if (WriteAll(STDOUT_FILENO, bytes))
        return;
    if (errno == EPIPE)
        throw ClosedPipe();
    throw Failure(fmt::format("standard output: {}", std::strerror(errno)));
}

void WriteExactly(std::string_view bytes) {
    WriteOutput(OutputIsTerminal() ? std::string(bytes) + "\n" : std::string(bytes));
}

void WriteMessage(std::string_view text) {
    static_cast<void>(WriteAll(STDERR_FILENO, fmt::format("kortavin: {}\n", EscapeEachLine(text))));
}

bool OutputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

}  // namespace kortavin::cli
