// The second pass of a scan: visits every file below a folder and sends the wanted ones through the
// inspection and the store. Called by ScanDriver.
#pragma once

#include "scanner/ScanRun.h"

namespace quavernet {

/// Works on run.file. Failures of the store and of statements are not caught. Lets events run in each folder,
/// in each inspection and store, and once a file is done.
void FileSearch(ScanRun& run, FolderWalk& walk);

} // namespace quavernet
