#pragma once

#include <cstddef>
#include <limits>

namespace kortavin::testing {

// While one stands, so many allocations of C++ objects go well and then so many fail. The scripted driver has
// an allocator of its own and never fails.
class ScarceMemory {
  public:
    static constexpr std::size_t kForEver = std::numeric_limits<std::size_t>::max();

    ScarceMemory(std::size_t goesWell, std::size_t failing);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

    // Whether any allocation failed by now.
    bool WasFelt() const;
};

}  // namespace kortavin::testing
