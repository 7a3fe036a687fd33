// The first pass of a scan: how many files there are to visit. Called by ScanDriver.
#pragma once

#include "scanner/ScanRun.h"

namespace quavernet {

/// Adds the plain files below the walk's folder to run.FilesTotal, hidden ones left out, and lets the status
/// panel grow a dot for each. Lets events run in each folder.
void GetFilesCount(ScanRun& run, FolderWalk& walk);

} // namespace quavernet
