// The pass that reads the Ogg files which the search has collected. Called by ScanDriver after the search, if
// there is any such file.
#pragma once

namespace quavernet {

struct ScanRun;

class OggPass {
public:
    virtual ~OggPass() = default;

    /// Reads `run.OggPaths` in batches and stores what it finds. `run.FilesDone` is 0 at the start.
    /// The scan may be cancelled already. Failures that leave it end the scan.
    /// Lets events run.
    virtual void ReadOggBatches(ScanRun& run) = 0;
};

} // namespace quavernet
