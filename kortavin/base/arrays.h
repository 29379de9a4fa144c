#pragma once

#include <climits>
#include <stdexcept>
#include <vector>

#include "kortavin/base/cstring.h"
#include "kortavin/base/types.h"

namespace kortavin {

// An ordered, growable list. Reading outside it gives an empty element, so callers may ask for what is not
// there; SetAt and RemoveAt outside it do nothing. SetAtGrow and InsertAt fill a gap with empty elements.
template <class T>
class CListArray {
  public:
    int GetSize() const { return static_cast<int>(m_items.size()); }
    int GetUpperBound() const { return GetSize() - 1; }
    BOOL IsEmpty() const { return m_items.empty(); }
    void SetSize(int size) { m_items.resize(size < 0 ? 0 : static_cast<std::size_t>(size)); }
    void RemoveAll() { m_items.clear(); }

    T GetAt(int index) const { return Holds(index) ? m_items[static_cast<std::size_t>(index)] : T{}; }
    T operator[](int index) const { return GetAt(index); }
    void SetAt(int index, const T& item) {
        if (Holds(index))
            m_items[static_cast<std::size_t>(index)] = item;
    }
    void SetAtGrow(int index, const T& item) {
        if (index < 0)
            return;
        if (index == INT_MAX)
            throw std::length_error("list too long");
        if (index >= GetSize())
            SetSize(index + 1);
        SetAt(index, item);
    }
    int Add(const T& item) {  // the new element's index
        m_items.push_back(item);
        return GetUpperBound();
    }
    void InsertAt(int index, const T& item, int count = 1) {
        if (index < 0 || count <= 0)
            return;
        if (index > GetSize())
            SetSize(index);
        m_items.insert(m_items.begin() + index, static_cast<std::size_t>(count), item);
    }
    void RemoveAt(int index, int count = 1) {
        if (!Holds(index) || count <= 0)
            return;
        const int last = count < GetSize() - index ? index + count : GetSize();
        m_items.erase(m_items.begin() + index, m_items.begin() + last);
    }

    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }
    friend bool operator==(const CListArray&, const CListArray&) = default;

  private:
    bool Holds(int index) const { return index >= 0 && index < GetSize(); }

    std::vector<T> m_items;
};

using CStringArray = CListArray<CString>;
using CWordArray = CListArray<WORD>;

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CListArray;
using kortavin::CStringArray;
using kortavin::CWordArray;
#endif
