// Libraries of any size for the lists, the same at each run. main makes them.
#pragma once

#include <cstddef>
#include <string>

namespace quavernet::bench {

/// Makes a library of `rows` files on 5,000 albums at a path that is free, from the empty one.
void MakeLibrary(const std::string& path, const std::string& emptyLibrary, std::size_t rows);

} // namespace quavernet::bench
