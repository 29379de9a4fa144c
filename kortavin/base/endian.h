#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <span>
#include <type_traits>

#include "kortavin/base/file.h"

// Whole numbers in files are little-endian, whatever the machine is.
namespace kortavin::base {

template <std::integral T>
std::array<BYTE, sizeof(T)> ToLittleEndian(T value) {
    std::array<BYTE, sizeof(T)> bytes{};
    auto rest = static_cast<std::make_unsigned_t<T>>(value);
    for (BYTE& byte : bytes) {
        byte = static_cast<BYTE>(rest);
        rest = static_cast<std::make_unsigned_t<T>>(rest >> 7 >> 1);
    }
    return bytes;
}

template <std::integral T>
T FromLittleEndian(std::span<const BYTE, sizeof(T)> bytes) {
    std::make_unsigned_t<T> value = 0;
    for (std::size_t i = sizeof(T); i-- > 0;)
        value = static_cast<std::make_unsigned_t<T>>(value << 7 << 1 | bytes[i]);
    return static_cast<T>(value);
}

template <std::integral T>
void WriteLittleEndian(CFile& file, T value) {
    const auto bytes = ToLittleEndian(value);
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

}  // namespace kortavin::base
