// The draw of all random play: which file of the library, which entry of a category or of the queue comes
// next.
#pragma once

#include <cstdint>

namespace quavernet {

/// A number from `low` to `high`, both included. Seeds the generator before the draw if `reseed` is set, as
/// all callers do: no draw follows from the one before. Rounded, the two ends are half as likely as any
/// number between them. Of single precision: exact up to 16,777,216.
float RandomBetween(std::int32_t low, std::int32_t high, bool round, bool reseed);

/// What RandomBetween makes of a random number `r`, 0 <= r < 1.
float ScaledBetween(double r, std::int32_t low, std::int32_t high, bool round);

} // namespace quavernet
