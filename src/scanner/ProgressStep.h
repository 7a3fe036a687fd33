// The step after every file: bar, title, percent, time left and time used. Called by the search and by the
// Ogg pass.
#pragma once

#include "scanner/ScanRun.h"

#include <string>

namespace quavernet {

/// `filesTotal` is what run.FilesDone runs up to; the prefixes stand before the two times.
/// Throws RuntimeError 6 if the time left is no 32-bit number.
void AdvanceProgress(ScanRun& run, double filesTotal, const std::string& remainingPrefix,
                     const std::string& elapsedPrefix);

} // namespace quavernet
