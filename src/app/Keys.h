// The numbers of the keys that the logic of the controls asks for. The forms translate their keys into them.
#pragma once

namespace quavernet::Keys {

inline constexpr int Enter = 13;
inline constexpr int Left = 37; ///< The arrows follow each other: left, up, right, down.
inline constexpr int Up = 38;
inline constexpr int Right = 39;
inline constexpr int Down = 40;
inline constexpr int Delete = 46;
inline constexpr int F1 = 112;

} // namespace quavernet::Keys
