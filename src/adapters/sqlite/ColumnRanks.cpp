#include "adapters/sqlite/ColumnRanks.h"

#include "adapters/sqlite/Collation.h"
#include "adapters/sqlite/SortKeys.h"

#include <bit>
#include <functional>
#include <string_view>
#include <utility>

namespace quavernet::sqlite {

namespace {

std::uint64_t HashOf(const ADODB::Field& value) {
    switch (value.GetKind()) {
    case ADODB::Field::Kind::Text:
        return std::hash<std::string_view>()(value.View());
    case ADODB::Field::Kind::Null:
        return 0;
    default:
        return std::bit_cast<std::uint64_t>(value.Number()) * 0x9E3779B97F4A7C15u;
    }
}

// The very same value; a number in both of its forms counts as two here and as a tie in the order.
bool IsSame(const ADODB::Field& left, const ADODB::Field& right) {
    if (left.GetKind() != right.GetKind()) {
        return false;
    }
    switch (left.GetKind()) {
    case ADODB::Field::Kind::Text:
        return left.View() == right.View();
    case ADODB::Field::Kind::Integer:
        return left.Integer() == right.Integer();
    case ADODB::Field::Kind::Real:
        return left.Number() == right.Number();
    case ADODB::Field::Kind::Null:
        break;
    }
    return true;
}

/// Each different value of a column once, and for each row which one it holds. A value is kept as the first
/// row that holds it: a million titles would take ten times the space as fields.
struct DistinctValues {
    std::vector<std::uint32_t> firstRows;
    std::vector<std::uint32_t> valueOfRow;

    DistinctValues(const ADODB::RowBlock& rows, std::size_t column) {
        struct Slot {
            std::uint32_t value = ~std::uint32_t{0};
            std::uint32_t hash = 0;

            bool IsFree() const { return value == ~std::uint32_t{0}; }
        };
        std::vector<Slot> table(std::bit_ceil(rows.Rows() * 2 + 1));
        valueOfRow.reserve(rows.Rows());
        for (std::size_t row = 0; row < rows.Rows(); ++row) {
            const ADODB::Field value = rows.At(row, column);
            const std::uint64_t hash = HashOf(value);
            const auto shortHash = static_cast<std::uint32_t>(hash >> 32);
            std::size_t place = (hash ^ (hash >> 29)) & (table.size() - 1);
            while (!table[place].IsFree() &&
                   !(table[place].hash == shortHash &&
                     IsSame(rows.At(firstRows[table[place].value], column), value))) {
                place = (place + 1) & (table.size() - 1);
            }
            if (table[place].IsFree()) {
                table[place] = {static_cast<std::uint32_t>(firstRows.size()), shortHash};
                firstRows.push_back(static_cast<std::uint32_t>(row));
            }
            valueOfRow.push_back(table[place].value);
        }
    }
};

int ClassOf(const ADODB::Field& value) {
    return value.IsNull() ? 0 : value.GetKind() == ADODB::Field::Kind::Text ? 2 : 1;
}

int CompareNumbers(const ADODB::Field& left, const ADODB::Field& right) {
    if (left.GetKind() == ADODB::Field::Kind::Integer && right.GetKind() == ADODB::Field::Kind::Integer) {
        return left.Integer() < right.Integer() ? -1 : left.Integer() > right.Integer() ? 1 : 0;
    }
    // Holds every whole number of 64 bits exactly, which a double does not.
    const auto exact = [](const ADODB::Field& number) {
        return number.GetKind() == ADODB::Field::Kind::Integer ? static_cast<long double>(number.Integer())
                                                               : static_cast<long double>(number.Number());
    };
    return exact(left) < exact(right) ? -1 : exact(left) > exact(right) ? 1 : 0;
}

/// For each value its place in the order; equal values share one.
std::vector<std::uint32_t> RanksOf(const ADODB::RowBlock& rows, std::size_t column,
                                   const std::vector<std::uint32_t>& firstRows) {
    const auto field = [&](std::uint32_t value) { return rows.At(firstRows[value], column); };
    const auto compare = [&](std::uint32_t left, std::uint32_t right) {
        return CompareValues(field(left), field(right));
    };
    std::vector<SortKey> keys;
    keys.reserve(firstRows.size());
    for (std::uint32_t value = 0; value < firstRows.size(); ++value) {
        // Nulls and numbers stand before all texts; among themselves they are compared as they are.
        const ADODB::Field first = field(value);
        const bool isText = first.GetKind() == ADODB::Field::Kind::Text;
        keys.push_back(isText ? TextKey(first.View(), value) : SortKey{0, 0, value});
    }
    SortByKeys(keys, [&](std::uint32_t left, std::uint32_t right) { return compare(left, right) < 0; });
    std::vector<std::uint32_t> ranks(keys.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        rank += i > 0 && (!keys[i].HasSameKey(keys[i - 1]) || compare(keys[i - 1].item, keys[i].item) != 0);
        ranks[keys[i].item] = rank;
    }
    return ranks;
}

} // namespace

int CompareValues(const ADODB::Field& left, const ADODB::Field& right) {
    const int classOfLeft = ClassOf(left);
    if (const int difference = classOfLeft - ClassOf(right); difference != 0) {
        return difference;
    }
    return classOfLeft == 0   ? 0
           : classOfLeft == 1 ? CompareNumbers(left, right)
                              : CompareTexts(left.View(), right.View());
}

ColumnRanks::ColumnRanks(const ADODB::RowBlock& rows, std::size_t column) {
    DistinctValues distinct(rows, column);
    m_ranks = RanksOf(rows, column, distinct.firstRows);
    m_valueOfRow = std::move(distinct.valueOfRow);
}

} // namespace quavernet::sqlite
