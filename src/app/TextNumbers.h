// Names for the numbers of texts that stand for something in the logic: values that records get, and what is
// put together or compared. Used with LoadResString.
#pragma once

#include <cstdint>

namespace quavernet::Texts {

inline constexpr std::int32_t NoAlbum = 328; ///< The album of a file that names none.
inline constexpr std::int32_t Unknown = 347; ///< The title or performer of a file that names none.

inline constexpr std::int32_t RemainingTime = 345; ///< Before a time in the status bar.
inline constexpr std::int32_t ElapsedTime = 346;   ///< Before a time in the status bar.
inline constexpr std::int32_t LastScan = 351;      ///< Before a date in the window's title.

} // namespace quavernet::Texts
