// Which state of the library a result was read from. Used by what the connection remembers beyond a
// transaction.
#pragma once

#include <cstdint>

struct sqlite3;

namespace quavernet::sqlite {

/// What the library held when its rows were read: any change, by us or by another program, makes it another
/// version.
struct LibraryVersion {
    std::uint32_t file = 0;
    std::int64_t ownChanges = 0;

    bool operator==(const LibraryVersion&) const = default;
};

/// The version that the last statement has read.
LibraryVersion VersionOf(sqlite3* library);

} // namespace quavernet::sqlite
