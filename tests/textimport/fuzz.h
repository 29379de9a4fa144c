#pragma once

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

// Cheap to seed, so that every round has a seed of its own (splitmix64).
class Random {
  public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}

    std::size_t Below(std::size_t limit) {
        std::uint64_t mixed = m_state += 0x9E3779B97F4A7C15;
        mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
        mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
        return static_cast<std::size_t>((mixed ^ mixed >> 31) % limit);
    }
    bool OnceIn(std::size_t times) { return Below(times) == 0; }
    template <class Range>
    const auto& OneOf(const Range& range) {
        return std::begin(range)[Below(std::size(range))];
    }
    template <class Pieces>
    std::string Join(const Pieces& pieces, std::size_t count) {
        std::string joined;
        while (count-- > 0)
            joined += OneOf(pieces);
        return joined;
    }

  private:
    std::uint64_t m_state;
};

inline void Require(bool holds, const char* what) {
    if (!holds)
        throw std::runtime_error(what);
}

// Runs `round` with one seed after the other until the time is up. Usage: PROGRAM SECONDS [FIRST_SEED]
inline int Fuzz(int argc, char** argv, void (*round)(Random)) {
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(argc > 1 ? std::atoi(argv[1]) : 1);
    const std::uint64_t first = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1;
    std::uint64_t seed = first;
    try {
        for (; seed % 64 != 0 || std::chrono::steady_clock::now() < end; ++seed)
            round(Random(seed));
    } catch (const std::exception& error) {
        std::printf("%s: seed %llu: %s\n", argv[0], static_cast<unsigned long long>(seed), error.what());
        return 1;
    }
    std::printf("%s: %llu rounds from seed %llu on\n", argv[0], static_cast<unsigned long long>(seed - first),
                static_cast<unsigned long long>(first));
    return 0;
}
