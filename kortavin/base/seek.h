#pragma once

#include <optional>

#include "kortavin/base/file.h"

namespace kortavin::base {

// Where a Seek leads; nothing when that is before the beginning, more than a file can have, or from nowhere.
inline std::optional<ULONGLONG> SeekTarget(LONGLONG offset, UINT from, ULONGLONG position, ULONGLONG length) {
    if (from > CFile::end)
        return std::nullopt;
    const ULONGLONG origin = from == CFile::begin ? 0 : from == CFile::current ? position : length;
    LONGLONG target = 0;
    if (__builtin_add_overflow(static_cast<LONGLONG>(origin), offset, &target) || target < 0)
        return std::nullopt;
    return static_cast<ULONGLONG>(target);
}

}  // namespace kortavin::base
