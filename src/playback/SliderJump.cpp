#include "playback/SliderJump.h"

#include "platform/RuntimeError.h"

namespace quavernet {

std::optional<std::int32_t> SliderJump(double x, double width, std::int32_t max, std::int32_t value,
                                       std::int32_t margin) {
    if (width <= 0) {
        return std::nullopt;
    }
    const double spot = x / width * max;
    if (spot > static_cast<double>(value) + margin || spot < static_cast<double>(value) - margin) {
        return Narrow32(spot);
    }
    return std::nullopt;
}

} // namespace quavernet
