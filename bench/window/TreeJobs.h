// The category tree from the load to its painted nodes. main runs it.
#pragma once

#include "window/RealWindow.h"

namespace quavernet::bench {

/// Fills 100 categories with the files of the library, then measures and prints the load of the tree, with
/// all categories closed and with all open. The floor reads the same rows with the bare engine and shows as
/// many nodes in a bare view of the toolkit.
void TreeJobs(RealWindow& window, int rounds);

} // namespace quavernet::bench
