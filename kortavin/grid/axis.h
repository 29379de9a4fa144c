#pragma once

#include <vector>

#include "kortavin/base/export.h"
#include "kortavin/base/types.h"

namespace kortavin::grid {

// The rows or the columns of a grid as a line of sizes in pixels. Offsets do not walk all of them: a Fenwick
// tree keeps the sums of blocks, so that a million rows are answered for in well under a microsecond.
class KORTAVIN_API Axis {
  public:
    int Count() const { return static_cast<int>(m_sizes.size()); }
    int SizeAt(int index) const { return static_cast<int>(m_sizes[static_cast<std::size_t>(index)]); }

    void SetSize(int index, int size);
    void Resize(int count, int sizeOfNew);
    void Insert(int index, int size);  // 0 .. Count()
    void Erase(int index);
    void SetSizes(int first, const std::vector<int>& sizes);

    // Where an index begins; Count(): the total.
    LONGLONG OffsetOf(int index) const;
    LONGLONG Total() const { return OffsetOf(Count()); }
    // The first index from `from` on that begins at or behind `offset`, measured from where `from` begins;
    // Count() when none does.
    int FirstAtOrAfter(int from, LONGLONG offset) const;
    // The index from `from` on whose span holds `offset`, measured likewise: the first that ends behind it.
    // Count() past the end.
    int IndexAt(int from, LONGLONG offset) const;

  private:
    static constexpr std::size_t kBlock = 64;

    void Append(int size);
    void ReserveTree(std::size_t count);
    void SumAll();
    void AddToBlock(std::size_t block, LONGLONG difference);
    int EndingBehind(LONGLONG offset) const;

    std::vector<UINT> m_sizes;
    std::vector<LONGLONG> m_tree;  // node i (from 1) sums the lowbit(i) blocks that end with block i - 1
};

}  // namespace kortavin::grid
