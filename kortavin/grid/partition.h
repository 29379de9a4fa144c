#pragma once

#include <utility>
#include <vector>

namespace kortavin::grid {

// Sorts by dividing at the middle element again and again, with the pivot's value taken once and only unequal
// elements exchanged, so that the order of equal ones is always the same as well. The larger part of a
// division waits on a stack of its own: nesting never gets deeper than the logarithm of the count.
// `compare` answers below 0, 0 or above 0.
template <class Key, class Compare>
void SortByPartition(std::vector<Key>& keys, bool ascending, Compare compare) {
    const auto isBefore = [&](const Key& key, const Key& pivot) {
        return ascending ? compare(key, pivot) < 0 : compare(key, pivot) > 0;
    };
    const auto isBehind = [&](const Key& key, const Key& pivot) {
        return ascending ? compare(key, pivot) > 0 : compare(key, pivot) < 0;
    };
    std::vector<std::pair<int, int>> waiting{{0, static_cast<int>(keys.size()) - 1}};
    const auto at = [&](int i) -> Key& { return keys[static_cast<std::size_t>(i)]; };
    while (!waiting.empty()) {
        const auto [low, high] = waiting.back();
        waiting.pop_back();
        if (high <= low)
            continue;
        const Key pivot = at(low + (high - low) / 2);
        int lo = low;
        int hi = high;
        while (lo <= hi) {
            while (lo < high && isBefore(at(lo), pivot))
                ++lo;
            while (hi > low && isBehind(at(hi), pivot))
                --hi;
            if (lo > hi)
                break;
            if (compare(at(lo), at(hi)) != 0)
                std::swap(at(lo), at(hi));
            ++lo;
            --hi;
        }
        const std::pair<int, int> left{low, hi};
        const std::pair<int, int> right{lo, high};
        const bool leftIsLarger = hi - low > high - lo;
        waiting.push_back(leftIsLarger ? left : right);
        waiting.push_back(leftIsLarger ? right : left);
    }
}

}  // namespace kortavin::grid
