// The details dialog, from the key press to its painting. main of the window bench runs it.
#pragma once

#include "window/RealWindow.h"

#include <string>

namespace quavernet::bench {

/// Measures and prints one line. `song` takes the place of the file of the list's first row.
void DetailsJobs(RealWindow& window, const std::string& song, int rounds);

} // namespace quavernet::bench
