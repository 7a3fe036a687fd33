#include "playback/RandomBetween.h"

#include "app/MainModule.h"

#include <cmath>

namespace quavernet {

float ScaledBetween(double r, std::int32_t low, std::int32_t high, bool round) {
    const double from = low;
    const auto value = static_cast<float>(r * (static_cast<double>(high) - from) + from);
    // Rounding gives each end only the half of its number that lies inside the range. It stays so: the draw
    // is no uniform one.
    return round ? static_cast<float>(std::floor(static_cast<double>(value) + 0.5)) : value;
}

float RandomBetween(std::int32_t low, std::int32_t high, bool round, bool reseed) {
    if (reseed) {
        mainModule.RandomNumbers.Randomize();
    }
    return ScaledBetween(mainModule.RandomNumbers.Rnd(), low, high, round);
}

} // namespace quavernet
