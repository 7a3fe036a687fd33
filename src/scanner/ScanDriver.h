// The command "scan": counts the files below a folder, walks it again, sends each wanted file through the
// inspection and the store, and keeps the user informed. Started by the main window; cancelled through
// Cancel().
#pragma once

#include "scanner/ScanWindow.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace quavernet {

class OggPass;

class ScanDriver {
public:
    /// Without an Ogg pass the Ogg files of a scan are collected and left alone.
    ScanDriver(ScanWindow& window, ScanLog& log, OggPass* oggPass = nullptr);
    ~ScanDriver();

    /// Asks for the folder (or takes the standard scan path) and scans it. Returns when the scan has ended,
    /// been cancelled or had nothing to do. Failures of the store and of the walk are not caught here.
    void StartScan();

    /// Ends the walks at their next test.
    void Cancel();

    /// Finds or creates the lookup rows of the current file and inserts or updates its row in Files.
    void StoreFileRecord();

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// The volumes that hold user data, by their mount points.
std::vector<std::string> LogicalDrives();

/// The network root of a drive, with a final "/". Throws RuntimeError 5 for a local drive unless `tolerant`
/// is set; then the drive itself comes back, likewise with a final "/".
std::string UNCPath(const std::string& drive, bool tolerant);

/// The local path behind a network path. A path on a local drive comes back unchanged, and so does one on no
/// drive if `tolerant` is set; otherwise that throws RuntimeError 5.
std::string DrivePath(const std::string& path, bool tolerant);

} // namespace quavernet
