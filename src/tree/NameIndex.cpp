#include "tree/NameIndex.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quavernet {

namespace {

using Places = std::vector<std::uint32_t>;

// Ranks suffixes by their first characters, twice as many in each round.
class SuffixSort {
public:
    explicit SuffixSort(std::string_view text) : m_rank(text.size()), m_sorted(text.size()) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            m_rank[i] = static_cast<unsigned char>(text[i]);
            m_sorted[i] = static_cast<std::uint32_t>(i);
        }
        SortByRank(Places(m_sorted), 256);
        std::size_t ranks = Rank(0);
        for (std::size_t length = 1; ranks < text.size(); length *= 2) {
            SortByRank(OrderedBySecondHalf(length), ranks);
            ranks = Rank(length);
        }
    }

    Places Take() { return std::move(m_sorted); }

private:
    // What ends before its second half comes first.
    Places OrderedBySecondHalf(std::size_t length) const {
        Places order;
        order.reserve(m_sorted.size());
        for (std::size_t i = m_sorted.size() - std::min(length, m_sorted.size()); i < m_sorted.size(); ++i) {
            order.push_back(static_cast<std::uint32_t>(i));
        }
        for (const std::uint32_t place : m_sorted) {
            if (place >= length) {
                order.push_back(static_cast<std::uint32_t>(place - length));
            }
        }
        return order;
    }

    // Of equal rank stay in the given order.
    void SortByRank(const Places& order, std::size_t ranks) {
        Places ends(ranks);
        for (const std::uint32_t rank : m_rank) {
            ++ends[rank];
        }
        std::uint32_t sum = 0;
        for (std::uint32_t& end : ends) {
            sum += end;
            end = sum;
        }
        for (auto place = order.rbegin(); place != order.rend(); ++place) {
            m_sorted[--ends[m_rank[*place]]] = *place;
        }
    }

    // How many different ranks there are after a round; equal are those that are equal in both halves.
    std::size_t Rank(std::size_t length) {
        constexpr std::uint32_t None = std::numeric_limits<std::uint32_t>::max();
        const auto second = [&](std::uint32_t place) {
            return place + length < m_rank.size() ? m_rank[place + length] : None;
        };
        Places ranked(m_rank.size());
        std::uint32_t ranks = 0;
        for (std::size_t i = 0; i < m_sorted.size(); ++i) {
            const std::uint32_t place = m_sorted[i];
            const std::uint32_t before = m_sorted[i == 0 ? 0 : i - 1];
            ranks += i == 0 || m_rank[place] != m_rank[before] || second(place) != second(before) ? 1 : 0;
            ranked[place] = ranks - 1;
        }
        m_rank.swap(ranked);
        return ranks;
    }

    Places m_rank; ///< By place.
    Places m_sorted;
};

} // namespace

NameIndex::NameIndex(std::string_view text, const std::vector<std::size_t>& ends)
    : m_text(text), m_suffixes(SuffixSort(text).Take()), m_lowest(2 * text.size()) {
    Places names(text.size());
    std::size_t name = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        while (name + 1 < ends.size() && i >= ends[name]) {
            ++name;
        }
        names[i] = static_cast<std::uint32_t>(name);
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        m_lowest[text.size() + i] = names[m_suffixes[i]];
    }
    for (std::size_t i = text.size(); i-- > 1;) {
        m_lowest[i] = std::min(m_lowest[2 * i], m_lowest[2 * i + 1]);
    }
}

std::optional<std::size_t> NameIndex::First(std::string_view part) const {
    const auto start = [&](std::uint32_t place) { return m_text.substr(place, part.size()); };
    const auto begin =
        std::lower_bound(m_suffixes.begin(), m_suffixes.end(), part,
                         [&](std::uint32_t place, std::string_view text) { return start(place) < text; });
    const auto end =
        std::upper_bound(begin, m_suffixes.end(), part,
                         [&](std::string_view text, std::uint32_t place) { return text < start(place); });
    if (begin == end) {
        return std::nullopt;
    }
    return LowestName(static_cast<std::size_t>(begin - m_suffixes.begin()),
                      static_cast<std::size_t>(end - m_suffixes.begin()));
}

std::uint32_t NameIndex::LowestName(std::size_t begin, std::size_t end) const {
    std::uint32_t lowest = std::numeric_limits<std::uint32_t>::max();
    for (begin += m_suffixes.size(), end += m_suffixes.size(); begin < end; begin /= 2, end /= 2) {
        if (begin % 2 == 1) {
            lowest = std::min(lowest, m_lowest[begin++]);
        }
        if (end % 2 == 1) {
            lowest = std::min(lowest, m_lowest[--end]);
        }
    }
    return lowest;
}

} // namespace quavernet
