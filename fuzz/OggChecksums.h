// Lets the fuzzer past the checksums of Ogg pages. Included by the targets that read such files.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include <ogg/ogg.h>

namespace quavernet::fuzz {

/// The bytes with the right checksum in every page: without it nothing after a changed byte would be read.
inline std::vector<std::uint8_t> WithRightChecksums(std::span<const std::uint8_t> data) {
    constexpr std::string_view mark = "OggS";
    std::vector<std::uint8_t> bytes(data.begin(), data.end());
    for (std::size_t at = 0; at + 27 <= bytes.size();) {
        const std::size_t headerSize = std::size_t{27} + bytes[at + 26];
        if (!std::equal(mark.begin(), mark.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at)) ||
            at + headerSize > bytes.size()) {
            ++at;
            continue;
        }
        std::size_t size = headerSize;
        for (std::size_t i = at + 27; i < at + headerSize; ++i) {
            size += bytes[i];
        }
        if (at + size > bytes.size()) {
            break;
        }
        ogg_page page{bytes.data() + at, static_cast<long>(headerSize), bytes.data() + at + headerSize,
                      static_cast<long>(size - headerSize)};
        ogg_page_checksum_set(&page);
        at += size;
    }
    return bytes;
}

} // namespace quavernet::fuzz
