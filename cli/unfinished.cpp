#include "cli/unfinished.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstring>

namespace kortavin::cli {
namespace {

constexpr std::array<int, 3> kEndingSignals = {SIGINT, SIGTERM, SIGHUP};

// All that the handler looks at.
std::atomic<const char*> unfinishedPath = nullptr;
std::atomic<const char*> farewell = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free);

// Only what is safe inside a signal handler. The default action is back already (SA_RESETHAND); the raised
// signal ends the process as soon as the handler returns.
void RemoveAndEnd(int signal) {
    if (const char* text = farewell.load())
        if (write(STDERR_FILENO, text, std::strlen(text)) < 0)
            errno = 0;
    if (const char* path = unfinishedPath.load())
        unlink(path);
    raise(signal);
}

bool IsIgnored(int signal) {
    struct sigaction current = {};
    sigaction(signal, nullptr, &current);
    return current.sa_handler == SIG_IGN;
}

void Handle(int signal, void (*handler)(int), int flags) {
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    sigemptyset(&action.sa_mask);
    for (const int other : kEndingSignals)
        sigaddset(&action.sa_mask, other);
    sigaction(signal, &action, nullptr);
}

// Opening a pipe waits for its reader, and must stay interruptible.
bool MayWait(const CString& path) {
    struct stat status = {};
    return stat(path, &status) == 0 && !S_ISREG(status.st_mode);
}

}  // namespace

SignalsHeld::SignalsHeld() {
    sigset_t held;
    sigemptyset(&held);
    for (const int signal : kEndingSignals)
        sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &m_former);
}

SignalsHeld::~SignalsHeld() {
    sigprocmask(SIG_SETMASK, &m_former, nullptr);
}

UnfinishedFileGuard::UnfinishedFileGuard(const CString& path) : m_path(path) {
    if (!m_path.IsEmpty())
        unfinishedPath = m_path.GetString();
    for (const int signal : kEndingSignals)
        if (!IsIgnored(signal))
            Handle(signal, RemoveAndEnd, SA_RESETHAND);
}

UnfinishedFileGuard::~UnfinishedFileGuard() {
    for (const int signal : kEndingSignals)
        if (!IsIgnored(signal))
            Handle(signal, SIG_DFL, 0);
    unfinishedPath = nullptr;
}

void SetFarewell(const char* text) {
    farewell = text;
}

GuardedReplacement::GuardedReplacement(const CString& path) {
    std::optional<SignalsHeld> held;
    if (!MayWait(path))
        held.emplace();
    m_replacement.emplace(path);
    m_guard.emplace(m_replacement->GetUnfinishedPath());
}

}  // namespace kortavin::cli
