// The values of one column of a result in the order of the library: compared, and ranked so that each
// different value is compared once. RowOrder and TieOrder sort by them.
#pragma once

#include "platform/ADODB.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quavernet::sqlite {

/// Below 0, 0 or above 0: nulls, then numbers, then texts by the collation of the library.
int CompareValues(const ADODB::Field& left, const ADODB::Field& right);

/// The place of each row's value among the different values of the column.
class ColumnRanks {
public:
    ColumnRanks(const ADODB::RowBlock& rows, std::size_t column);

    /// From 0; equal values share one.
    std::uint32_t Of(std::size_t row) const { return m_ranks[m_valueOfRow[row]]; }
    /// A bound for all ranks.
    std::size_t Bound() const { return m_ranks.size(); }

private:
    std::vector<std::uint32_t> m_valueOfRow;
    std::vector<std::uint32_t> m_ranks; ///< By value.
};

} // namespace quavernet::sqlite
