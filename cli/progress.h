#pragma once

#include <chrono>

#include "kortavin/base/types.h"

namespace kortavin::cli {

// One line on the standard error, written over itself at most ten times a second, and removed in the end.
// Only on a terminal; elsewhere nothing is written.
class ProgressLine {
  public:
    ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    void Update(ULONGLONG rows, ULONGLONG bytes);
    // Leaves a line with the final figures.
    void Finish(ULONGLONG rows, ULONGLONG bytes);

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kInterval{100};

    void Write(ULONGLONG rows, ULONGLONG bytes, const char* end);

    const bool m_isShown;
    bool m_isOnScreen = false;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_next = m_start + kInterval;
};

}  // namespace kortavin::cli
