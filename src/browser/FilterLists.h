// Entries of the three filter combos. Entry 0 is always the "all" entry.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

struct FilterEntry {
    std::string Text;
    std::int64_t ItemData = 0;
};

/// Drives in use, in the table's order.
std::vector<FilterEntry> FillDriveCombo();

/// "No genre" (NoGenre) always, then the genres in use by name.
std::vector<FilterEntry> FillGenreCombo();

/// The no-album row at index 1 if in use, then the albums in use by name.
std::vector<FilterEntry> FillAlbumCombo();

} // namespace quavernet
