// Play times as the player shows them.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// Minutes and seconds, each with two digits at least. What is less than a minute below zero shows its
/// seconds with a sign, but for -1, which is 0: an engine without a file says so.
inline std::string PlayTimeText(std::int32_t seconds) {
    const auto padded = [](std::int32_t number) {
        const std::string digits = std::to_string(number < 0 ? -number : number);
        return (number < 0 ? "-" : "") + (digits.size() < 2 ? "0" + digits : digits);
    };
    const std::int32_t rest = seconds % 60;
    return padded(seconds / 60) + ":" + padded(rest == -1 ? 0 : rest);
}

} // namespace quavernet
