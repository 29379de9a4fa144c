#pragma once

#include <signal.h>
#include <sys/resource.h>

// While it lives, files of this process cannot grow beyond `bytes`: a write that reaches the limit is short,
// and the next one fails, as on a full disk.
class FileLimit {
  public:
    explicit FileLimit(rlim_t bytes) : m_handler(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limited{bytes, m_former.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limited);
    }
    FileLimit(const FileLimit&) = delete;
    FileLimit& operator=(const FileLimit&) = delete;
    ~FileLimit() {
        setrlimit(RLIMIT_FSIZE, &m_former);
        signal(SIGXFSZ, m_handler);
    }

  private:
    rlimit m_former{};
    sighandler_t m_handler;
};
