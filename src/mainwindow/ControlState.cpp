#include "mainwindow/ControlState.h"

#include <array>

namespace quavernet {

namespace {

constexpr auto IdleControls = std::to_array<std::string_view>(
    {"print", "date", "top", "cboGenre", "cboDrive", "cboAlbum", "txtSearch", "cmdSearch", "mnuFile",
     "mnuEdit", "mnuView", "mnuExtras", "mnuOptions", "mnuUpperHelp"});

constexpr auto SelectionControls = std::to_array<std::string_view>(
    {"plist", "mnuKontextPlaylist", "mnuPlaylist", "mnuDetails", "mnuEditFilename", "mnuEditDelete",
     "mnuKontextExchange", "mnuEditExchange", "mnuPlay", "cmdPlay", "mnuPlaySelectedItems"});

constexpr auto ConversionControls =
    std::to_array<std::string_view>({"konvert", "mnuKontextKonvert", "mnuKonvert"});

// What a load of the list greys. The rest of a selection's commands goes with the idle state, which follows.
constexpr auto LoadedListControls = std::to_array<std::string_view>(
    {"plist", "mnuPlaylist", "mnuDetails", "konvert", "mnuEditFilename", "mnuEditExchange", "mnuEditDelete"});

template <typename Names> void Add(std::vector<ControlSwitch>& switches, const Names& names, bool enabled) {
    for (const std::string_view name : names) {
        switches.push_back({name, enabled});
    }
}

} // namespace

std::vector<ControlSwitch> ControlState(ControlMode mode, std::int32_t row, const std::string& format) {
    std::vector<ControlSwitch> switches;
    switch (mode) {
    case ControlMode::Idle:
        switches.push_back({"scan", true});
        Add(switches, IdleControls, true);
        Add(switches,
            std::to_array<std::string_view>(
                {"cancel", "plist", "konvert", "mnuPlaySelectedItems", "mnuPlay", "cmdPlay"}),
            false);
        break;
    case ControlMode::ScanRunning:
        switches.push_back({"cancel", true});
        Add(switches, std::to_array<std::string_view>({"scan", "plist", "konvert"}), false);
        Add(switches, IdleControls, false);
        break;
    case ControlMode::SelectionChanged:
        Add(switches, SelectionControls, row >= 1);
        Add(switches, ConversionControls, row >= 1 && format == "wav");
        break;
    case ControlMode::ListLoaded:
        Add(switches, LoadedListControls, false);
        break;
    }
    return switches;
}

} // namespace quavernet
