#include "adapters/sqlite/RowOrder.h"

#include "adapters/sqlite/ColumnRanks.h"
#include "adapters/sqlite/SortKeys.h"

#include <bit>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

namespace quavernet::sqlite {

namespace {

/// The row at a place of the sequence; without one the rows follow each other as they were read.
std::uint32_t RowAt(const std::vector<std::uint32_t>& sequence, std::size_t place) {
    return sequence.empty() ? static_cast<std::uint32_t>(place) : sequence[place];
}

/// Whole numbers need no comparison at all: they are their own keys.
std::optional<std::vector<std::uint32_t>> OrderOfIntegers(const ADODB::RowBlock& rows, std::size_t column,
                                                          bool descending,
                                                          const std::vector<std::uint32_t>& sequence) {
    constexpr std::uint64_t SignBit = std::uint64_t{1} << 63;
    std::vector<SortKey> keys;
    keys.reserve(rows.Rows());
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        const ADODB::Field value = rows.At(row, column);
        if (value.GetKind() != ADODB::Field::Kind::Integer) {
            return std::nullopt;
        }
        const std::uint64_t key = std::bit_cast<std::uint64_t>(value.Integer()) ^ SignBit;
        keys.push_back({descending ? ~key : key, 0, row});
    }
    if (!sequence.empty()) {
        // Apart from the values, which are read in turn: keys are found faster than rows.
        std::vector<SortKey> inSequence;
        inSequence.reserve(keys.size());
        for (const std::uint32_t row : sequence) {
            inSequence.push_back(keys[row]);
        }
        keys.swap(inSequence);
    }
    SortByFirst(keys);
    std::vector<std::uint32_t> order;
    order.reserve(keys.size());
    for (const SortKey& key : keys) {
        order.push_back(key.item);
    }
    return order;
}

} // namespace

std::vector<std::uint32_t> RowOrder(const ADODB::RowBlock& rows, std::size_t column, bool descending,
                                    const std::vector<std::uint32_t>& sequence) {
    if (auto order = OrderOfIntegers(rows, column, descending, sequence)) {
        return std::move(*order);
    }
    const ColumnRanks ranks(rows, column);
    const auto lastRank = static_cast<std::uint32_t>(ranks.Bound()) - 1;
    const auto placeOf = [&](std::uint32_t row) {
        const std::uint32_t rank = ranks.Of(row);
        return descending ? lastRank - rank : rank;
    };
    // Where the rows of each rank begin, by counting them; going through the sequence keeps the order of
    // ties.
    std::vector<std::uint32_t> next(ranks.Bound() + 1);
    for (std::uint32_t row = 0; row < rows.Rows(); ++row) {
        ++next[placeOf(row) + 1];
    }
    std::partial_sum(next.begin(), next.end(), next.begin());
    std::vector<std::uint32_t> order(rows.Rows());
    for (std::size_t place = 0; place < rows.Rows(); ++place) {
        const std::uint32_t row = RowAt(sequence, place);
        order[next[placeOf(row)]++] = row;
    }
    return order;
}

} // namespace quavernet::sqlite
