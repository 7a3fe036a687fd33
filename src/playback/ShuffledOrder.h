// The order that a shuffle brings entries into. Called by the play queue and by the random play of a
// category.
#pragma once

#include <cstdint>
#include <vector>

namespace quavernet {

/// Positions from 0, each once, drawn one after the other by RandomBetween from the places that are left: at
/// each draw the first and the last of them come half as often as the others.
std::vector<std::int32_t> ShuffledOrder(std::int32_t count);

} // namespace quavernet
