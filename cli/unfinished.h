#pragma once

#include <csignal>
#include <optional>

#include "kortavin/base/replacement.h"

namespace kortavin::cli {

// Holds back the signals that end a program from a terminal while it lives.
class SignalsHeld {
  public:
    SignalsHeld();
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;
    ~SignalsHeld();

  private:
    sigset_t m_former;
};

// While it lives, SIGINT, SIGTERM and SIGHUP remove the file before they end the process, also while a driver
// blocks: the signal handler itself does it. Signals that were ignored stay ignored. One at a time.
class UnfinishedFileGuard {
  public:
    explicit UnfinishedFileGuard(const CString& path);
    UnfinishedFileGuard(const UnfinishedFileGuard&) = delete;
    UnfinishedFileGuard& operator=(const UnfinishedFileGuard&) = delete;
    ~UnfinishedFileGuard();

  private:
    CString m_path;
};

// Bytes that such a signal writes to the standard error first, to clear what a progress line left there. The
// text must live until the next call; null for none.
void SetFarewell(const char* text);

// A file's new content that such a signal discards; the former file stays whole.
class GuardedReplacement {
  public:
    // Throws CFileException when the target cannot be written.
    explicit GuardedReplacement(const CString& path);

    CFile& File() { return m_replacement->File(); }
    const CString& GetUnfinishedPath() const { return m_replacement->GetUnfinishedPath(); }
    void Commit() { m_replacement->Commit(); }

  private:
    // The guard goes last, when there is nothing left to remove.
    std::optional<UnfinishedFileGuard> m_guard;
    std::optional<base::FileReplacement> m_replacement;
};

}  // namespace kortavin::cli
