// A set of row numbers, kept as ranges: marking all rows of a list of a million costs as much as marking one.
// The list's selection keeps its painted rows in it.
#pragma once

#include <cstdint>
#include <map>

namespace quavernet {

class RowRanges {
public:
    void Clear() { m_ranges.clear(); }

    /// Adds the rows from `first` to `last`.
    void Add(std::int32_t first, std::int32_t last);
    /// Takes the rows from `first` to `last` out.
    void Remove(std::int32_t first, std::int32_t last);
    bool Contains(std::int32_t row) const;

    /// First and last row of each range, ascending; no two of them touch.
    const std::map<std::int32_t, std::int32_t>& Ranges() const { return m_ranges; }

private:
    std::map<std::int32_t, std::int32_t> m_ranges;
};

} // namespace quavernet
