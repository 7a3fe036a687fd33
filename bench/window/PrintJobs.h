// The list printed to a PDF file, beside a painter that does no more than it must. main runs it.
#pragma once

#include "window/RealWindow.h"

#include <string>

namespace quavernet::bench {

/// Measures and prints how long the whole list takes to a file in the folder, and what that costs of memory.
/// The floor paints the same texts, elided, with a bare painter.
void PrintJobs(RealWindow& window, const std::string& work, int rounds);

} // namespace quavernet::bench
