#include "kortavin/grid/axis.h"

#include <algorithm>
#include <bit>
#include <numeric>

namespace kortavin::grid {
namespace {

template <class Iterator>
LONGLONG Sum(Iterator first, Iterator last) {
    return std::accumulate(first, last, LONGLONG{0});
}

constexpr std::size_t LowBit(std::size_t node) {
    return node & (~node + 1);
}

}  // namespace

void Axis::AddToBlock(std::size_t block, LONGLONG difference) {
    for (std::size_t node = block + 1; node < m_tree.size(); node += LowBit(node))
        m_tree[node] += difference;
}

// A new last node sums the blocks that are there already.
void Axis::Append(int size) {
    const std::size_t block = m_sizes.size() / kBlock;
    ReserveTree(m_sizes.size() + 1);
    m_sizes.push_back(static_cast<UINT>(size));
    m_tree.resize(std::max<std::size_t>(m_tree.size(), 1));
    if (block + 1 < m_tree.size()) {
        AddToBlock(block, size);
        return;
    }
    const std::size_t node = m_tree.size();
    LONGLONG sum = size;
    for (std::size_t child = node - 1; child > node - LowBit(node); child -= LowBit(child))
        sum += m_tree[child];
    m_tree.push_back(sum);
}

// Before the sizes change, so that lack of memory leaves all as it was.
void Axis::ReserveTree(std::size_t count) {
    const std::size_t nodes = (count + kBlock - 1) / kBlock + 1;
    if (m_tree.capacity() < nodes)
        m_tree.reserve(std::max(nodes, 2 * m_tree.capacity()));
}

void Axis::SumAll() {
    const std::size_t blocks = (m_sizes.size() + kBlock - 1) / kBlock;
    m_tree.assign(blocks + 1, 0);
    for (std::size_t node = 1; node <= blocks; ++node) {
        const auto first = m_sizes.begin() + static_cast<std::ptrdiff_t>((node - 1) * kBlock);
        const auto length = std::min(kBlock, m_sizes.size() - (node - 1) * kBlock);
        m_tree[node] += Sum(first, first + static_cast<std::ptrdiff_t>(length));
        if (const std::size_t parent = node + LowBit(node); parent <= blocks)
            m_tree[parent] += m_tree[node];
    }
}

void Axis::SetSize(int index, int size) {
    const auto place = static_cast<std::size_t>(index);
    AddToBlock(place / kBlock, LONGLONG{size} - m_sizes[place]);
    m_sizes[place] = static_cast<UINT>(size);
}

void Axis::Resize(int count, int sizeOfNew) {
    ReserveTree(static_cast<std::size_t>(count));
    m_sizes.resize(static_cast<std::size_t>(count), static_cast<UINT>(sizeOfNew));
    SumAll();
}

void Axis::Insert(int index, int size) {
    if (index == Count()) {
        Append(size);
        return;
    }
    ReserveTree(m_sizes.size() + 1);
    m_sizes.insert(m_sizes.begin() + index, static_cast<UINT>(size));
    SumAll();
}

// Nodes of blocks that are gone may go from the end: no other node sums them.
void Axis::Erase(int index) {
    if (index == Count() - 1) {
        SetSize(index, 0);
        m_sizes.pop_back();
        m_tree.resize((m_sizes.size() + kBlock - 1) / kBlock + 1);
        return;
    }
    m_sizes.erase(m_sizes.begin() + index);
    SumAll();
}

void Axis::SetSizes(int first, const std::vector<int>& sizes) {
    std::ranges::copy(sizes, m_sizes.begin() + first);
    SumAll();
}

LONGLONG Axis::OffsetOf(int index) const {
    const std::size_t block = static_cast<std::size_t>(index) / kBlock;
    LONGLONG offset = 0;
    for (std::size_t node = block; node > 0; node -= LowBit(node))
        offset += m_tree[node];
    return offset +
           Sum(m_sizes.begin() + static_cast<std::ptrdiff_t>(block * kBlock), m_sizes.begin() + index);
}

// The first index that ends behind `offset`.
int Axis::EndingBehind(LONGLONG offset) const {
    std::size_t block = 0;
    LONGLONG end = 0;
    for (std::size_t step = std::bit_floor(m_tree.size()); step > 0; step /= 2) {
        if (block + step < m_tree.size() && end + m_tree[block + step] <= offset) {
            block += step;
            end += m_tree[block];
        }
    }
    std::size_t index = std::min(block * kBlock, m_sizes.size());
    while (index < m_sizes.size() && end + m_sizes[index] <= offset)
        end += m_sizes[index++];
    return static_cast<int>(index);
}

// What ends at or behind a place is followed by what begins there.
int Axis::FirstAtOrAfter(int from, LONGLONG offset) const {
    if (offset <= 0 || from >= Count())
        return from;
    return std::min(EndingBehind(OffsetOf(from) + offset - 1) + 1, Count());
}

int Axis::IndexAt(int from, LONGLONG offset) const {
    return from >= Count() ? Count() : std::max(from, EndingBehind(OffsetOf(from) + offset));
}

}  // namespace kortavin::grid
