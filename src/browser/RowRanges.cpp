#include "browser/RowRanges.h"

#include <algorithm>
#include <iterator>

namespace quavernet {

void RowRanges::Add(std::int32_t first, std::int32_t last) {
    if (last < first) {
        return;
    }
    auto next = m_ranges.upper_bound(first);
    if (next != m_ranges.begin()) {
        const auto before = std::prev(next);
        if (before->second >= first - 1) {
            first = before->first;
            last = std::max(last, before->second);
            next = m_ranges.erase(before);
        }
    }
    while (next != m_ranges.end() && next->first - 1 <= last) {
        last = std::max(last, next->second);
        next = m_ranges.erase(next);
    }
    m_ranges.emplace_hint(next, first, last);
}

void RowRanges::Remove(std::int32_t first, std::int32_t last) {
    if (last < first) {
        return;
    }
    auto range = m_ranges.upper_bound(first);
    if (range != m_ranges.begin()) {
        range = std::prev(range);
    }
    while (range != m_ranges.end() && range->first <= last) {
        const auto [rangeFirst, rangeLast] = *range;
        if (rangeLast < first) {
            ++range;
            continue;
        }
        range = m_ranges.erase(range);
        if (rangeFirst < first) {
            m_ranges.emplace(rangeFirst, first - 1);
        }
        if (rangeLast > last) {
            m_ranges.emplace(last + 1, rangeLast);
        }
    }
}

bool RowRanges::Contains(std::int32_t row) const {
    const auto next = m_ranges.upper_bound(row);
    return next != m_ranges.begin() && std::prev(next)->second >= row;
}

} // namespace quavernet
