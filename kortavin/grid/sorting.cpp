#include <algorithm>
#include <cstring>
#include <numeric>
#include <string_view>
#include <vector>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/grid/partition.h"

namespace kortavin {

// Sorting works on short keys; the rows move once, when the order is known.

namespace {

// A row of a sort by text: its first eight bytes as a number, which settles most comparisons, and the text,
// of which what follows a zero byte does not count.
struct TextKey {
    std::uint64_t prefix;
    CString text;
    int row;
};

std::uint64_t PrefixOf(std::string_view text) {
    text = text.substr(0, text.find('\0'));
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < sizeof prefix; ++i)
        prefix = prefix << 8 | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    return prefix;
}

int CompareKeys(const TextKey& a, const TextKey& b) {
    if (a.prefix != b.prefix)
        return a.prefix < b.prefix ? -1 : 1;
    return a.text.Compare(b.text);
}

struct DataKey {
    LPARAM data;
    int row;
};

}  // namespace

template <class Keys>
void CGridCtrl::ArrangeRows(const Keys& keys) {
    std::vector<Row> rows;
    std::vector<int> heights;
    rows.reserve(keys.size());
    heights.reserve(keys.size());
    for (const auto& key : keys) {
        rows.push_back(std::move(m_rowData[static_cast<std::size_t>(key.row)]));
        heights.push_back(m_rows.SizeAt(key.row));
    }
    std::ranges::move(rows, m_rowData.begin() + m_fixedRowCount);
    m_rows.SetSizes(m_fixedRowCount, heights);
    TellTableChange(window::TableChange::Layout);
}

BOOL CGridCtrl::SortRowsByText(int col, BOOL bAscending) {
    if (!DropSelection() || col < 0 || col >= GetColumnCount() || GetRowCount() - m_fixedRowCount < 2)
        return FALSE;
    std::vector<TextKey> keys;
    keys.reserve(static_cast<std::size_t>(GetRowCount() - m_fixedRowCount));
    for (int row = m_fixedRowCount; row < GetRowCount(); ++row) {
        CString text = GetItemText(row, col);
        const std::uint64_t prefix = PrefixOf(text.View());
        keys.push_back({prefix, std::move(text), row});
    }
    grid::SortByPartition(keys, bAscending != FALSE, &CompareKeys);
    ArrangeRows(keys);
    return TRUE;
}

BOOL CGridCtrl::SortRowsByData(Compare compare, int col, BOOL bAscending, LPARAM data) {
    if (!DropSelection() || compare == nullptr || col < 0 || col >= GetColumnCount() ||
        GetRowCount() - m_fixedRowCount < 2)
        return FALSE;
    std::vector<DataKey> keys;
    for (int row = m_fixedRowCount; row < GetRowCount(); ++row)
        keys.push_back({GetItemData(row, col), row});
    const Life life(*this);
    const int rows = GetRowCount();
    grid::SortByPartition(keys, bAscending != FALSE,
                          [&](const DataKey& a, const DataKey& b) { return compare(a.data, b.data, data); });
    if (!life.Exists() || GetRowCount() != rows)
        return FALSE;  // the comparison took them away
    ArrangeRows(keys);
    return TRUE;
}

}  // namespace kortavin
