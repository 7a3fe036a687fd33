// What a scan asks of the main window beside the observer of long work, and of the log window. The forms
// implement both; tests bring doubles.
#pragma once

#include "app/Controls.h"
#include "platform/FileSystemObject.h"

#include <string>
#include <vector>

namespace quavernet {

/// The checked menu items that steer a scan.
struct ScanOptions {
    bool Recursive = true;
    bool QuickScan = false;
    bool ScanMp3 = true;
    bool ScanWav = true;
    bool ScanOgg = true;
};

class ScanView {
public:
    virtual ~ScanView() = default;

    virtual ScanOptions Options() const = 0;
    virtual void SetControlState(ControlMode mode) = 0; ///< Idle or ScanRunning.
    virtual void ClearList() = 0;                       ///< The grid keeps its header only.
    virtual void FillDriveCombo() = 0;
    virtual void FillAlbumCombo() = 0;
    virtual void LoadDatabase(const std::string& list) = 0;
};

/// The live log of scanned files.
class ScanLog {
public:
    virtual ~ScanLog() = default;

    virtual void Show() = 0;
    virtual void EnableClose(bool enabled) = 0;
    virtual void AddLine(const std::string& line) = 0;
    virtual void SelectLastLine() = 0;
    virtual void SetFileCount(const std::string& text) = 0;
    virtual void SetMegabytes(const std::string& text) = 0;
    virtual void SetPlaytime(const std::string& text) = 0;
    /// Entries that the walk passed over, with the reasons.
    virtual void AddSkipped(const std::vector<SkippedEntry>& entries) = 0;
};

} // namespace quavernet
