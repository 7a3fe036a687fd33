// Whole numbers in the byte order of a file format. Called by whoever takes files apart.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quavernet {

/// The number in `count` bytes (1 to 8) from `at` on, the highest first; `bytes` is a container of bytes of
/// any type. Bytes beyond its end count as 0.
template <typename Integer, typename Bytes>
constexpr Integer BigEndian(const Bytes& bytes, std::size_t at, std::size_t count = sizeof(Integer)) {
    std::uint64_t value = 0;
    for (std::size_t i = at; i < at + count; ++i) {
        value = value << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    }
    return static_cast<Integer>(value);
}

/// The same, the lowest byte first.
template <typename Integer, typename Bytes>
constexpr Integer LittleEndian(const Bytes& bytes, std::size_t at, std::size_t count = sizeof(Integer)) {
    std::uint64_t value = 0;
    for (std::size_t i = at + count; i-- > at;) {
        value = value << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0u);
    }
    return static_cast<Integer>(value);
}

} // namespace quavernet
