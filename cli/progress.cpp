#include "cli/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "cli/unfinished.h"

namespace kortavin::cli {
namespace {

constexpr const char* kEraseLine = "\r\x1b[K";

bool CanShow() {
    const char* const terminal = std::getenv("TERM");
    return isatty(STDERR_FILENO) == 1 && terminal != nullptr && std::string_view(terminal) != "dumb";
}

// Progress that cannot be shown is no reason to stop.
void WriteToTerminal(std::string_view text) {
    if (write(STDERR_FILENO, text.data(), text.size()) < 0)
        return;
}

}  // namespace

ProgressLine::ProgressLine() : m_isShown(CanShow()) {}

ProgressLine::~ProgressLine() {
    if (m_isOnScreen)
        WriteToTerminal(kEraseLine);
    SetFarewell(nullptr);
}

void ProgressLine::Update(ULONGLONG rows, ULONGLONG bytes) {
    if (!m_isShown)
        return;
    const Clock::time_point now = Clock::now();
    if (now < m_next)
        return;
    m_next = now + kInterval;
    SetFarewell(kEraseLine);
    m_isOnScreen = true;
    Write(rows, bytes, "");
}

void ProgressLine::Finish(ULONGLONG rows, ULONGLONG bytes) {
    if (!m_isShown)
        return;
    Write(rows, bytes, "\n");
    m_isOnScreen = false;
}

void ProgressLine::Write(ULONGLONG rows, ULONGLONG bytes, const char* end) {
    const double seconds = std::chrono::duration<double>(Clock::now() - m_start).count();
    const auto rate = static_cast<ULONGLONG>(seconds > 0 ? static_cast<double>(rows) / seconds : 0);
    WriteToTerminal(fmt::format("{}{} rows, {} bytes, {} rows/s{}", kEraseLine, rows, bytes, rate, end));
}

}  // namespace kortavin::cli
