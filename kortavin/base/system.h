#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace kortavin::base {

// Repeats a system call for as long as a signal interrupts it.
template <class Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// Owns an open descriptor; -1 is none.
class Descriptor {
  public:
    explicit Descriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : m_descriptor(other.Release()) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~Descriptor() {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }

    int Get() const { return m_descriptor; }
    int Release() { return std::exchange(m_descriptor, -1); }
    // The error number, or 0. The descriptor is gone in any case, also after an interruption.
    int Close() {
        const bool failed = close(Release()) != 0 && errno != EINTR;
        return failed ? errno : 0;
    }

  private:
    int m_descriptor;
};

}  // namespace kortavin::base
