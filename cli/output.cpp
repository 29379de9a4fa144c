#include "cli/output.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
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

// Drivers indent with tabs, which would show escaped.
std::string EscapeEachLine(std::string all) {
    std::ranges::replace(all, '\t', ' ');
    std::string_view text = all;
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

std::string LowerAscii(std::string text) {
    for (char& character : text)
        if (character >= 'A' && character <= 'Z')
            character = static_cast<char>(character - 'A' + 'a');
    return text;
}

std::size_t ValueEnd(std::string_view text, std::size_t begin) {
    const bool isBraced = begin < text.size() && text[begin] == '{';
    const std::size_t end = isBraced ? text.find('}', begin) : text.find_first_of(";\n", begin);
    return std::min(end, text.size());
}

// A connection string may stand where it does not belong, as a file's name for one, and be quoted in a
// message.
std::string HidePasswords(std::string text) {
    for (const std::string_view key : {"pwd", "password"}) {
        for (std::size_t at = 0; (at = LowerAscii(text).find(key, at)) != std::string::npos;) {
            at += key.size();
            const std::size_t equals = text.find_first_not_of(' ', at);
            if (equals == std::string::npos || text[equals] != '=')
                continue;
            text.replace(equals + 1, ValueEnd(text, equals + 1) - equals - 1, "***");
        }
    }
    return text;
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
    static_cast<void>(WriteAll(
        STDERR_FILENO, fmt::format("kortavin: {}\n", EscapeEachLine(HidePasswords(std::string(text))))));
}

bool OutputIsTerminal() {
    return isatty(STDOUT_FILENO) == 1;
}

}  // namespace kortavin::cli
