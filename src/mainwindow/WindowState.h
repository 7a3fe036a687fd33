// What the main window takes from the settings when it loads and writes back when it unloads. Called by
// frmMain's Form_Load, LoadStrings and Form_Unload.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quavernet {

inline constexpr std::size_t GridColumnCount = 6;
using ColumnWidths = std::array<std::int32_t, GridColumnCount>; ///< Twips.

/// Positions and sizes in twips.
struct WindowState {
    std::int32_t WindowLeft = 180;
    std::int32_t WindowTop = 255;
    std::int32_t WindowWidth = 15000;
    std::int32_t WindowHeight = 11000;
    std::int32_t SplitterPos = 2835; ///< Left edge of lblSizer.
    /// The place that a maximised window goes back to; its own is in the four above.
    bool Maximised = false;
    std::int32_t NormalLeft = 180;
    std::int32_t NormalTop = 255;
    std::int32_t NormalWidth = 15000;
    std::int32_t NormalHeight = 11000;

    ColumnWidths ColWidth = {3000, 3000, 1000, 1000, 1500, 1000};
    bool GridLines = false; ///< For saving: both grid line menu items are checked.

    std::int32_t Drive = 0; ///< Indexes of the combos' entries.
    std::int32_t Genre = 0;
    std::int32_t Album = 0;

    /// Only read here: a click on the box stores it. False leaves the box as the form was designed.
    bool SearchTitle = true;
    bool SearchInterpret = true;

    bool QuickScan = false;
    bool RecursiveScan = true;
    bool ScanMp3 = true;
    bool ScanWav = true;
    bool ScanOgg = true;
    bool ViewMp3 = true;
    bool ViewWav = true;
    bool ViewOgg = true;
    bool ScanLog = true;
    bool LoadOverSearch = false;
    bool ExternalPlayer = false;
    bool AddToPlaylist = false;

    bool operator==(const WindowState&) const = default;
};

/// Reads the state. On a screen of "800x600" the size is capped to 12000 by 9000. Throws SettingError at the
/// first text that is not the number it should be (13) or out of its range (6); only a combo's index falls
/// back to 0.
WindowState LoadWindowState(const std::string& screenResolution);

/// Widths of the grid's columns alone: a new head resets them. Fails as LoadWindowState does.
ColumnWidths LoadColumnWidths();

/// Writes everything but SearchTitle and SearchInterpret.
void SaveWindowState(const WindowState& state);

/// The stored index if a combo of so many entries has it, otherwise its first entry.
std::int32_t ExistingIndex(std::int32_t storedIndex, std::int32_t entryCount);

} // namespace quavernet
