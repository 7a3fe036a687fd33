// Finds the first of many names that holds a text, in a time that hardly goes with the length of the names.
// The list of an import's categories makes one when it has been searched often.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

/// An array of suffixes, with the lowest name of each range of it. Takes 12 bytes for each byte of the names.
class NameIndex {
public:
    /// Names in a row, and where each ends, in ascending order. The text must outlive the index, and may have
    /// at most 2^32 - 1 bytes.
    NameIndex(std::string_view text, const std::vector<std::size_t>& ends);

    /// Place of the first name that holds the part, from 0. The part is not empty and goes over no two names.
    std::optional<std::size_t> First(std::string_view part) const;

private:
    std::uint32_t LowestName(std::size_t begin, std::size_t end) const;

    std::string_view m_text;
    std::vector<std::uint32_t> m_suffixes; ///< Their places in the text, sorted.
    std::vector<std::uint32_t> m_lowest;   ///< A tree: name of each suffix from the middle on, minima before.
};

} // namespace quavernet
