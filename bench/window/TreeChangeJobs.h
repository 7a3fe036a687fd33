// The commands that change the category tree, from the command to the painted rows. TreeJobs runs them.
#pragma once

#include "window/RealWindow.h"

#include <string>

namespace quavernet::bench {

/// Measures and prints the deletion of 5,000 files from the library, and the import of an exchange file with
/// 50,000 entries whose files the library knows. The library of the window must have a tree with as many;
/// before each round it is put back. Floors write the same with the bare engine, read the tree that is then
/// there, and show as many nodes in a bare view. `work` is a folder for copies of the library.
void TreeChangeJobs(RealWindow& window, const std::string& work, int rounds);

} // namespace quavernet::bench
