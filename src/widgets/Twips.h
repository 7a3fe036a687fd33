// Settings and the layout rules speak in twips; 15 of them are one logical pixel. Inside the main window they
// grow with the font: what they leave room for is text.
#pragma once

#include <cmath>
#include <cstdint>

class QFont;

namespace quavernet {

inline constexpr int TwipsPerPixel = 15;

constexpr int ToPixels(double twips) {
    return static_cast<int>(twips / TwipsPerPixel + (twips < 0 ? -0.5 : 0.5));
}
constexpr std::int32_t ToTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

/// How many times wider the letters of a font are than those of 9 points for which the twips leave room;
/// never below 1.
double TwipScale(const QFont& font);

inline std::int32_t ToTwips(int pixels, double scale) {
    return static_cast<std::int32_t>(std::lround(ToTwips(pixels) / scale));
}

} // namespace quavernet
