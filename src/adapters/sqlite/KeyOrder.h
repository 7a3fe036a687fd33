// Rows that nobody has asked an order for come by key, whatever index the engine would like to walk: the
// program takes the last row of a table for the newest one. Called by StatementCache when a statement is
// prepared.
#pragma once

#include <string>

namespace quavernet::sqlite {

/// For a query of one table that names no order the same query by its key. Every other statement comes back
/// as it is: of a join each further table is found by key already, and grouped rows have none.
std::string InKeyOrder(const std::string& sql);

} // namespace quavernet::sqlite
