// What the play queue writes into the texts of its entries, and the only record on the screen of what plays
// and what failed.
#pragma once

#include <string_view>

namespace quavernet {

inline constexpr std::string_view PlayingMark = "|> ";           ///< Before the text of the current entry.
inline constexpr std::string_view ErrorMark = "***FileError***"; ///< After a text in parentheses.

} // namespace quavernet
