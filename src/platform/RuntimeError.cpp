#include "platform/RuntimeError.h"

#include <cmath>
#include <limits>
#include <utility>

namespace quavernet {

namespace {

template <typename Integer> Integer Narrow(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= double{std::numeric_limits<Integer>::min()} &&
          rounded <= double{std::numeric_limits<Integer>::max()})) {
        throw RuntimeError(ErrorNumber::Overflow, "Overflow");
    }
    return static_cast<Integer>(rounded);
}

} // namespace

RuntimeError::RuntimeError(int number, std::string description)
    : m_number(number), m_description(std::move(description)) {}

std::int16_t Narrow16(double value) {
    return Narrow<std::int16_t>(value);
}

std::int32_t Narrow32(double value) {
    return Narrow<std::int32_t>(value);
}

} // namespace quavernet
