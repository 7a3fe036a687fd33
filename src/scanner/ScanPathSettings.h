// The standard scan path as frmScanpath shows, chooses and stores it. The scan command reads the two
// settings.
#pragma once

#include <optional>
#include <string>

namespace quavernet {

struct ScanPathSettings {
    bool ScanpathValue = false; ///< Every scan takes the path and asks for none.
    std::string Scanpath;       ///< Bytes of the folder's path; may be empty.
};

ScanPathSettings LoadScanPathSettings();

/// Asks for a folder; its path with a final "/", or nothing if the user cancelled.
std::optional<std::string> BrowseScanPath();

/// Stores both settings if the folder exists. Otherwise a box tells that nothing was stored, and the dialog
/// has to stay open: false. The path is needed also while the check box is clear.
bool SaveScanPathSettings(const ScanPathSettings& scanPath);

} // namespace quavernet
