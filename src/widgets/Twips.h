// Settings and the layout rules speak in twips; 15 of them are one logical pixel.
#pragma once

#include <cstdint>

namespace quavernet {

inline constexpr int TwipsPerPixel = 15;

constexpr int ToPixels(double twips) {
    return static_cast<int>(twips / TwipsPerPixel + (twips < 0 ? -0.5 : 0.5));
}
constexpr std::int32_t ToTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

} // namespace quavernet
