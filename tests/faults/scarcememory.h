#pragma once

#include <cstddef>
#include <limits>

namespace kortavin::testing {

// While one stands, allocations of C++ objects fail: from number `first` (counted from 1) on so many of them.
// The scripted driver has an allocator of its own and never fails.
class ScarceMemory {
  public:
    static constexpr std::size_t kForEver = std::numeric_limits<std::size_t>::max();

    explicit ScarceMemory(std::size_t first, std::size_t count = 1);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    // Whether any allocation failed by now.
    bool WasFelt() const;
};

}  // namespace kortavin::testing
