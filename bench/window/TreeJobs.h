// The category tree from the load to its painted nodes. main runs it.
#pragma once

#include "window/RealWindow.h"

#include <string>

namespace quavernet::bench {

/// Measures the drop of 5,000 rows on a category; its floor is the bare statements in one transaction and as
/// many nodes in a bare view. Then fills 100 categories with the files of the library, and measures and
/// prints the load of the tree, with all categories closed and with all open. The floor reads the same rows
/// with the bare engine, unsorted, and shows as many nodes in a bare view of the toolkit. Then runs
/// TreeChangeJobs, which leave a library with a tree. `work` is a folder for copies of the library.
void TreeJobs(RealWindow& window, const std::string& work, int rounds);

} // namespace quavernet::bench
