// The command "scan": counts the files below a folder, walks it again, sends each wanted file through the
// inspection and the store, and keeps the user informed. Started by the main window; cancelled through
// Cancel().
#pragma once

#include "app/LongWork.h"
#include "scanner/ScanView.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quavernet {

struct CurrentFile;
class OggPass;

class ScanDriver {
public:
    /// Without an Ogg pass the Ogg files of a scan are collected and left alone.
    ScanDriver(LongWork& work, ScanView& view, ScanLog& log, OggPass* oggPass = nullptr);
    ~ScanDriver();

    /// Asks for the folder (or takes the standard scan path) and scans it. Returns when the scan has ended,
    /// been cancelled or had nothing to do. Failures of the store and of the walk are not caught here. Lets
    /// events run throughout; ScanRunning, which the caller sets around it, keeps a second scan and drops
    /// out.
    void StartScan();

    /// Ends the walks at their next test.
    void Cancel();

    /// Finds or creates the lookup rows of the file and inserts or updates its row in Files. Lets events run.
    void StoreFileRecord(CurrentFile& file);

private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace quavernet
