// Whole numbers in byte order, as Ogg (little end first) and the picture block (big end first) keep them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quavernet::vorbis {

/// The caller has made sure that the bytes are there.
template <typename Integer> Integer LittleEndian(std::span<const std::uint8_t> bytes, std::size_t at) {
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Integer); i-- > 0;) {
        value = value << 8 | bytes[at + i];
    }
    return static_cast<Integer>(value);
}

template <typename Integer> Integer BigEndian(std::span<const std::uint8_t> bytes, std::size_t at) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < sizeof(Integer); ++i) {
        value = value << 8 | bytes[at + i];
    }
    return static_cast<Integer>(value);
}

} // namespace quavernet::vorbis
