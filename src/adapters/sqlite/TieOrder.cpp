#include "adapters/sqlite/TieOrder.h"

#include "adapters/sqlite/ColumnRanks.h"
#include "adapters/sqlite/SortKeys.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quavernet::sqlite {

namespace {

/// The beginning of each row's title, made in the order of the rows, which reads the memory in turn.
std::vector<SortKey> TitleKeys(const ADODB::RowBlock& rows, std::size_t column) {
    std::vector<SortKey> keys;
    keys.reserve(rows.Rows());
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        const ADODB::Field title = rows.At(row, column);
        // Nulls and numbers are before all texts; among themselves they are compared as they are.
        keys.push_back(title.GetKind() == ADODB::Field::Kind::Text ? TextKey(title.View(), row)
                                                                   : SortKey{0, 0, row});
    }
    return keys;
}

void SortByTitle(std::vector<SortKey>& keys, const ADODB::RowBlock& rows, std::size_t column) {
    constexpr std::size_t WorthCounting = 512; ///< Rows; the digits have to be counted first.
    const auto isBefore = [&](std::uint32_t left, std::uint32_t right) {
        const int difference = CompareValues(rows.At(left, column), rows.At(right, column));
        return difference != 0 ? difference < 0 : left < right;
    };
    if (keys.size() >= WorthCounting) {
        SortByKeys(keys, isBefore);
        return;
    }
    std::sort(keys.begin(), keys.end(), [&](const SortKey& left, const SortKey& right) {
        return left.first != right.first     ? left.first < right.first
               : left.second != right.second ? left.second < right.second
                                             : isBefore(left.item, right.item);
    });
}

// By counting the rows of each performer, of whom there are few; then title by title for each of them.
std::vector<std::uint32_t> Sorted(const ADODB::RowBlock& rows, const TieColumns& columns) {
    const ColumnRanks performers(rows, columns.performer);
    const std::vector<SortKey> titles = TitleKeys(rows, columns.title);
    std::vector<std::uint32_t> next(performers.Bound() + 1);
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        ++next[performers.Of(row) + 1];
    }
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<std::uint32_t> order(rows.Rows());
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        order[next[performers.Of(row)]++] = row;
    }
    std::uint32_t begin = 0;
    std::vector<SortKey> keys;
    for (const std::uint32_t end : next) { // By now each is the end of its performer's rows.
        keys.clear();
        for (std::uint32_t place = begin; place < end; ++place) {
            keys.push_back(titles[order[place]]);
        }
        SortByTitle(keys, rows, columns.title);
        for (const SortKey& key : keys) {
            order[begin++] = key.item;
        }
    }
    return order;
}

} // namespace

std::vector<std::uint32_t> TieOrder::Of(const ADODB::RowBlock& rows, const TieColumns& columns,
                                        const LibraryVersion& version) {
    if (m_version != version) {
        m_version = version;
        Clear();
    }
    if (auto order = Remembered(rows, columns.file)) {
        return std::move(*order);
    }
    std::vector<std::uint32_t> order = Sorted(rows, columns);
    Remember(rows, columns.file, order);
    return order;
}

std::uint32_t TieOrder::RankOf(const ADODB::Field& file) const {
    const auto id = static_cast<std::uint64_t>(file.Integer());
    return id < m_ranks.size() ? m_ranks[id] : 0;
}

// Few of many rows are sorted: to lay out the places of all would take longer.
std::optional<std::vector<std::uint32_t>> TieOrder::RememberedOfFew(const ADODB::RowBlock& rows,
                                                                    std::size_t file) const {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> ranked;
    ranked.reserve(rows.Rows());
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        ranked.emplace_back(RankOf(rows.At(row, file)), row);
    }
    std::sort(ranked.begin(), ranked.end());
    const auto sameRank = [](const auto& left, const auto& right) { return left.first == right.first; };
    if ((!ranked.empty() && ranked.front().first == 0) ||
        std::adjacent_find(ranked.begin(), ranked.end(), sameRank) != ranked.end()) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> order;
    order.reserve(ranked.size());
    for (const auto& [rank, row] : ranked) {
        order.push_back(row);
    }
    return order;
}

// Every rank is taken by one row at most, so that many rows fall into their places without a sort.
std::optional<std::vector<std::uint32_t>> TieOrder::Remembered(const ADODB::RowBlock& rows,
                                                               std::size_t file) const {
    constexpr std::size_t Few = 16; ///< One of so many that are known, or less.
    if (m_ranks.empty() || rows.Rows() > m_known) {
        return std::nullopt;
    }
    if (rows.Rows() <= m_known / Few) {
        return RememberedOfFew(rows, file);
    }
    constexpr std::uint32_t NoRow = ~std::uint32_t{0};
    std::vector<std::uint32_t> places(m_known, NoRow);
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        const std::uint32_t rank = RankOf(rows.At(row, file));
        if (rank == 0 || places[rank - 1] != NoRow) {
            return std::nullopt;
        }
        places[rank - 1] = row;
    }
    std::erase(places, NoRow);
    return places;
}

void TieOrder::Remember(const ADODB::RowBlock& rows, std::size_t file,
                        const std::vector<std::uint32_t>& order) {
    if (order.size() <= m_known && !m_ranks.empty()) {
        return; // What is known serves more rows than these.
    }
    constexpr std::int64_t MostSpread =
        64; ///< A library of few files with huge keys is not worth the memory.
    Clear();
    m_known = 0;
    std::int64_t highest = -1;
    for (std::size_t row = 0; row < rows.Rows(); ++row) {
        highest = std::max(highest, rows.At(row, file).Integer());
    }
    if (highest < 0 || highest / MostSpread > static_cast<std::int64_t>(rows.Rows())) {
        return;
    }
    m_ranks.assign(static_cast<std::size_t>(highest) + 1, 0);
    for (const std::uint32_t row : order) {
        ++m_known;
        if (const std::int64_t id = rows.At(row, file).Integer(); id >= 0) {
            m_ranks[static_cast<std::size_t>(id)] = m_known;
        }
    }
}

} // namespace quavernet::sqlite
