// The charts, from their statement and from the click to the painted rows. main runs them.
#pragma once

#include "window/RealWindow.h"

namespace quavernet::bench {

/// Measures and prints the fill of both charts, beside the bare statement that ends after its first rows, and
/// the time from a key of the toolbar to the painted window.
void ChartJobs(RealWindow& window, int rounds);

} // namespace quavernet::bench
