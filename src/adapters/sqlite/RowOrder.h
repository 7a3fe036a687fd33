// Sorting a result by one of its columns, outside of the engine. The engine's sorter carries whole rows; here
// only the distinct values of the one column are compared. Used by the connection for the list's statements.
#pragma once

#include "platform/ADODB.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quavernet::sqlite {

/// A statement of the form "Select A.X, B.Y from ... order by B.Y DESC", taken apart.
struct OrderedStatement {
    std::string_view unordered; ///< The statement without its order clause.
    std::string_view name;      ///< Of the sort column, without its table.
    std::size_t column = 0;     ///< Its place in the select list.
    bool descending = false;
};

/// Nothing unless the select list holds nothing but qualified names, one of which the order clause names,
/// with its direction, as the last words of the statement. Every other order is left to the engine.
std::optional<OrderedStatement> TakeOrderClause(std::string_view statement);

/// The rows of a result in the order of a column: nulls, numbers, then texts by the collation of the library.
/// Rows of equal values keep the order in which they were read, in either direction.
std::vector<std::uint32_t> RowOrder(const ADODB::RowBlock& rows, std::size_t column, bool descending);

} // namespace quavernet::sqlite
