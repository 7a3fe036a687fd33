// The order clause of the list's statements, taken off so that the rows can be sorted after reading
// (RowOrder). Asked by the connection for every query.
#pragma once

#include "adapters/sqlite/TieOrder.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace quavernet::sqlite {

/// A statement of the form "Select A.X, B.Y from ... order by B.Y DESC", taken apart.
struct OrderedStatement {
    std::string_view unordered; ///< The statement without its order clause.
    std::string_view name;      ///< Of the sort column, without its table.
    std::size_t column = 0;     ///< Its place in the select list.
    bool descending = false;
    /// By what rows follow that the order leaves equal; nothing unless all of it is selected.
    std::optional<TieColumns> ties;
};

/// Nothing unless the select list holds nothing but qualified names, one of which the order clause names,
/// with its direction, as the last words of the statement. Every other order is left to the engine.
std::optional<OrderedStatement> TakeOrderClause(std::string_view statement);

} // namespace quavernet::sqlite
