// The second pass of a scan: visits every file below a folder and sends the wanted ones through the
// inspection and the store. Called by ScanDriver.
#pragma once

#include "scanner/ScanRun.h"

namespace quavernet {

/// Failures of the store and of statements are not caught.
void FileSearch(ScanRun& run, FolderWalk& walk);

} // namespace quavernet
