// The state that the steps of a scan share: one object for the life of the main window, set up again by each
// scan. Owned by ScanDriver; the counting pass, the search, the progress and the Ogg pass work on it.
#pragma once

#include "app/CurrentFile.h"
#include "app/LongWork.h"
#include "scanner/SavedLog.h"
#include "scanner/ScanView.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

/// Texts that are shown once a file. The language can't change while a scan runs, so they are looked up once.
struct ScanTexts {
    std::string Scanning;   ///< 343
    std::string Percent;    ///< 344
    std::string Remaining;  ///< 345
    std::string Elapsed;    ///< 346
    std::string Initialise; ///< 348
};

/// What a scan shows in the status bar's panels.
namespace ScanPanel {
inline constexpr Panel Scanning = Panel::Scanning;
inline constexpr Panel Percent = Panel::Filecount;
inline constexpr Panel Remaining = Panel::Interprets;
inline constexpr Panel Elapsed = Panel::Titles;
/// Those that a scan empties when it begins.
inline constexpr std::array<Panel, 5> All{Scanning, Percent, Remaining, Elapsed, Panel::Albums};
} // namespace ScanPanel

/// What has become of the files of one scan.
struct ScanCounts {
    std::size_t New = 0;
    std::size_t Updated = 0;
    std::size_t Skipped = 0; ///< Known ones in a quick scan, and those that could not be read.

    void AddStored(bool isNew) { ++(isNew ? New : Updated); }
};

struct ScanRun {
    ScanRun(LongWork& longWork, ScanView& scanView, ScanLog& scanLog)
        : work(longWork), view(scanView), log(scanLog), saved(scanLog) {}

    LongWork& work;
    ScanView& view;
    ScanLog& log;
    SavedLog saved; ///< Lines and counters of the scan log; they count on from scan to scan.

    CurrentFile file; ///< The file that the search is at; values carry over from file to file.

    bool Recursive = false;
    bool QuickScan = false;
    double FilesTotal = 0;       ///< Files counted in the counting pass.
    std::int32_t FilesDone = 0;  ///< Files visited in the scan pass.
    float ProgressStep = 0;      ///< Percent per file.
    double ScannedMegabytes = 0; ///< Sum of the sizes of stored files.
    std::string StatusDots;      ///< Text of the status panel in the counting pass.
    std::vector<std::string> OggPaths;
    ScanCounts Counts;
    ScanTexts texts;
};

} // namespace quavernet
