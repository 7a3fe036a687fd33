// The Ogg pass of a scan: reads the collected files in batches of ten and stores what the tool tells of them.
// Built by the main window and handed to ScanDriver.
#pragma once

#include "scanner/OggPass.h"

namespace quavernet {

class OggBatches : public OggPass {
public:
    /// A quick scan asks for unknown files only, and the pass ends at the first batch without one: ten known
    /// files in a row hide those after them. A cancelled scan ends at the next batch. A record that can't
    /// be read or stored is dropped and named in the scan log, and the pass goes on. Lets events run once a
    /// batch and once a stored file.
    void ReadOggBatches(ScanRun& run) override;
};

} // namespace quavernet
