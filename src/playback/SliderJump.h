// Where a click on the track of one of the player's sliders leads. PlayerSlider asks.
#pragma once

#include <cstdint>
#include <optional>

namespace quavernet {

/// The value of the spot that was clicked, `x` pixels from the left edge of a control of that width; nothing
/// if it lies within `margin` of the slider's value, where the control's own step applies.
std::optional<std::int32_t> SliderJump(double x, double width, std::int32_t max, std::int32_t value,
                                       std::int32_t margin);

} // namespace quavernet
