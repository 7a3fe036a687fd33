// Sorting of the list by a double click on its header: direction, sort column and the arrow in the header.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// The one header cell with a picture.
struct SortArrow {
    std::int32_t Column = 0;
    std::string Picture; ///< "ArrowUp" or "ArrowDown".
};

/// Turns the sort direction round and makes the column (0 to 5) the sort column. The direction turns on every
/// call, also on the first one for another column. The list has to be loaded again afterwards.
SortArrow SortByHeader(std::int32_t column);

} // namespace quavernet
