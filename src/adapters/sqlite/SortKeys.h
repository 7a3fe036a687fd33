// Numbers that sort as values do, so that most of an order is found without looking at the values again. Used
// by RowOrder.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace quavernet::sqlite {

/// Two numbers that are compared one after the other, and what they stand for.
struct SortKey {
    std::uint64_t first = 0;
    std::uint64_t second = 0;
    std::uint32_t item = 0; ///< The caller's number for what is sorted.

    bool HasSameKey(const SortKey& other) const { return first == other.first && second == other.second; }
};

/// The beginning of a text as two numbers: where two texts' differ, the order of the texts is theirs; where
/// they are alike, the texts decide. A byte for each of sixteen characters; those after the first one that
/// shares its byte with others say nothing and are left out.
SortKey TextKey(std::string_view text, std::uint32_t item);

/// By the first number alone; equal ones stay as they stand.
void SortByFirst(std::vector<SortKey>& keys);

/// By both numbers, and where these are alike by what `isLess` says of two items.
void SortByKeys(std::vector<SortKey>& keys,
                const std::function<bool(std::uint32_t left, std::uint32_t right)>& isLess);

} // namespace quavernet::sqlite
