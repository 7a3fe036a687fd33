// A query of which only the first rows are wanted, as the engine is to run it: it need not sort a whole table
// for ten rows, and rows that the order leaves equal come by key. Called by the connection.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quavernet::sqlite {

/// For "Select ... from Files order by X DESC", with nothing between table and order, the same with the key
/// as its last order and, for a small count, a limit. Every other statement comes back as it is.
std::string FirstRows(std::string_view statement, std::size_t most);

} // namespace quavernet::sqlite
