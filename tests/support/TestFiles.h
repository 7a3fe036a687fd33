// Writing and reading whole files in tests, and small builders of byte strings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

namespace quavernet::test {

inline void WriteFile(const std::string& path, std::string_view contents) {
    std::ofstream(path, std::ios::binary)
        .write(contents.data(), static_cast<std::streamsize>(contents.size()));
}

inline std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline std::span<const std::byte> AsBytes(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

/// Bytes from their numbers: Bytes({0xFF, 0xFB}).
inline std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values) {
        bytes += static_cast<char>(value);
    }
    return bytes;
}

/// A number of `count` bytes, least significant byte first.
inline std::string Little(std::uint64_t value, int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
}

/// A number of `count` bytes, most significant byte first.
inline std::string Big(std::uint64_t value, int count) {
    const std::string little = Little(value, count);
    return std::string(little.rbegin(), little.rend());
}

/// The contents with `bytes` written over them at the offset.
inline std::string Put(std::string contents, std::size_t offset, std::string_view bytes) {
    return contents.replace(offset, bytes.size(), bytes);
}

} // namespace quavernet::test
