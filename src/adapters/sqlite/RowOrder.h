// Sorting a result by one of its columns, outside of the engine. The engine's sorter carries whole rows; here
// only the distinct values of the one column are compared. Used by the connection for the list's statements.
#pragma once

#include "platform/ADODB.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quavernet::sqlite {

/// The rows of a result in the order of a column: nulls, numbers, then texts by the collation of the library.
/// Rows of equal values follow each other as in `sequence`, which names every row once, or, if it is empty,
/// as they were read; in either direction.
std::vector<std::uint32_t> RowOrder(const ADODB::RowBlock& rows, std::size_t column, bool descending,
                                    const std::vector<std::uint32_t>& sequence = {});

} // namespace quavernet::sqlite
