// Lists, searches, letters and filters from the user's click to the painted rows. main runs them.
#pragma once

#include "window/RealWindow.h"

namespace quavernet::bench {

/// Measures and prints the list in its six orders, a search, a letter and each filter, all beside the
/// engine's bare reading of the same rows, and the filling of the filter combos.
void ListJobs(RealWindow& window, int rounds);

/// The list in its six orders and a search, and nothing else: prints the most memory that the process has
/// had.
void ListMemory(RealWindow& window);

} // namespace quavernet::bench
